#include "platform/addresses.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QUdpSocket>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Range {
    const char16_t* network;
    int prefix;
    AddressRange range;
};

// The registry of special-purpose addresses; what is not in it is public.
constexpr Range kRanges[] = {
    {u"0.0.0.0", 8, AddressRange::Reserved},       {u"10.0.0.0", 8, AddressRange::Private},
    {u"100.64.0.0", 10, AddressRange::Shared},     {u"127.0.0.0", 8, AddressRange::Loopback},
    {u"169.254.0.0", 16, AddressRange::LinkLocal}, {u"172.16.0.0", 12, AddressRange::Private},
    {u"192.0.0.0", 24, AddressRange::Reserved},    {u"192.0.2.0", 24, AddressRange::Reserved},
    {u"192.88.99.0", 24, AddressRange::Reserved},  {u"192.168.0.0", 16, AddressRange::Private},
    {u"198.18.0.0", 15, AddressRange::Reserved},   {u"198.51.100.0", 24, AddressRange::Reserved},
    {u"203.0.113.0", 24, AddressRange::Reserved},  {u"224.0.0.0", 3, AddressRange::Reserved},
};

// The address that this machine has on its way to everywhere; empty without a default route.
QString defaultAddress() {
    // Connecting a datagram socket only looks the way up.
    QUdpSocket socket;
    socket.connectToHost(QHostAddress(u"192.0.2.1"_s), 9);
    return socket.state() == QAbstractSocket::ConnectedState ? socket.localAddress().toString()
                                                             : QString();
}

}  // namespace

AddressRange rangeOf(const QString& address) {
    const QHostAddress parsed(address);
    if (parsed.protocol() != QAbstractSocket::IPv4Protocol) {
        return AddressRange::None;
    }
    const auto* const at =
        std::find_if(std::begin(kRanges), std::end(kRanges), [&](const Range& r) {
            return parsed.isInSubnet(QHostAddress(QString::fromUtf16(r.network)), r.prefix);
        });
    return at == std::end(kRanges) ? AddressRange::Public : at->range;
}

QList<OwnAddress> ownAddresses() {
    QList<OwnAddress> addresses;
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
        const auto flags = interface.flags();
        if (!(flags & QNetworkInterface::IsUp) || !(flags & QNetworkInterface::IsRunning)) {
            continue;
        }
        for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
            const QString address = entry.ip().toString();
            const AddressRange range = rangeOf(address);
            if (range != AddressRange::None && range != AddressRange::Loopback &&
                range != AddressRange::LinkLocal) {
                addresses.append({address, interface.humanReadableName()});
            }
        }
    }
    const QString first = defaultAddress();
    std::stable_partition(addresses.begin(), addresses.end(),
                          [&](const OwnAddress& own) { return own.address == first; });
    return addresses;
}

}  // namespace packwise
