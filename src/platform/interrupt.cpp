#include "platform/interrupt.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#endif
#ifdef Q_OS_WIN
#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include <windows.h>

#include <mutex>
#endif

namespace packwise {

#ifdef Q_OS_UNIX

namespace {

// A signal handler may do no more than write to a pipe; the event loop reads it.
int pipeEnds[2] = {-1, -1};

extern "C" void onSignal(int) {
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
    errno = before;
}

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

// What whoever started the program told it to pass over, as nohup does, stays so.
void handle(int signal, void (*handler)(int)) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) {
        return;
    }
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

}  // namespace

Interrupt::Interrupt(QObject* parent) : QObject(parent) {
    if (pipe(pipeEnds) != 0) {
        return;
    }
    for (const int end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier_ = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        Q_EMIT interrupted();
    });
    for (const int signal : kSignals) {
        handle(signal, onSignal);
    }
}

Interrupt::~Interrupt() {
    if (!notifier_) {
        return;
    }
    for (const int signal : kSignals) {
        handle(signal, SIG_DFL);
    }
    delete notifier_;
    for (int& end : pipeEnds) {
        ::close(end);
        end = -1;
    }
}

#endif

#ifdef Q_OS_WIN

namespace {

std::mutex mutex;
Interrupt* waiting = nullptr;  // none once the wish is told

// The system calls it on a thread of its own.
BOOL WINAPI onConsoleEvent(DWORD event) {
    bool isFirst = false;
    {
        const std::lock_guard lock(mutex);
        if (Interrupt* const to = std::exchange(waiting, nullptr)) {
            QMetaObject::invokeMethod(to, &Interrupt::interrupted, Qt::QueuedConnection);
            isFirst = true;
        }
    }
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        // The process ends with this handler, or after the time that the system gives it.
        Sleep(INFINITE);
    }
    return isFirst;
}

// What a program without a console is asked with to end.
class CloseFilter : public QObject, public QAbstractNativeEventFilter {
public:
    explicit CloseFilter(Interrupt* parent) : QObject(parent) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* const got = static_cast<const MSG*>(message);
        const bool asked = !got->hwnd && got->message == WM_CLOSE;
        return asked && onConsoleEvent(CTRL_C_EVENT);
    }
};

}  // namespace

Interrupt::Interrupt(QObject* parent) : QObject(parent) {
    waiting = this;
    new CloseFilter(this);
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

Interrupt::~Interrupt() {
    const std::lock_guard lock(mutex);
    waiting = nullptr;
}

#endif

}  // namespace packwise
