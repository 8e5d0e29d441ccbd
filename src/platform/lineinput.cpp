#include "platform/lineinput.h"

#include <QSocketNotifier>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <unistd.h>

#include <array>
#include <cerrno>
#endif

namespace packwise {

#ifdef Q_OS_UNIX

namespace {

constexpr qsizetype kLongestLine = 64 * 1024;
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
    pending_.append(block.data(), static_cast<qsizetype>(got));
    for (qsizetype end = 0; (end = pending_.indexOf('\n')) >= 0;) {
        const QString text = QString::fromUtf8(pending_.left(end)).trimmed();
        pending_.remove(0, end + 1);
        Q_EMIT line(text);
    }
    if (pending_.size() > kLongestLine) {
        pending_.clear();
    }
}

#else

LineInput::LineInput(QObject* parent) : QObject(parent) {}

void LineInput::take() {}

#endif

}  // namespace packwise
