#include "platform/reachwords.h"

#include <QStringList>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QString wordsFor(const QList<OwnAddress>& addresses, const QString& who, const QString& behind) {
    if (addresses.isEmpty()) {
        return u"This machine has no network that others could come by."_s;
    }
    QStringList places;
    for (const OwnAddress& own : addresses) {
        places.append(own.address + behind + u" (" + own.interfaceName + u')');
    }
    return who + u" on the same network join "_s + places.join(u" or "_s) + u'.';
}

QString placeOf(const QString& address, quint16 port) {
    return address + u" port "_s + QString::number(port);
}

QString wordsFor(const RouterAnswer& answer, const QString& address, quint16 port) {
    const QString byHand = u"forward TCP port %1 to %2 in its settings by hand."_s.arg(port).arg(
        address.isEmpty() ? u"this machine"_s : address);
    switch (answer.kind) {
        case RouterAnswer::Open: {
            const QString open = u"Friends on the Internet join "_s +
                                 placeOf(answer.outsideAddress, answer.outsidePort);
            return answer.outsidePort == port
                       ? QString(open + u'.')
                       : QString(open + u"; the router's port %1 is another's."_s.arg(port));
        }
        case RouterAnswer::NoRouter:
            return u"No router answers. Allow UPnP or NAT-PMP there, or "_s + byHand;
        case RouterAnswer::Refused:
            return u"The router refuses to open a port. Allow UPnP or NAT-PMP there, or "_s +
                   byHand;
        case RouterAnswer::BehindAnother:
            return u"The router's own outside address"_s +
                   (answer.outsideAddress.isEmpty() ? QString()
                                                    : QString(u' ' + answer.outsideAddress)) +
                   u" is not a public one: it stands behind another router, so nobody can come in "
                   "this way. Let a friend host, or use packwise-host on a rented machine, see "
                   "docs/hosting.md."_s;
        case RouterAnswer::Stopped:
            return {};
    }
    return {};
}

}  // namespace packwise
