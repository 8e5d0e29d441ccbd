#include "platform/version.h"

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QString versionLine(const QString& program) {
    return program + u' ' + QStringLiteral(PACKWISE_VERSION) + u'\n';
}

}  // namespace packwise
