#include "platform/terminal.h"

#include <QByteArray>
#include <QString>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#endif
#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#endif

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

#ifdef Q_OS_WIN
HANDLE handleOf(std::FILE* file) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
}

bool isTerminal(std::FILE* file) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(file), &mode);
}
#else
bool isTerminal(std::FILE* file) {
    return isatty(fileno(file)) == 1;
}
#endif

}  // namespace

bool writesToTerminal() {
    return isTerminal(stdout);
}

bool reportsToTerminal() {
    return isTerminal(stderr);
}

void joinTerminal() {
#ifdef Q_OS_WIN
    // Streams that lead to a file or a pipe are there already.
    if (GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_UNKNOWN &&
        AttachConsole(ATTACH_PARENT_PROCESS)) {
        // A terminal that cannot be read from is not known as one.
        std::freopen("CONOUT$", "w+", stdout);
        std::freopen("CONOUT$", "w+", stderr);
    }
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

StandardStream::StandardStream(std::FILE* file) : file_(file) {
#ifdef Q_OS_WIN
    std::fflush(file);
    _setmode(_fileno(file), _O_BINARY);  // the same bytes as on any other system
#endif
    open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 StandardStream::writeData(const char* data, qint64 size) {
#ifdef Q_OS_WIN
    if (isTerminal(file_)) {
        // It shows every character that way, whatever its code page is.
        constexpr qsizetype kMostAtOnce = 8192;
        const std::wstring text = QString::fromUtf8(data, size).toStdWString();
        DWORD written = 1;
        for (std::size_t at = 0; at < text.size() && written > 0; at += written) {
            const auto length =
                static_cast<DWORD>(std::min<std::size_t>(text.size() - at, kMostAtOnce));
            written = 0;
            WriteConsoleW(handleOf(file_), text.data() + at, length, &written, nullptr);
        }
        return written > 0 ? size : -1;
    }
#endif
    const auto length = static_cast<std::size_t>(size);
    const bool written = std::fwrite(data, 1, length, file_) == length;
    return std::fflush(file_) == 0 && written ? size : -1;
}

qint64 PrintableStream::writeData(const char* data, qint64 size) {
    const QByteArray shown = printable(QString::fromUtf8(data, size)).toUtf8();
    return StandardStream::writeData(shown.constData(), shown.size()) < 0 ? -1 : size;
}

}  // namespace packwise
