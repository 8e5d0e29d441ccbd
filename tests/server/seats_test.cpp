#include "server/bench.h"

#include <gtest/gtest.h>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Seats, JoinAsTheProtocolTellsIt) {
    Bench bench;
    bench.listen();
    auto host = bench.connected(1);
    EXPECT_TRUE(bench.console().shaLight[0]->isHidden());
    host->say("VERS1.41~NAMEHost~");
    EXPECT_TRUE(
        host->hears("MESGHost has joined~NAME0Host~ADDR0127.0.0.1~"
                    "NAME0Host~NAME1~NAME2~NAME3~NAME4~NAME5~NAME6~NAME7~"));
    auto guest = bench.connected(2);
    EXPECT_TRUE(guest->hears("MESGDuplicate connection~"));
    // In single bytes, with line ends that vanish and a letter outside ASCII.
    for (const char c : std::string("VERS1.41~NA\r\nMEJos\xE9|x~")) {
        guest->say(std::string(1, c));
        QTest::qWait(0);
    }
    EXPECT_TRUE(
        guest->hears("MESGJos\xE9|x has joined~NAME1Jos\xE9|x~ADDR1127.0.0.1~"
                     "NAME0Host~NAME1Jos\xE9|x~NAME2~NAME3~NAME4~NAME5~NAME6~NAME7~"));
    EXPECT_TRUE(host->hears("MESGJos\xE9|x has joined~NAME1Jos\xE9|x~ADDR1127.0.0.1~"));
    EXPECT_EQ(bench.console().lstNames->text(1), u"José|x"_s);
    EXPECT_FALSE(bench.console().shaLight[1]->isHidden());
    EXPECT_EQ(bench.security().lstNames->text(1), u"José|x"_s);
    EXPECT_EQ(bench.security().lstIP->text(1), u"127.0.0.1"_s);

    // The light alternates with every message, known or not; a stump is none.
    Shape& light = *bench.console().shaLight[0];
    const QColor before = light.fillColor();
    bench.console().Dispatch(1, "PON");
    EXPECT_EQ(light.fillColor(), before);
    bench.console().Dispatch(1, "TEST");
    EXPECT_NE(light.fillColor(), before);
    bench.console().Dispatch(1, "ping");
    EXPECT_EQ(light.fillColor(), before);
    EXPECT_EQ(host->rest() + guest->rest(), "");
}

TEST(Seats, NinthConnectionIsTurnedAwayAndTheLowestFreeSeatIsNext) {
    Bench bench;
    auto peers = bench.table(8);
    Peer ninth;
    ASSERT_TRUE(ninth.connectTo(bench.console().wskServer[0]->localPort()));
    EXPECT_TRUE(ninth.hears("STATServer is full~"));
    EXPECT_TRUE(ninth.waitClosed());
    EXPECT_EQ(peers[0]->rest(), "");
    EXPECT_EQ(bench.console().wskServer[9]->state(), Socket::Closed);

    peers[4]->close();
    EXPECT_TRUE(peers[0]->hears("MESGP5 disconnected~DROP4~"));
    peers[1]->close();
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~"));
    EXPECT_EQ(bench.console().lstNames->text(1), u" "_s);
    EXPECT_EQ(bench.security().lstNames->text(1), u" "_s);
    EXPECT_EQ(bench.security().lstIP->text(1), u" "_s);
    EXPECT_TRUE(bench.console().shaLight[1]->isHidden());
    bench.joined(2, "New");
}

TEST(Seats, DuplicateNamesAndOldVersions) {
    Bench bench;
    auto peers = bench.table(1);
    for (const std::string name : {"P1", " "}) {
        auto copy = bench.connected(2);
        copy->say("VERS1.41~NAME" + name + "~PING~");
        EXPECT_TRUE(copy->waitClosed());
        EXPECT_TRUE(peers[0]->hears("MESG disconnected~DROP1~MESGKicking duplicate " + name + "~"));
    }
    EXPECT_EQ(bench.console().lstNames->text(0), u"P1"_s);

    auto other = bench.joined(2, "p1");  // another name, since case counts
    peers[0]->rest();

    auto old = bench.connected(3);
    EXPECT_TRUE(old->hears("MESGDuplicate connection~"));
    old->say("VERS1.2~");
    EXPECT_TRUE(
        old->hears("MESGYou are using version 1.2~MESGThis server is version 1.41~"
                   "MESG3 is using an old version.~"));
    EXPECT_TRUE(peers[0]->hears("MESG3 is using an old version.~"));
    // The seat's next owner inherits neither the version nor the half message.
    old->say("NAMEhal");
    QTest::qWait(1);
    old->close();
    EXPECT_TRUE(peers[0]->hears("MESG disconnected~DROP2~"));
    auto silent = bench.connected(3);
    EXPECT_TRUE(silent->hears("MESGDuplicate connection~"));
    silent->say("NAMEMute~");
    EXPECT_TRUE(
        silent->hears("MESGYou are using version 1.3~MESGThis server is version 1.41~"
                      "MESGMute has joined~NAME2Mute~"));
}

