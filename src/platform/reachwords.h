// How others reach a port of this machine, in words for a host.
#pragma once

#include "platform/addresses.h"
#include "platform/router.h"

#include <QList>
#include <QString>

namespace packwise {

// "192.168.1.20 port 5252"
QString placeOf(const QString& address, quint16 port);

// By which of this machine's addresses others on the same network come in: "Friends on the same
// network join 192.168.1.20 (wlan0) or 10.0.0.7 (tun0)". `behind` stands behind each address.
QString wordsFor(const QList<OwnAddress>& addresses, const QString& who,
                 const QString& behind = {});

// What came of asking the router to open a port, and what to do: one sentence or two. `address` is
// this machine's in its network; empty without a network.
QString wordsFor(const RouterAnswer& answer, const QString& address, quint16 port);

}  // namespace packwise
