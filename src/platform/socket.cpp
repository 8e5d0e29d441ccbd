#include "platform/socket.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace packwise {

namespace {

constexpr int kLingerMilliseconds = 3000;

// A listener that hands out descriptors, so that its user decides which control takes one.
class Listener : public QTcpServer {
public:
    explicit Listener(Socket& owner) : owner_(owner) {}

protected:
    void incomingConnection(qintptr descriptor) override {
        ConnectionRequest request{descriptor};
        Q_EMIT owner_.connectionRequest(request);
        if (!request.taken) {
            QTcpSocket refused;
            refused.setSocketDescriptor(descriptor);
        }
    }

private:
    Socket& owner_;
};

void tune(QTcpSocket& socket) {
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
}

void limitSilence([[maybe_unused]] const QTcpSocket& socket) {
#ifdef Q_OS_LINUX
    // A peer whose machine has vanished is noticed after half a minute of unanswered writes.
    const unsigned int milliseconds = 30000;
    setsockopt(static_cast<int>(socket.socketDescriptor()), IPPROTO_TCP, TCP_USER_TIMEOUT,
               &milliseconds, sizeof milliseconds);
#endif
}

QString dotted(const QHostAddress& address) {
    bool isV4 = false;
    const quint32 v4 = address.toIPv4Address(&isV4);
    return isV4 ? QHostAddress(v4).toString() : address.toString();
}

}  // namespace

Socket::Socket(QObject* parent) : QObject(parent) {}

Socket::~Socket() = default;

bool Socket::listen() {
    close();
    listener_ = std::make_unique<Listener>(*this);
    if (!listener_->listen(QHostAddress::AnyIPv4, localPort_)) {
        listener_.reset();
        return false;
    }
    localPort_ = listener_->serverPort();
    state_ = Listening;
    return true;
}

void Socket::accept(ConnectionRequest& request) {
    close();
    remoteHostIp_.clear();
    auto* socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(request.descriptor)) {
        delete socket;
        state_ = Failed;
        return;
    }
    request.taken = true;
    adopt(socket);
    state_ = Connected;
    remoteHostIp_ = dotted(socket->peerAddress());
    tune(*socket);
    limitSilence(*socket);
}

void Socket::connectToHost() {
    close();
    remoteHostIp_.clear();
    auto* socket = new QTcpSocket(this);
    adopt(socket);
    state_ = Connecting;
    connect(socket, &QTcpSocket::connected, this, [this, socket] {
        state_ = Connected;
        remoteHostIp_ = dotted(socket->peerAddress());
        tune(*socket);
        Q_EMIT connected();
    });
    socket->connectToHost(remoteHost_, remotePort_);
}

void Socket::adopt(QTcpSocket* socket) {
    socket_ = socket;
    connect(socket, &QTcpSocket::readyRead, this, &Socket::onReadyRead);
    connect(socket, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError error) { onError(error); });
}

void Socket::onReadyRead() {
    // Only one readyRead comes while its handler runs; what arrived meanwhile is told here.
    const QPointer<QTcpSocket> current(socket_);
    while (current && current == socket_ && current->bytesAvailable() > 0) {
        const qint64 before = current->bytesAvailable();
        Q_EMIT dataArrival(before);
        if (current && current == socket_ && current->bytesAvailable() >= before) {
            return;  // nobody took anything
        }
    }
}

void Socket::onError(int error) {
    const bool byPeer = error == QAbstractSocket::RemoteHostClosedError;
    if (sending_) {
        // The writer goes on undisturbed; its owner hears of it once the handler has ended.
        state_ = Failed;
        QMetaObject::invokeMethod(
            this,
            [this, byPeer, lost = socket_] {
                if (socket_ == lost && state_ == Failed) {
                    byPeer ? Q_EMIT peerClosed() : Q_EMIT failed();
                }
            },
            Qt::QueuedConnection);
        return;
    }
    state_ = byPeer ? Closing : Failed;
    byPeer ? Q_EMIT peerClosed() : Q_EMIT failed();
}

void Socket::sendData(std::string_view data) {
    if (state_ != Connected) {
        return;
    }
    sending_ = true;
    const qint64 written = socket_->write(data.data(), static_cast<qint64>(data.size()));
    if (state_ == Connected) {
        socket_->flush();
    }
    sending_ = false;
    if (state_ == Connected && (written < 0 || socket_->bytesToWrite() > kMostUnsent)) {
        state_ = Failed;
    }
}

std::string Socket::getData() {
    if (!socket_) {
        return {};
    }
    std::string data(static_cast<std::size_t>(socket_->bytesAvailable()), '\0');
    const qint64 got = socket_->read(data.data(), static_cast<qint64>(data.size()));
    data.resize(static_cast<std::size_t>(got > 0 ? got : 0));
    return data;
}

void Socket::close() {
    if (listener_) {
        // It may be the one whose handler is running.
        listener_->close();
        listener_->setParent(this);
        listener_.release()->deleteLater();
    }
    if (QTcpSocket* old = socket_) {
        socket_ = nullptr;
        old->disconnect(this);
        const bool lost = state_ == Failed;
        connect(old, &QTcpSocket::disconnected, old, &QObject::deleteLater);
        if (lost || old->state() != QAbstractSocket::ConnectedState) {
            old->abort();
            old->deleteLater();
        } else {
            old->disconnectFromHost();
            QTimer::singleShot(kLingerMilliseconds, old, &QObject::deleteLater);
        }
    }
    state_ = Closed;
}

}  // namespace packwise
