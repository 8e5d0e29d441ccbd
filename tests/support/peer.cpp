#include "support/peer.h"

namespace packwise {

namespace {

constexpr int kPatience = 3000;  // milliseconds; only a failing test waits that long

}  // namespace

Peer::Peer() : socket_(std::make_unique<QTcpSocket>()) {}

bool Peer::connectTo(quint16 port) {
    socket_->connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    return QTest::qWaitFor([this] { return socket_->state() == QAbstractSocket::ConnectedState; },
                           kPatience);
}

bool Peer::acceptFrom(QTcpServer& listener) {
    if (!QTest::qWaitFor([&] { return listener.hasPendingConnections(); }, kPatience)) {
        return false;
    }
    socket_.reset(listener.nextPendingConnection());
    socket_->setParent(nullptr);
    return true;
}

void Peer::say(std::string_view bytes) {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    socket_->flush();
}

void Peer::take() {
    const QByteArray bytes = socket_->readAll();
    for (const char c : bytes) {
        const bool betweenMessages = unread_.empty()
                                         ? transcript_.empty() || transcript_.back() == '~'
                                         : unread_.back() == '~';
        transcript_ += c;
        if (c != '~' || !betweenMessages) {
            unread_ += c;
        }
    }
}

testing::AssertionResult Peer::hears(std::string_view text) {
    const bool came = QTest::qWaitFor(
        [&] {
            take();
            return unread_.size() >= text.size() ||
                   unread_.compare(0, unread_.size(), text, 0, unread_.size()) != 0;
        },
        kPatience);
    if (came && unread_.starts_with(text)) {
        unread_.erase(0, text.size());
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "wanted next: " << text << "\nbut heard: " << unread_;
}

testing::AssertionResult Peer::hearsSometime(std::string_view text) {
    std::size_t at = std::string::npos;
    const bool came = QTest::qWaitFor(
        [&] {
            take();
            at = unread_.find(text);
            return at != std::string::npos;
        },
        kPatience);
    if (!came) {
        return testing::AssertionFailure() << "never heard: " << text << "\nbut: " << unread_;
    }
    unread_.erase(0, at + text.size());
    return testing::AssertionSuccess();
}

std::string Peer::rest() {
    std::size_t before = std::string::npos;
    while (before != transcript_.size()) {
        before = transcript_.size();
        for (int turn = 0; turn < 5; ++turn) {
            QTest::qWait(1);
            take();
        }
    }
    return std::exchange(unread_, {});
}

bool Peer::isConnected() const {
    return socket_->state() == QAbstractSocket::ConnectedState;
}

bool Peer::waitClosed() {
    return QTest::qWaitFor(
        [this] {
            take();
            return socket_->state() == QAbstractSocket::UnconnectedState;
        },
        kPatience);
}

void Peer::close() {
    socket_->disconnectFromHost();
}

void Peer::vanish() {
    socket_->abort();
}

}  // namespace packwise
