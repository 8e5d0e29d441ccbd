#include "platform/socket.h"

#include "support/peer.h"

#include <QNetworkProxy>
#include <QSignalSpy>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace packwise {
namespace {

class SocketTest : public testing::Test {
protected:
    void SetUp() override {
        QObject::connect(&listener, &Socket::connectionRequest, &seat,
                         [this](ConnectionRequest& request) {
                             if (accepting) {
                                 seat.accept(request);
                             }
                         });
        QObject::connect(&seat, &Socket::dataArrival, &seat,
                         [this] { received += taking ? seat.getData() : std::string(); });
        QObject::connect(&seat, &Socket::peerClosed, &seat, [this] { ++closes; });
        ASSERT_TRUE(listener.listen());
    }

    bool join(Peer& peer) {
        return peer.connectTo(listener.localPort()) &&
               QTest::qWaitFor([this] { return seat.state() == Socket::Connected; });
    }

    Socket listener;
    Socket seat;
    bool accepting = true;
    bool taking = true;
    std::string received;
    int closes = 0;
};

TEST_F(SocketTest, CarriesBytesBothWaysAndTellsTheLastOnesBeforeTheClose) {
    Peer peer;
    ASSERT_TRUE(join(peer));
    EXPECT_EQ(seat.remoteHostIp(), u"127.0.0.1"_s);
    seat.sendData("HELO1~");
    EXPECT_TRUE(peer.hears("HELO1~"));
    peer.say("PING~DROP~");
    peer.close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return closes == 1; }));
    EXPECT_EQ(received, "PING~DROP~");
    EXPECT_NE(seat.state(), Socket::Connected);
    EXPECT_NE(seat.state(), Socket::Closed);
    seat.close();
    EXPECT_EQ(seat.state(), Socket::Closed);
}

TEST_F(SocketTest, AControlServesOnePeerAfterAnotherAndCloseIsSilent) {
    for (int round = 0; round < 3; ++round) {
        Peer peer;
        ASSERT_TRUE(join(peer));
        seat.sendData("last words~");
        seat.close();
        EXPECT_TRUE(peer.hears("last words~"));
        EXPECT_TRUE(peer.waitClosed());
    }
    EXPECT_EQ(closes, 0);
}

TEST_F(SocketTest, WhatNobodyAcceptsIsRefusedAndAClosedListenerTakesNobody) {
    accepting = false;
    Peer refused;
    refused.connectTo(listener.localPort());
    EXPECT_TRUE(refused.waitClosed());
    const quint16 port = listener.localPort();
    listener.close();
    Socket client;
    QSignalSpy failed(&client, &Socket::failed);
    client.setRemoteHost(u"127.0.0.1"_s);
    client.setRemotePort(port);
    client.connectToHost();
    ASSERT_TRUE(QTest::qWaitFor([&] { return failed.count() == 1; }));
    EXPECT_EQ(client.state(), Socket::Failed);
    ConnectionRequest gone;
    client.accept(gone);
    EXPECT_FALSE(gone.taken);
}

TEST_F(SocketTest, APortInUseCannotBeListenedOn) {
    Socket second;
    second.setLocalPort(listener.localPort());
    EXPECT_FALSE(second.listen());
    EXPECT_EQ(second.state(), Socket::Closed);
}

TEST_F(SocketTest, APeerThatDoesNotReadCostsOnlyItsConnection) {
    Peer peer;
    ASSERT_TRUE(join(peer));
    peer.socket().setReadBufferSize(1);
    const std::string block(256 * 1024, 'x');
    int blocks = 0;
    while (seat.state() == Socket::Connected && blocks < 256) {
        seat.sendData(block);
        ++blocks;
    }
    EXPECT_EQ(seat.state(), Socket::Failed) << "64 MiB were taken";
    seat.close();
    Peer next;
    EXPECT_TRUE(join(next));
}

TEST_F(SocketTest, ALossInTheMiddleOfWritingIsToldAfterTheWriterWithWhatCameBefore) {
    for (const bool inOrder : {true, false}) {
        Peer peer;
        ASSERT_TRUE(join(peer));
        received.clear();
        closes = 0;
        // The first comes to the control and is not taken, the second only to the system.
        taking = false;
        peer.say("CARDUx~");
        EXPECT_TRUE(QTest::qWaitFor([&] { return seat.bytesAvailable() > 0; }));
        taking = true;
        peer.say("CODE1~");
        inOrder ? peer.close() : peer.vanish();
        for (int write = 0; write < 1000 && seat.state() == Socket::Connected; ++write) {
            seat.sendData("~");
        }
        EXPECT_EQ(seat.state(), Socket::Failed);
        EXPECT_EQ(closes, 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return closes == 1; }));
        EXPECT_EQ(received, "CARDUx~CODE1~");
        seat.close();
    }
}

TEST_F(SocketTest, ObeysNoProxy) {
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 9));
    Socket own;
    EXPECT_TRUE(own.listen());
    Socket client;
    client.setRemoteHost(u"127.0.0.1"_s);
    client.setRemotePort(listener.localPort());
    client.connectToHost();
    EXPECT_TRUE(QTest::qWaitFor([&] { return client.state() == Socket::Connected; }));
    // Qt itself passes proxies over on this machine alone.
    EXPECT_EQ(client.findChild<QTcpSocket*>()->proxy().type(), QNetworkProxy::NoProxy);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::DefaultProxy);
}

#ifdef Q_OS_LINUX
TEST_F(SocketTest, AListenerGoesOnAfterTheProcessRanOutOfDescriptors) {
    Peer peer;
    peer.socket().connectToHost(u"127.0.0.1"_s, listener.localPort());
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const int next = dup(0);
    close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    ASSERT_TRUE(QTest::qWaitFor([&] { return peer.isConnected(); }));
    for (int turn = 0; turn < 20; ++turn) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(seat.state(), Socket::Closed);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(QTest::qWaitFor([&] { return seat.state() == Socket::Connected; }));
}
#endif

}  // namespace
}  // namespace packwise
