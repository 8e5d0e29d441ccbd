// A host in this process: its commands, its lines, and its tables from the lobby to the next one.
#include "engine/samplefiles.h"
#include "host/host.h"
#include "server/drafter.h"
#include "support/peer.h"

namespace packwise {
namespace {

using testing::HasSubstr;
using testing::Not;

// Two cards to a pack.
const std::string kTinySet = sample::header(2, 0, 0) + sample::record("Ember", "+") +
                             sample::record("Harbour", "+") + sample::end();

class HostTables : public testing::Test {
protected:
    sample::TempFolder folder;
    HostOptions options;
    std::unique_ptr<Host> host;
    std::string told;
    std::optional<int> status;

    HostTables() {
        folder.write("Sample.pw", kTinySet);
        folder.write("Other.pw", kTinySet);
        options.cards = QString::fromStdString(folder.path().string());
        options.sets = {u"Sample"_s, u"Other"_s, u"Sample"_s};
        options.players = 2;
        options.port = freePort();
    }

    void open() {
        host = std::make_unique<Host>(
            options, [this](const QString& line) { told += line.toStdString() + '\n'; });
        QObject::connect(host.get(), &Host::finished, host.get(), [this](int s) { status = s; });
        ASSERT_EQ(host->open().toStdString(), "");
        for (QTimer* timer : host->table(0).findChildren<QTimer*>()) {
            timer->blockSignals(timer->interval() > 0);  // their handlers are called here
        }
    }

    std::unique_ptr<Peer> joined(int num, const std::string& name, int table = 0) {
        auto peer = std::make_unique<Peer>();
        EXPECT_TRUE(peer->connectTo(host->table(table).port()));
        EXPECT_TRUE(peer->hears("HELO" + std::to_string(num) + "~"));
        peer->say("VERS1.41~NAME" + name + "~");
        EXPECT_TRUE(peer->hearsSometime("~NAME7")) << name;
        peer->rest();
        return peer;
    }

    void type(const char* line) { host->onLine(QString::fromUtf8(line)); }
    void pass(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            host->table(0).onSecond();
        }
    }
    std::string toldSince() { return std::exchange(told, {}); }

    // Takes the first card of the pack that has come.
    static void pick(Peer& peer) {
        EXPECT_TRUE(peer.hearsSometime("BOOS"));
        const std::string pack = peer.rest();
        const std::size_t from = pack.find('|') + 1;
        peer.say("BPCK" + pack.substr(from, pack.find('~') - from) + "~");
    }
    // Picks all cards of a round.
    static void playRound(const std::vector<Peer*>& peers) {
        for (int card = 0; card < 2; ++card) {
            for (Peer* peer : peers) {
                pick(*peer);
            }
        }
    }
};

TEST_F(HostTables, CountDownToTheStartUnlessAPlayerLeaves) {
    open();
    auto ada = joined(1, "Ada");
    auto bob = joined(2, "Bob");
    pass(1);
    EXPECT_TRUE(ada->hearsSometime("MESG*The draft starts in 10 seconds.*~"));
    pass(9);
    bob->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return host->table(0).server().seat(1).name.empty(); }));
    pass(5);
    EXPECT_TRUE(ada->hearsSometime("MESG*Bob has left; the start is put off.*~"));
    EXPECT_EQ(host->table(0).server().state(), DraftServer::State::Lobby);
    EXPECT_THAT(toldSince(), HasSubstr("Bob has left, seat 2."));

    bob = joined(2, "Bob");
    pass(10);
    EXPECT_EQ(host->table(0).server().state(), DraftServer::State::Lobby);
    pass(1);
    EXPECT_TRUE(ada->hearsSometime("STATDraft in progress~"));
    EXPECT_TRUE(bob->hearsSometime("PAKSSample|Other|Sample||||~"));
    EXPECT_TRUE(QTcpServer().listen(QHostAddress::AnyIPv4, options.port)) << "nobody can join now";
}

TEST_F(HostTables, DoNotStartWithCardDataThatHasGoneBad) {
    open();
    auto ada = joined(1, "Ada");
    auto bob = joined(2, "Bob");
    folder.write("Other.pw", "damaged");
    pass(60);
    EXPECT_TRUE(ada->hearsSometime("the draft does not start.*~"));
    EXPECT_THAT(toldSince(), HasSubstr("\"Other\" cannot be dealt. The card file Other.pw"));
    type("start");
    EXPECT_THAT(toldSince(), HasSubstr("\"Other\" cannot be dealt."));
    folder.write("Other.pw", kTinySet);
    type("start");
    EXPECT_TRUE(bob->hearsSometime("STATDraft in progress~"));
}

