// A socket control: one object that can listen, accept or connect, told by events and a state.
#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <string_view>

class QTcpServer;
class QTcpSocket;

namespace packwise {

// A connection that waits at a listener. What no control accepts within the handler is refused.
struct ConnectionRequest {
    qintptr descriptor = -1;
    bool taken = false;
};

class Socket : public QObject {
    Q_OBJECT
public:
    enum State {
        Closed = 0,
        Listening = 2,
        Connecting = 6,
        Connected = 7,
        Closing = 8,
        Failed = 9
    };

    // What may wait unread by the peer, in bytes, before the connection counts as failed.
    static constexpr qint64 kMostUnsent = qint64{1024} * 1024;
    // What the control takes in ahead of getData(), in bytes. More stays with the system, which
    // holds up the peer in the end.
    static constexpr qint64 kMostUnread = qint64{64} * 1024;

    explicit Socket(QObject* parent = nullptr);
    ~Socket() override;

    int state() const { return state_; }

    // The port to listen on; 0 lets the system choose. After a listen() that succeeded, the port
    // in use.
    quint16 localPort() const { return localPort_; }
    void setLocalPort(quint16 port) { localPort_ = port; }
    // The address of this machine to listen on, in dotted decimal; empty for all.
    void setLocalAddress(const QString& address) { localAddress_ = address; }
    // Begins to listen. False when the port cannot be had on that address; the state is then 0 and
    // listenFault() says why.
    bool listen();
    QString listenFault() const { return listenFault_; }

    // Takes the connection of a connectionRequest(), within its handler; the state becomes 7, or 9
    // when it is gone already.
    void accept(ConnectionRequest& request);

    QString remoteHost() const { return remoteHost_; }
    void setRemoteHost(const QString& host) { remoteHost_ = host; }
    quint16 remotePort() const { return remotePort_; }
    void setRemotePort(quint16 port) { remotePort_ = port; }
    // Begins to connect to remoteHost and remotePort.
    void connectToHost();
    // Why the last connectToHost() has failed; None while it has not, or once it has succeeded.
    enum class ConnectFault { None, Refused, NoAnswer, UnknownHost };
    ConnectFault connectFault() const { return connectFault_; }

    // The address of the last peer in dotted decimal; empty until a connection stands.
    QString remoteHostIp() const { return remoteHostIp_; }

    // Writes bytes if the state is 7. A failure, or more than kMostUnsent bytes unread by the
    // peer, puts the state to 9; no event comes during the call. What had arrived by then, up to
    // kMostUnread bytes, can still be taken.
    virtual void sendData(std::string_view data);
    // Bytes that the system has not taken yet, because the peer does not read.
    qint64 unsent() const;

    // The bytes that have arrived, at most so many; also what came before the peer closed.
    virtual std::string getData(std::size_t most = static_cast<std::size_t>(kMostUnread));
    qint64 bytesAvailable() const;

    // Closes in any state; what has been written still leaves, and what has not been taken is
    // forgotten. No event follows.
    virtual void close();

Q_SIGNALS:
    void connectionRequest(ConnectionRequest& request);
    void connected();
    void dataArrival(qint64 bytesTotal);
    // The peer has closed or reset the connection; the state is 8, or 9 when a write found it,
    // until close() is called. A dataArrival() for the last bytes has come before.
    void peerClosed();
    // Connecting or the connection has failed; the state is 9.
    void failed();

protected:
    // For a control without a network, which has sendData(), getData() and close() of its own.
    void setState(State state) { state_ = state; }

private:
    void adopt(QTcpSocket* socket);
    void onReadyRead();
    void onError(int error);
    void fail();
    std::size_t sendAtOnce(std::string_view data);
    void loseInWrite(bool byPeer);

    State state_ = Closed;
    quint16 localPort_ = 0;
    QString localAddress_;
    QString listenFault_;
    QString remoteHost_;
    quint16 remotePort_ = 0;
    QString remoteHostIp_;
    ConnectFault connectFault_ = ConnectFault::None;
    std::unique_ptr<QTcpServer> listener_;
    QTcpSocket* socket_ = nullptr;  // owned through the parent
    bool sending_ = false;
    std::string left_;  // what had arrived when the connection failed
};

}  // namespace packwise
