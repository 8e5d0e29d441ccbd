// The addresses by which a host can be reached. IPv4, in dotted decimal.
#pragma once

#include <QList>
#include <QString>

namespace packwise {

enum class AddressRange {
    Public,     // reached from everywhere
    Private,    // of a home or a firm
    Shared,     // of a provider that puts its customers behind one more router
    Loopback,   // this machine
    LinkLocal,  // given to itself by a machine that got none
    Reserved,   // of no machine: for documents, groups, the future
    None        // no address at all
};

AddressRange rangeOf(const QString& address);

struct OwnAddress {
    QString address;
    QString interfaceName;  // as the system calls it for people
};

// This machine's addresses that others can use, the one of the default route first. Empty without a
// network. Asks the system and sends nothing.
QList<OwnAddress> ownAddresses();

}  // namespace packwise