TEST_F(HostTables, TellWhoIsWaitedForAndGoOnWithoutHimOnceHeIsKicked) {
    open();
    auto ada = joined(1, "Ada");
    auto mute = joined(2, "M\x1b[2Jute");
    type("start");
    EXPECT_THAT(toldSince(), HasSubstr("The draft starts: Booster, Sample - Other - Sample."));
    pass(100);
    pick(*ada);
    EXPECT_TRUE(ada->hearsSometime("BSTA"));
    pass(19);
    type("list");
    EXPECT_THAT(toldSince(), HasSubstr("  seat 2  M?[2Jute  127.0.0.1  waited for, 1:59 min\n"));
    pass(1);
    EXPECT_THAT(toldSince(), HasSubstr("has waited two minutes for M?[2Jute."));
    type("kick m?[2jute");
    EXPECT_TRUE(mute->waitClosed());
    EXPECT_THAT(toldSince(), HasSubstr("M?[2Jute is lost, seat 2; cards are picked at random"));
    type("list");
    EXPECT_THAT(toldSince(), Not(HasSubstr("waited for")));
    host->table(0).onTick();
    type("list");
    EXPECT_THAT(toldSince(), HasSubstr("  seat 1  Ada  127.0.0.1  waited for, 0 s\n"));
    pick(*ada);
    EXPECT_TRUE(ada->hearsSometime("BSTA"));
    ada->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !host->table(0).server().canGoOn(); }));
    pass(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return status.has_value(); })) << "nobody is left";
    EXPECT_EQ(status, 0);
}

TEST_F(HostTables, OpenAnewOnceThePlayersHaveGoneOrLingeredLongEnough) {
    options.again = true;
    options.lingerMinutes = 5;
    open();
    for (const bool lingers : {false, true}) {
        auto ada = joined(1, "Ada");
        auto bob = joined(2, "Bob");
        type("start");
        for (int round = 0; round < 3; ++round) {
            playRound({ada.get(), bob.get()});
        }
        EXPECT_TRUE(ada->hearsSometime("OVER~"));
        ada->say("CODE41~");
        EXPECT_TRUE(bob->hearsSometime("CODE041~"));
        if (lingers) {
            pass(1);
            EXPECT_TRUE(
                bob->hearsSometime("MESG*The table closes in 5 minutes; save your deck.*~"));
            pass(5 * 60);
            EXPECT_TRUE(bob->hearsSometime("CLOS~"));
        } else {
            pass(30);
            EXPECT_EQ(told.find("open anew"), told.npos);
        }
        ada->close();
        bob->close();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            pass(1);
            return told.find("open anew") != std::string::npos;
        }));
        EXPECT_THAT(toldSince(), HasSubstr("The codes of the decks: Ada 41, Bob none."));
    }
    joined(1, "Cleo");
    EXPECT_FALSE(status);
}

TEST_F(HostTables, FailAlone) {
    options.tables = 2;
    options.again = true;
    open();
    auto ada = joined(1, "Ada");
    auto bob = joined(1, "Bob", 1);
    type("1 start");
    EXPECT_TRUE(ada->hearsSometime("ROUN1~"));
    std::filesystem::remove(folder.path() / "Other.pw");
    playRound({ada.get()});
    EXPECT_TRUE(ada->hearsSometime("ROUN2~"));
    pass(1);
    EXPECT_TRUE(ada->hearsSometime("CLOS~"));
    EXPECT_THAT(told, HasSubstr("table 1: The draft cannot go on. \"Other\" cannot be dealt."));
    ada->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return host->table(0).isOver(); }));
    bob->say("MESGstill here~");
    EXPECT_TRUE(bob->hearsSometime("MESGstill here~"));
    EXPECT_FALSE(status);
    host->quit();
    EXPECT_TRUE(bob->hearsSometime("CLOS~"));
    bob->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return status.has_value(); }));
    EXPECT_EQ(status, 1);
}

TEST_F(HostTables, TakeCommandsForOneTableOrAll) {
    options.tables = 2;
    open();
    auto ada = joined(1, "Ada");
    auto other = joined(1, "Ada", 1);
    auto bob = joined(2, "#1", 1);
    bob->say("NAME Bob ~");
    EXPECT_TRUE(bob->hearsSometime("NAME7~"));
    EXPECT_THAT(toldSince(), HasSubstr("#1, seat 2, is called  Bob  now."));
    struct Case {
        const char* typed;
        const char* answer;
    };
    for (const auto& [typed, answer] :
         {Case{"start", "Which table?"}, Case{"3 list", "1 to 2"}, Case{"dance", "no command"},
          Case{"kick Ada", "Several tables"}, Case{"kick Zoe", "Nobody is called \"Zoe\""},
          Case{"2 kick", "Nobody is called"}, Case{"1 kick Bob", "Nobody is called"},
          Case{"quit 2", "no command"}, Case{"list", "table 2, port"}, Case{"help", "kick NAME"}}) {
        type(typed);
        EXPECT_THAT(toldSince(), HasSubstr(answer)) << typed;
    }
    type("1 say one ~ \xC3\xA9");
    type("say both");
    EXPECT_TRUE(ada->hears("MESG*Host: one - \xE9*~MESG*Host: both*~"));
    EXPECT_TRUE(other->hearsSometime("MESG*Host: both*~"));
    type("ping bob");
    EXPECT_TRUE(bob->hearsSometime("PING~"));
    bob->say("PONG~");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.find(" Bob  answers in ") != told.npos; }));
    type("kick #2");
    EXPECT_TRUE(bob->waitClosed());

    type("1 start");
    type("1 quit");
    EXPECT_THAT(toldSince(), HasSubstr("Type it once more"));
    EXPECT_TRUE(ada->hearsSometime("BOOS"));
    type("1 quit");
    EXPECT_TRUE(ada->hearsSometime("CLOS~"));
    type("2 quit");
    EXPECT_TRUE(other->hearsSometime("CLOS~"));
    ada->close();
    other->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return status.has_value(); }));
    EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace packwise