TEST(Seats, ChatDropAndCodes) {
    Bench bench;
    auto peers = bench.table(2);
    struct Row {
        const char* said;
        const char* both;
    };
    for (const Row& row :
         {Row{"MESGHi | there~", "MESGHi | there~"}, Row{"DROP~", "MESGP1 intentionally dropped.~"},
          Row{"CODE-1234567~", "CODE0-1234567~"}}) {
        peers[0]->say(row.said);
        EXPECT_TRUE(peers[0]->hears(row.both));
        EXPECT_TRUE(peers[1]->hears(row.both));
    }
    bench.console().chkSilence->click();
    peers[0]->say("MESGpsst~PING~");
    EXPECT_TRUE(peers[0]->hears("MESG-silent draft-~PONG~"));
    EXPECT_EQ(peers[1]->rest(), "");
    bench.console().Dispatch(1, "CARDUFirst Card");
    bench.console().Dispatch(1, "CARDBSecond Card");
    EXPECT_EQ(bench.console().playerCards[0], "First Card|Second Card|");
}

TEST(Seats, MalformedMessagesChangeNothing) {
    Bench bench;
    auto peers = bench.table(2);
    bench.chooseSets();
    for (const bool inDraft : {false, true}) {
        if (inDraft) {
            bench.console().cmdStart->click();
            EXPECT_TRUE(peers[0]->hearsSometime("BOOS"));
            peers[0]->rest();
            peers[1]->rest();
        }
        const std::string huge(60000, 'x');
        for (const std::string& message :
             std::initializer_list<std::string>{"",
                                                "N",
                                                "NAM",
                                                "NAME",
                                                "CARD",
                                                "CARDU",
                                                "CARDUa|b",
                                                "CODE",
                                                "CODEx",
                                                "CODE1x",
                                                "CODE007",
                                                "CODE99999999999999999999",
                                                "BPCK|",
                                                "BPCKx",
                                                "BPCKUa|Ub",
                                                "BPCK" + huge,
                                                "RPCK",
                                                "RPCKx",
                                                "RPCK-1",
                                                "RPCK99999999999",
                                                "RPCK0",
                                                "RAND",
                                                "RROK",
                                                "RPOK",
                                                "SEAT99",
                                                "BOOSUa|",
                                                std::string("\0\0\0\0\0", 5),
                                                "\xFF\xFE\x80\x81",
                                                huge}) {
            peers[0]->say(message + "~");
        }
        peers[0]->say("PING~");
        EXPECT_TRUE(peers[0]->hears("PONG~"));
        EXPECT_EQ(peers[0]->rest() + peers[1]->rest(), "");
        EXPECT_EQ(bench.console().playerCards[0], "");
        EXPECT_EQ(bench.console().lstNames->text(0), u"P1"_s);
    }
}

TEST(Seats, FloodsCostOnlyTheirOwnSeat) {
    Bench bench;
    auto peers = bench.table(3);
    peers[1]->say(std::string(70000, 'x'));
    EXPECT_TRUE(peers[1]->waitClosed());
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~"));

    // The longest name goes to the others with words of the server's own.
    auto wordy = bench.connected(2);
    wordy->say("NAME" + std::string(kMostClientMessageLength - kCommandLength, 'n') + "~");
    EXPECT_TRUE(peers[0]->hearsSometime("n has joined~"));
    MessageSplitter heard;
    heard.append(peers[0]->transcript());
    EXPECT_FALSE(heard.overflowed());
    wordy->close();
    EXPECT_TRUE(peers[0]->hearsSometime("DROP1~"));

    // The third reads nothing more while the first chats on.
    peers[2]->socket().setReadBufferSize(1);
    const std::string line = "MESG" + std::string(50000, 'y') + "~";
    for (int i = 0; i < 400 && bench.console().lstNames->text(2) != u" "; ++i) {
        bench.console().Broadcast(line);
        peers[0]->rest();
    }
    EXPECT_EQ(bench.console().lstNames->text(2), u" "_s);
    peers[0]->say("PING~");
    EXPECT_TRUE(peers[0]->hearsSometime("PONG~"));
    EXPECT_NE(peers[0]->transcript().find("MESGP3 disconnected~DROP2~"), std::string::npos);
}

TEST(Seats, AVanishedClientIsFoundByThePoke) {
    Bench bench;
    auto peers = bench.table(2);
    peers[1]->vanish();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            bench.console().tmrPoke_Timer();
            return bench.console().lstNames->text(1) == u" ";
        },
        3000));
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~"));
    EXPECT_NE(peers[0]->transcript().find("~~"), std::string::npos);
}

}  // namespace
}  // namespace packwise
