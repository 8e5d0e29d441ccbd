#include "platform/display.h"

#include <QByteArray>

#ifdef Q_OS_WIN
#include <QFile>
#include <QStandardPaths>
#endif

namespace packwise {

bool hasDisplay() {
#ifdef Q_OS_WIN
    return true;
#else
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#endif
}

void hideWindows() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef Q_OS_WIN
    // That platform looks for fonts beside Qt's libraries, and there are none.
    if (qEnvironmentVariableIsEmpty("QT_QPA_FONTDIR")) {
        qputenv("QT_QPA_FONTDIR",
                QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::FontsLocation)));
    }
#endif
}

}  // namespace packwise
