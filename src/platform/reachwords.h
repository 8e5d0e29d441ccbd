// How others reach a port of this machine, in words for a host.
#pragma once

#include "platform/router.h"

#include <QString>

namespace packwise {

// "192.168.1.20 port 5252"
QString placeOf(const QString& address, quint16 port);

// What came of asking the router to open a port, and what to do: one sentence or two. `address` is
// this machine's in its network; empty without a network.
QString wordsFor(const RouterAnswer& answer, const QString& address, quint16 port);

}  // namespace packwise
