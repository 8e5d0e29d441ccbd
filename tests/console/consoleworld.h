// A console under test with everything around it, and clients on real sockets.
#pragma once

#include "companions/fakeclient.h"
#include "console/frmserver.h"
#include "engine/samplefiles.h"
#include "support/fakeshell.h"
#include "support/peer.h"
#include "widgets/heldkey.h"
#include "widgets/lazy.h"

#include <QScrollBar>

namespace packwise {

class NotingClient : public LocalClient {
public:
    void start(const QString& name, quint16 port) override {
        startedName = name;
        startedPort = port;
    }
    void showNote(const QString& line) override { notes.append(line); }
    QStringList notes;
    QString startedName;
    quint16 startedPort = 0;
};

class ConsoleWorld {
public:
    ConsoleWorld() {
        QDir::setCurrent(QString::fromStdString(folder.path().string()));
        folder.write("Sample.pw", sample::wholeSet());
        folder.write("Other.pw", sample::wholeSet());
        shell.settings().write(QStringLiteral("Sets"), QStringLiteral("1"),
                               QStringLiteral("Sample"));
        shell.settings().write(QStringLiteral("Sets"), QStringLiteral("2"),
                               QStringLiteral("Other"));
    }
    ~ConsoleWorld() { QDir::setCurrent(QDir::rootPath()); }

    FrmServer& console() {
        if (!server_) {
            server_ = std::make_unique<FrmServer>(
                shell, security, fixSeats, localClient, [this] { return draw(); }, records);
        }
        return *server_;
    }

    // Opens a free port without a local client.
    void listen() {
        console().chkClient->setChecked(false);
        console().txtPort->setText(QString::number(freePort()));
        console().cmdOpenPort->click();
        ASSERT_EQ(console().wskServer[0]->state(), Socket::Listening);
    }

    // A client that is connected and has heard its HELO, which must tell this socket number.
    std::unique_ptr<Peer> connected(int num) {
        auto peer = std::make_unique<Peer>();
        EXPECT_TRUE(peer->connectTo(console().wskServer[0]->localPort()));
        EXPECT_TRUE(peer->hears("HELO" + std::to_string(num) + "~"));
        return peer;
    }

    // A client that has joined under that name.
    std::unique_ptr<Peer> joined(int num, const std::string& name) {
        auto peer = connected(num);
        peer->say("VERS1.41~NAME" + name + "~");
        EXPECT_TRUE(peer->hearsSometime("~NAME7")) << name;
        peer->rest();
        return peer;
    }

    // As many clients, called P1, P2 and so on, on sockets 1, 2 and so on.
    std::vector<std::unique_ptr<Peer>> table(int players) {
        listen();
        std::vector<std::unique_ptr<Peer>> peers;
        for (int num = 1; num <= players; ++num) {
            peers.push_back(joined(num, "P" + std::to_string(num)));
        }
        for (auto& peer : peers) {
            peer->rest();
        }
        return peers;
    }

    void chooseSets() {
        for (QComboBox* box : console().cboPack) {
            box->setCurrentIndex(0);
        }
        console().cboPack[1]->setCurrentIndex(1);
    }

    // What is left of the Booster pack that the peer has just got, less its first card.
    static std::string lessFirstCard(Peer& peer) {
        EXPECT_TRUE(peer.hearsSometime("BOOS"));
        const std::string pack = peer.rest();
        const std::size_t from = pack.find('|') + 1;
        return pack.substr(from, pack.find('~') - from);
    }

    // The link of that socket breaks, and the console has yet to find out.
    void breakLink(Peer& peer, int num) {
        Socket& socket = *console().wskServer.at(static_cast<std::size_t>(num));
        peer.vanish();
        for (int write = 0; write < 1000 && socket.state() == Socket::Connected; ++write) {
            socket.sendData("~");
        }
        EXPECT_EQ(socket.state(), Socket::Failed);
    }

    bool seatIsFree(int num) {
        return QTest::qWaitFor(
            [&] { return console().wskServer.at(static_cast<std::size_t>(num))->state() == 0; },
            3000);
    }

    sample::TempFolder folder;
    QString records;  // the folder for records; none are kept unless it is set
    FakeShell shell;
    HeldKeys heldKeys;
    FakeClient link;
    NotingClient localClient;
    Lazy<FrmSecurity> security{[this] { return std::make_unique<FrmSecurity>(shell, link); }};
    Lazy<FrmFixSeats> fixSeats{[this] { return std::make_unique<FrmFixSeats>(shell); }};
    std::function<double()> draw = [value = 0.0]() mutable {
        value += 0.137;
        return value -= static_cast<int>(value);
    };

private:
    std::unique_ptr<FrmServer> server_;
};

}  // namespace packwise
