// A scripted peer on a real socket: it says bytes, keeps a whole transcript of what it is told,
// and expects the next messages in order. It can be a client of a server under test, or, over an
// accepted socket, the server of a client under test.
#pragma once

#include "platform/freeport.h"
#include "support/test.h"

#include <QTcpSocket>

namespace packwise {

class Peer {
public:
    // A peer that is not connected yet.
    Peer();

    // Connects to a port of this machine and waits for it. False on failure.
    bool connectTo(quint16 port);

    // Waits for a connection on that listener and takes it.
    bool acceptFrom(QTcpServer& listener);

    void say(std::string_view bytes);

    // Waits until exactly this text comes next in the stream. Lone "~" (the server's keep-alive)
    // between messages are passed over. Use as EXPECT_TRUE(peer.hears("HELO1~")).
    testing::AssertionResult hears(std::string_view text);

    // Waits until this text has come somewhere in the rest of the stream, and passes over it.
    testing::AssertionResult hearsSometime(std::string_view text);

    // Lets everything arrive that is under way, then gives the unread rest and passes over it.
    std::string rest();

    // Everything heard so far, keep-alives included.
    const std::string& transcript() const { return transcript_; }

    bool isConnected() const;
    // Waits until the other side has closed.
    bool waitClosed();
    void close();   // orderly
    void vanish();  // reset

    QTcpSocket& socket() { return *socket_; }

private:
    void take();

    std::unique_ptr<QTcpSocket> socket_;
    std::string transcript_;
    std::string unread_;  // without lone "~"
};

}  // namespace packwise
