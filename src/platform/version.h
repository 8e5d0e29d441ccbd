// The program's own version. The one that players see and compare is the protocol's,
// kProtocolVersion.
#pragma once

#include <QString>

namespace packwise {

// What a program tells on --version: "packwise-bot 1.41.1" and a line end.
QString versionLine(const QString& program);

}  // namespace packwise
