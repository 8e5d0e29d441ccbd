#include "platform/socket.h"

#include "platform/rawsocket.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <array>

namespace packwise {

namespace {

constexpr int kLingerMilliseconds = 3000;
// A listener that could not accept, because the process has no descriptor left, tries again.
constexpr int kAcceptAgainMilliseconds = 200;
// What the system may hold for a peer that does not read; what comes behind it waits no longer.
constexpr int kSystemSendBuffer = 128 * 1024;

// A listener that hands out descriptors, so that its user decides which control takes one.
class Listener : public QTcpServer {
public:
    explicit Listener(Socket& owner) : owner_(owner) {
        setProxy(QNetworkProxy::NoProxy);
        connect(this, &QTcpServer::acceptError, this, [this] {
            QTimer::singleShot(kAcceptAgainMilliseconds, this, &QTcpServer::resumeAccepting);
        });
    }

protected:
    void incomingConnection(qintptr descriptor) override {
        ConnectionRequest request{descriptor};
        Q_EMIT owner_.connectionRequest(request);
        if (!request.taken) {
            closeRaw(descriptor);
        }
    }

private:
    Socket& owner_;
};

void tune(QTcpSocket& socket) {
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    socket.setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSystemSendBuffer);
    preventSignals(socket.socketDescriptor());
}

Socket::ConnectFault faultOf(int error) {
    switch (error) {
        case QAbstractSocket::ConnectionRefusedError:
            return Socket::ConnectFault::Refused;
        case QAbstractSocket::HostNotFoundError:
            return Socket::ConnectFault::UnknownHost;
        default:
            return Socket::ConnectFault::NoAnswer;
    }
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
    const QHostAddress address =
        localAddress_.isEmpty() ? QHostAddress(QHostAddress::AnyIPv4) : QHostAddress(localAddress_);
    if (!listener_->listen(address, localPort_)) {
        listenFault_ = listener_->errorString();
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
    limitSilence(socket->socketDescriptor());
}

void Socket::connectToHost() {
    close();
    remoteHostIp_.clear();
    auto* socket = new QTcpSocket(this);
    adopt(socket);
    state_ = Connecting;
    connectFault_ = ConnectFault::None;
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
    left_.clear();
    // Friends are reached directly, whatever proxy the desktop has for the web.
    socket->setProxy(QNetworkProxy::NoProxy);
    socket->setReadBufferSize(kMostUnread);
    connect(socket, &QTcpSocket::readyRead, this, &Socket::onReadyRead);
    connect(socket, &QTcpSocket::errorOccurred, this,
            [this](QAbstractSocket::SocketError error) { onError(error); });
}

void Socket::onReadyRead() {
    // Only one readyRead comes while its handler runs; what arrived meanwhile is told here.
    const QPointer<QTcpSocket> current(socket_);
    while (current && current == socket_ && bytesAvailable() > 0) {
        const qint64 before = bytesAvailable();
        Q_EMIT dataArrival(before);
        if (current && current == socket_ && bytesAvailable() >= before) {
            return;  // nobody took anything
        }
    }
}

void Socket::onError(int error) {
    const bool byPeer = error == QAbstractSocket::RemoteHostClosedError;
    if (state_ == Connecting) {
        connectFault_ = faultOf(error);
    }
    if (sending_) {
        loseInWrite(byPeer);
        return;
    }
    if (byPeer) {
        state_ = Closing;
        Q_EMIT peerClosed();
    } else {
        fail();
        Q_EMIT failed();
    }
}

void Socket::fail() {
    state_ = Failed;
    left_.append(socket_->readAll().toStdString());
}

// The writer goes on undisturbed; the owner hears of the last bytes and of the loss once its
// handler has ended.
void Socket::loseInWrite(bool byPeer) {
    fail();
    socket_->disconnect(this);
    QMetaObject::invokeMethod(
        this,
        [this, byPeer, lost = socket_] {
            const auto stillLost = [&] { return socket_ == lost && state_ == Failed; };
            if (stillLost()) {
                onReadyRead();
            }
            if (stillLost()) {
                byPeer ? Q_EMIT peerClosed() : Q_EMIT failed();
            }
        },
        Qt::QueuedConnection);
}

void Socket::sendData(std::string_view data) {
    if (state_ != Connected) {
        return;
    }
    sending_ = true;
    if (socket_->bytesToWrite() == 0) {
        data.remove_prefix(sendAtOnce(data));
    }
    if (state_ == Connected && !data.empty()) {
        const qint64 written = socket_->write(data.data(), static_cast<qint64>(data.size()));
        if (state_ == Connected) {
            socket_->flush();
        }
        if (state_ == Connected && (written < 0 || unsent() > kMostUnsent)) {
            fail();
        }
    }
    sending_ = false;
}

// Hands bytes to the system and gives how many it took. Qt closes a socket whose write fails, and
// what had arrived on it is gone with it; so the write is made here.
std::size_t Socket::sendAtOnce(std::string_view data) {
    const qintptr descriptor = socket_->socketDescriptor();
    const RawWrite write = writeRaw(descriptor, data);
    if (write.fault != RawWrite::None) {
        loseInWrite(write.fault == RawWrite::ByPeer);
        std::array<char, 4096> block{};
        std::size_t got = 0;
        while (left_.size() < static_cast<std::size_t>(kMostUnread) &&
               (got = readRaw(descriptor, block)) > 0) {
            left_.append(block.data(), got);
        }
    }
    return write.taken;
}

qint64 Socket::unsent() const {
    return socket_ ? socket_->bytesToWrite() : 0;
}

qint64 Socket::bytesAvailable() const {
    // What comes after a failure is not taken any more.
    const bool still = socket_ && state_ != Failed;
    return static_cast<qint64>(left_.size()) + (still ? socket_->bytesAvailable() : 0);
}

std::string Socket::getData(std::size_t most) {
    if (!left_.empty() || !socket_ || state_ == Failed) {
        std::string data = left_.substr(0, most);
        left_.erase(0, data.size());
        return data;
    }
    std::string data(std::min(most, static_cast<std::size_t>(socket_->bytesAvailable())), '\0');
    const qint64 got = socket_->read(data.data(), static_cast<qint64>(data.size()));
    data.resize(static_cast<std::size_t>(std::max<qint64>(got, 0)));
    return data;
}

void Socket::close() {
    left_.clear();
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
