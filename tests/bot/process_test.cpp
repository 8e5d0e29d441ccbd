// The program itself, against a server that a test plays.
#include "bot/botseat.h"
#include "engine/deckfile.h"
#include "engine/picktext.h"
#include "support/peer.h"

namespace packwise {
namespace {

constexpr int kPatience = 10'000;  // milliseconds; only a failing test waits that long

class BotProcess : public testing::Test {
protected:
    QTcpServer server;
    QTemporaryDir decks;
    QProcess bot;

    void SetUp() override {
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        bot.setProcessChannelMode(QProcess::MergedChannels);
    }
    void TearDown() override {
        if (bot.state() != QProcess::NotRunning) {
            bot.kill();
            bot.waitForFinished();
        }
    }

    void start(const QStringList& more = {}) {
        bot.start(QStringLiteral(PACKWISE_BOT_PROGRAM),
                  QStringList{u"--port"_s, QString::number(server.serverPort()), u"--decks"_s,
                              decks.path(), u"--delay"_s, u"0"_s, u"--seed"_s, u"5"_s} +
                      more);
    }

    // Takes the next player to come and seats him. Gives his name.
    std::string seat(Peer& peer, int number) {
        EXPECT_TRUE(peer.acceptFrom(server));
        peer.say("HELO" + std::to_string(number) + "~");
        EXPECT_TRUE(peer.hearsSometime("VERS1.41~NAME"));
        EXPECT_TRUE(peer.hearsSometime("~"));
        const std::string& heard = peer.transcript();
        const std::size_t from = heard.find("NAME") + 4;
        const std::string name = heard.substr(from, heard.find('~', from) - from);
        const std::string own = "NAME" + std::to_string(number - 1) + name + "~";
        peer.say("MESG" + name + " has joined~" + own + "NAME0~NAME6Bruno Bot~" + own + "NAME7~");
        return name;
    }

    // The exit status once the program has ended by itself; -1 when it has not.
    int status() {
        const bool ended =
            QTest::qWaitFor([this] { return bot.state() == QProcess::NotRunning; }, kPatience);
        return ended && bot.exitStatus() == QProcess::NormalExit ? bot.exitCode() : -1;
    }

    std::string output() { return bot.readAll().toStdString(); }
};

TEST_F(BotProcess, DraftsSavesADeckForEachPlayerAndStaysUntilTheServerGoes) {
    start({u"--seats"_s, u"2"_s, u"--picks"_s});
    Peer one;
    Peer two;
    const std::string first = seat(one, 1);
    const std::string second = seat(two, 2);
    EXPECT_EQ(first, "Ada Bot");
    EXPECT_EQ(second, "Clara Bot");  // a person sits under the name between them
    const std::array<Peer*, 2> peers = {&one, &two};
    for (Peer* peer : peers) {
        peer->say("SEAT01~SEAT10~PAKSNo Such Set|../../x|Third||||~INFOB~ROUN1~BOOSUFirst|~");
        EXPECT_TRUE(peer->hearsSometime("CARDUFirst~BPCK~"));
        peer->say("BOOSBSecond \x92t\x1b[2J|~");
        EXPECT_TRUE(peer->hearsSometime("CARDBSecond \x92t\x1b[2J~BPCK~"));
    }
    std::set<std::string> codes;
    for (Peer* peer : peers) {
        peer->say("OVER~");
        EXPECT_TRUE(peer->hearsSometime("CODE"));
        EXPECT_TRUE(peer->hearsSometime("~"));
        const std::string& heard = peer->transcript();
        const std::size_t from = heard.find("CODE") + 4;
        codes.insert(heard.substr(from, heard.find('~', from) - from));
    }
    const QStringList files = QDir(decks.path()).entryList({u"*.dec"_s});
    ASSERT_EQ(files.size(), 2);
    std::set<std::string> worked;
    for (const QString& name : files) {
        QFile file(decks.filePath(name));
        ASSERT_TRUE(name.endsWith(u".dec") && file.open(QIODevice::ReadOnly));
        const std::string text = file.readAll().toStdString();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 41);
        worked.insert(std::to_string(codeOfDeckFile(text).value()));
        PickTextFault fault;
        const auto log = readPicks(
            bytesOf(decks.filePath(name.chopped(4) + u".picks.txt"_s)).toStdString(), fault);
        const std::vector<SeenPack> seen = {{1, 1, "No Such Set", "", {"First"}, 0},
                                            {1, 2, "No Such Set", "", {"Second \x92t\x1b[2J"}, 0}};
        EXPECT_EQ(log.value_or(PickLog()).packs, seen) << fault.what;
    }
    EXPECT_EQ(worked, codes);

