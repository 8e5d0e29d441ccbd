// A port for a server on this machine.
#pragma once

#include <QtGlobal>

namespace packwise {

// A port of four digits that nobody listens on; 0 when none is found.
quint16 freePort();

}  // namespace packwise
