#include "platform/terminal.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace packwise {

bool writesToTerminal() {
#ifdef Q_OS_UNIX
    return isatty(STDOUT_FILENO) == 1;
#else
    return false;
#endif
}

bool reportsToTerminal() {
#ifdef Q_OS_UNIX
    return isatty(STDERR_FILENO) == 1;
#else
    return false;
#endif
}

}  // namespace packwise
