#include "platform/terminal.h"

#include <QByteArray>
#include <QString>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#endif

namespace packwise {

using namespace Qt::Literals::StringLiterals;

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

void keepStandardStreams() {
#ifdef Q_OS_UNIX
    // The lowest free number is the next to be given.
    int opened = 0;
    do {
        opened = ::open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0) {
        ::close(opened);
    }
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

QString printable(QString text) {
    QString shown;
    for (const char32_t c : text.replace(u"\r\n"_s, u"\n"_s).toUcs4()) {
        shown += c == u'\n' || c == u'\t' || QChar::isPrint(c) ? QString::fromUcs4(&c, 1) : u"?"_s;
    }
    return shown;
}

PrintableStream::PrintableStream(std::FILE* file) : file_(file) {
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 PrintableStream::writeData(const char* data, qint64 size) {
    const QByteArray shown = printable(QString::fromUtf8(data, size)).toUtf8();
    const auto length = static_cast<std::size_t>(shown.size());
    const bool written = std::fwrite(shown.constData(), 1, length, file_) == length;
    return std::fflush(file_) == 0 && written ? size : -1;
}

}  // namespace packwise
