#include "platform/lineinput.h"

#include <QSocketNotifier>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <unistd.h>

#include <array>
#include <cerrno>
#endif
#ifdef Q_OS_WIN
#include <windows.h>

#include <array>
#include <memory>
#include <mutex>
#include <thread>
#endif

namespace packwise {

namespace {

constexpr qsizetype kLongestLine = 64 * 1024;

}  // namespace

void LineInput::add(QByteArrayView bytes) {
    pending_.append(bytes);
    for (qsizetype end = 0; (end = pending_.indexOf('\n')) >= 0;) {
        const QString text = QString::fromUtf8(pending_.left(end)).trimmed();
        pending_.remove(0, end + 1);
        Q_EMIT line(text);
    }
    if (pending_.size() > kLongestLine) {
        pending_.clear();
    }
}

#ifdef Q_OS_UNIX

namespace {

constexpr int kInBackgroundMilliseconds = 1000;

// Reading would stop a process in the background of its own terminal.
bool isInBackground() {
    const pid_t foreground = tcgetpgrp(STDIN_FILENO);
    return foreground >= 0 && foreground != getpgrp();
}

}  // namespace

LineInput::LineInput(QObject* parent) : QObject(parent) {
    notifier_ = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &LineInput::take);
}

void LineInput::take() {
    if (isInBackground()) {
        notifier_->setEnabled(false);
        QTimer::singleShot(kInBackgroundMilliseconds, notifier_,
                           [this] { notifier_->setEnabled(true); });
        return;
    }
    std::array<char, 4096> block{};
    const ssize_t got = read(STDIN_FILENO, block.data(), block.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    if (got <= 0) {
        notifier_->setEnabled(false);
        return;
    }
    add({block.data(), static_cast<qsizetype>(got)});
}

#endif

#ifdef Q_OS_WIN

// What the object and the thread that reads for it share. Nothing ends a read that waits, so the
// thread may outlive the object.
struct LineInput::Reader {
    std::mutex mutex;
    LineInput* owner = nullptr;  // none once it is gone

    bool tell(const QByteArray& bytes) {
        const std::lock_guard lock(mutex);
        return owner && QMetaObject::invokeMethod(
                            owner, [to = owner, bytes] { to->add(bytes); }, Qt::QueuedConnection);
    }
};

namespace {

// Some bytes of the standard input, in UTF-8 if a person types them; empty at its end.
QByteArray readSome(HANDLE input) {
    DWORD mode = 0;
    DWORD got = 0;
    if (GetConsoleMode(input, &mode)) {
        std::array<wchar_t, 2048> typed{};
        const BOOL good = ReadConsoleW(input, typed.data(), DWORD{typed.size()}, &got, nullptr);
        // Ctrl+Z is how one types the end.
        return good && typed[0] != 0x1A ? QString::fromWCharArray(typed.data(), int(got)).toUtf8()
                                        : QByteArray();
    }
    std::array<char, 4096> block{};
    return ReadFile(input, block.data(), DWORD{block.size()}, &got, nullptr)
               ? QByteArray(block.data(), int(got))
               : QByteArray();
}

}  // namespace

LineInput::LineInput(QObject* parent) : QObject(parent), reader_(std::make_shared<Reader>()) {
    reader_->owner = this;
    std::thread([reader = reader_] {
        QByteArray bytes;
        do {
            bytes = readSome(GetStdHandle(STD_INPUT_HANDLE));
        } while (!bytes.isEmpty() && reader->tell(bytes));
    }).detach();
}

LineInput::~LineInput() {
    const std::lock_guard lock(reader_->mutex);
    reader_->owner = nullptr;
}

#else

struct LineInput::Reader {};

LineInput::~LineInput() = default;

#endif

}  // namespace packwise