    EXPECT_EQ(bot.state(), QProcess::Running);
    one.say("PING~CLOS~");
    EXPECT_TRUE(one.hearsSometime("PONG~"));
    two.close();
    EXPECT_EQ(status(), 0);
    const std::string told = output();
    for (const std::string& line :
         {first + ": sits at seat 1\n", first + ": pick 1 of pack 1: First\n",
          second + ": pick 2 of pack 1: Second \xE2\x80\x99t?[2J\n", first + ": deck saved ",
          first + ": the server has closed the draft\n", second + ": the link is lost\n"}) {
        EXPECT_NE(told.find(line), std::string::npos) << line << "is not in\n" << told;
    }
}

TEST_F(BotProcess, EndsInOrderWhateverTheServerDoes) {
    struct Case {
        const char* what;
        bool seated;
        std::function<void(Peer&)> act;
        int status;
        const char* line;
    };
    const auto flood = [](Peer& peer) { peer.say(std::string(100'000, '\xFF')); };
    for (const Case& c : {
             Case{"CLOS", true, [](Peer& peer) { peer.say("CLOS~"); }, 0, "has closed the draft"},
             Case{"vanishes", true, [](Peer& peer) { peer.vanish(); }, 0, "the link is lost"},
             Case{"closes", true, [](Peer& peer) { peer.close(); }, 0, "the link is lost"},
             Case{"noise", true, flood, 0, "noise"},
             Case{"no deck", true,
                  [this](Peer& peer) {
                      QDir(decks.path()).removeRecursively();
                      peer.say("OVER~CLOS~");
                  },
                  1, "cannot save the deck"},
             Case{"full", false,
                  [](Peer& peer) {
                      peer.say("STATServer is full~");
                      peer.close();
                  },
                  1, "the server is full"},
             Case{"noise at once", false, flood, 1, "noise"},
             Case{"vanishes at once", false, [](Peer& peer) { peer.vanish(); }, 1, "no seat"},
         }) {
        start();
        Peer peer;
        if (c.seated) {
            seat(peer, 1);
            peer.say("SEAT00~PAKSA|B|C||||~INFOB~ROUN1~BOOSUFirst|USecond|~");
            EXPECT_TRUE(peer.hearsSometime("BPCK"));
        } else {
            ASSERT_TRUE(peer.acceptFrom(server));
        }
        c.act(peer);
        EXPECT_EQ(status(), c.status) << c.what;
        EXPECT_NE(output().find(c.line), std::string::npos) << c.what;
        EXPECT_FALSE(server.hasPendingConnections()) << c.what << ": must not come back";
    }
}

TEST_F(BotProcess, TriesAnotherNameWhenItsOwnIsTaken) {
    start();
    Peer refused;
    ASSERT_TRUE(refused.acceptFrom(server));
    refused.say("HELO1~");
    EXPECT_TRUE(refused.hearsSometime("VERS1.41~NAME"));
    EXPECT_TRUE(refused.hearsSometime("~"));
    refused.close();
    Peer peer;
    const std::string name = seat(peer, 1);
    EXPECT_EQ(refused.transcript().find("NAME" + name + "~"), std::string::npos);
    peer.say("CLOS~");
    EXPECT_EQ(status(), 0);
}

TEST_F(BotProcess, BringsNoMorePlayersOnceOneIsKicked) {
    start({u"--seats"_s, u"3"_s, u"--delay"_s, u"0.5"_s});
    Peer one;
    Peer two;
    seat(one, 1);
    seat(two, 2);
    one.close();
    std::string told;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return (told += output()).find("2 of 3 joined") != std::string::npos; }, kPatience));
    two.close();
    EXPECT_EQ(status(), 0);
}

TEST_F(BotProcess, LeavesAServerThatSaysNothingForMoreThanHalfAMinute) {
    BotOptions options;
    options.port = server.serverPort();
    CardBook book("/nonexistent");
    BotSeat bots(options, book, 1, [](const QString&) {});
    bots.join("Ada");
    Peer peer;
    seat(peer, 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bots.player().knowsRoster(); }, kPatience));
    auto* const seconds = bots.findChild<QTimer*>(u"keepAlive"_s);
    ASSERT_TRUE(seconds && seconds->isActive());
    EXPECT_EQ(seconds->interval(), 1000);
    seconds->setInterval(0);
    EXPECT_TRUE(peer.waitClosed());
    EXPECT_FALSE(bots.isAlive());
}

TEST_F(BotProcess, SaysGoodByeWhenInterrupted) {
    start({u"--seats"_s, u"3"_s});
    Peer one;
    Peer two;
    seat(one, 1);
    seat(two, 2);
    Peer third;
    ASSERT_TRUE(third.acceptFrom(server));
    bot.terminate();
    for (Peer* peer : {&one, &two, &third}) {
        EXPECT_TRUE(peer->hearsSometime("DROP~"));
        EXPECT_TRUE(peer->waitClosed());
    }
    EXPECT_EQ(status(), 0);
}

TEST_F(BotProcess, RefusesWhatItCannotDo) {
    QFile inTheWay(decks.filePath(u"file"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    for (const QStringList& arguments :
         {QStringList{u"--seats"_s, u"0"_s}, QStringList{u"--seats"_s, u"9"_s},
          QStringList{u"--port"_s, u"70000"_s}, QStringList{u"--delay"_s, u"-1"_s},
          QStringList{u"--delay"_s, u"nan"_s}, QStringList{u"--seed"_s, u"x"_s},
          QStringList{u"--nonsense"_s}, QStringList{u"file\x1b[2J"_s},
          QStringList{u"--decks"_s, inTheWay.fileName() + u"/sub"_s}}) {
        start(arguments);
        EXPECT_EQ(status(), 1) << arguments.join(u' ').toStdString();
        const std::string told = output();
        EXPECT_EQ(told.find('\n') + 1, told.size()) << told;
        EXPECT_EQ(told.find('\x1b'), std::string::npos) << told;
    }
    server.close();
    bot.start(QStringLiteral(PACKWISE_BOT_PROGRAM), {u"--port"_s, u"1"_s});
    EXPECT_EQ(status(), 1);
    EXPECT_NE(output().find("cannot connect"), std::string::npos);
}

}  // namespace
}  // namespace packwise
