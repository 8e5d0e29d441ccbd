#include "console/consoleworld.h"

#include <QElapsedTimer>

namespace packwise {
namespace {

TEST(Seats, JoinAsTheProtocolTellsIt) {
    ConsoleWorld world;
    world.listen();
    auto host = world.connected(1);
    EXPECT_TRUE(world.console().shaLight[0]->isHidden());
    host->say("VERS1.41~NAMEHost~");
    EXPECT_TRUE(
        host->hears("MESGHost has joined~NAME0Host~ADDR0127.0.0.1~"
                    "NAME0Host~NAME1~NAME2~NAME3~NAME4~NAME5~NAME6~NAME7~"));
    auto guest = world.connected(2);
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
    EXPECT_EQ(world.console().lstNames->text(1), u"José|x"_s);
    EXPECT_FALSE(world.console().shaLight[1]->isHidden());
    EXPECT_EQ(world.security().lstNames->text(1), u"José|x"_s);
    EXPECT_EQ(world.security().lstIP->text(1), u"127.0.0.1"_s);

    // The light alternates with every message, known or not; a stump is none.
    Shape& light = *world.console().shaLight[0];
    const QColor before = light.fillColor();
    world.console().server().handle(1, "PON");
    EXPECT_EQ(light.fillColor(), before);
    world.console().server().handle(1, "TEST");
    EXPECT_NE(light.fillColor(), before);
    world.console().server().handle(1, "ping");
    EXPECT_EQ(light.fillColor(), before);
    EXPECT_EQ(host->rest() + guest->rest(), "");

    guest->say("CODE-1234567~");
    EXPECT_TRUE(host->hears("CODE1-1234567~"));
    EXPECT_EQ(world.security().lstCode->text(1), u"-1234567"_s);
    world.console().chkSilence->click();
    guest->say("MESGpsst~");
    EXPECT_TRUE(guest->hearsSometime("MESG-silent draft-~"));
    EXPECT_EQ(host->rest(), "");
}

TEST(Seats, NinthConnectionIsTurnedAwayAndTheLowestFreeSeatIsNext) {
    ConsoleWorld world;
    auto peers = world.table(8);
    Peer ninth;
    ninth.connectTo(world.console().wskServer[0]->localPort());  // it may be over by then
    EXPECT_TRUE(ninth.hears("STATServer is full~"));
    EXPECT_TRUE(ninth.waitClosed());
    EXPECT_EQ(peers[0]->rest(), "");
    EXPECT_EQ(world.console().wskServer[9]->state(), Socket::Closed);

    peers[4]->close();
    EXPECT_TRUE(peers[0]->hears("MESGP5 disconnected~DROP4~"));
    peers[1]->close();
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~"));
    EXPECT_EQ(world.console().lstNames->text(1), u" "_s);
    EXPECT_EQ(world.security().lstNames->text(1), u" "_s);
    EXPECT_EQ(world.security().lstIP->text(1), u" "_s);
    EXPECT_TRUE(world.console().shaLight[1]->isHidden());
    world.joined(2, "New");
}

TEST(Seats, WhoReadsNothingCostsOnlyHisOwnSeat) {
    ConsoleWorld world;
    auto peers = world.table(2);
    peers[1]->socket().setReadBufferSize(1);
    const std::string line = "MESG" + std::string(50000, 'y') + "~";
    for (int i = 0; i < 400 && world.console().lstNames->text(1) != u" "; ++i) {
        world.console().server().broadcast(line);
        peers[0]->rest();
    }
    EXPECT_EQ(world.console().lstNames->text(1), u" "_s);
    EXPECT_NE(peers[0]->transcript().find("MESGP2 disconnected~DROP1~"), std::string::npos);
}

// One seat writes as fast as it can, another reads nothing at all. Only the first one waits.
TEST(Seats, WhoFloodsWaitsAndNobodyElse) {
    ConsoleWorld world;
    auto peers = world.table(4);
    world.chooseSets();
    world.console().tmrPoke->stop();
    peers[2]->socket().setReadBufferSize(1);
    std::string lines;
    while (lines.size() < 1024 * 1024) {
        lines += "MESG" + std::string(lines.size() % 500, 'y') + "~PING~";
    }
    std::vector<qint64> answers;  // milliseconds
    for (const bool inDraft : {false, true}) {
        if (inDraft) {
            world.console().cmdStart->click();
            EXPECT_TRUE(peers[3]->hearsSometime("BOOS"));
        }
        for (int i = 0; i < 100; ++i) {
            if (peers[1]->socket().bytesToWrite() < 1024 * 1024) {
                peers[1]->say(lines);
            }
            if (i % 10 == 0) {
                world.console().tmrPoke_Timer();
            }
            QElapsedTimer clock;
            clock.start();
            peers[3]->say("PING~");
            ASSERT_TRUE(peers[3]->hearsSometime("PONG~"));
            answers.push_back(clock.elapsed());
            peers[1]->rest();
        }
    }
    std::nth_element(answers.begin(), answers.begin() + 100, answers.end());
    EXPECT_LT(answers[100], 200);
    for (int row = 0; row < 4; ++row) {
        EXPECT_NE(world.console().lstNames->text(row), u" "_s) << row;
    }
    // The first MiB, and what 20 pokes bring.
    EXPECT_LT(peers[3]->transcript().size(), 4U * 1024 * 1024);
    EXPECT_GT(peers[3]->transcript().size(), 2U * 1024 * 1024);
    EXPECT_GT(peers[1]->socket().bytesToWrite(), 0);
}

TEST(Seats, ManyMessagesOfOneSeatWaitBehindTheOthers) {
    ConsoleWorld world;
    auto peers = world.table(2);
    for (const std::size_t many : {0U, 1U}) {
        Peer& other = *peers[1 - many];
        const std::size_t start = other.transcript().size();
        std::string lines;
        for (int line = 0; line < 500; ++line) {
            lines += "MESGline~";
        }
        peers[many]->say(lines);
        other.say("PING~");
        EXPECT_TRUE(other.hearsSometime("PONG~"));
        EXPECT_LE(other.transcript().find("PONG~", start) - start, std::size_t{10} * 2 * 64);
        EXPECT_TRUE(QTest::qWaitFor([&] { return peers[many]->rest().empty(); }));
    }
}

TEST(Seats, WhoFloodsAndGoesLeavesTheNextOneHereNoDebt) {
    for (const std::string said : {"MESG~", "CODE1~"}) {
        ConsoleWorld world;
        auto peers = world.table(2);
        world.console().tmrPoke->stop();
        for (int second = 0; second < 100; ++second) {
            world.console().tmrPoke_Timer();  // who has been silent for long saves up nothing
        }
        std::string lines;
        while (lines.size() < 60000) {
            lines += said;
        }
        peers[1]->say(lines);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return world.console().server().seat(1).allowance.isOverdrawn(); }));
        peers[1]->close();
        EXPECT_TRUE(world.seatIsFree(2));
        world.console().tmrPoke_Timer();
        world.joined(2, "Next");
    }
}

TEST(Seats, WhatCameBeforeACloseIsHeardHoweverTheCloseIsFound) {
    for (const std::string said : {"DROP~", "CODE7~", "CARDUx~BPCK"}) {
        ConsoleWorld world;
        auto peers = world.table(8);
        const bool picks = said.ends_with("BPCK");
        if (picks) {
            world.chooseSets();
            world.console().cmdStart->click();
        }
        std::vector<std::string> rests(peers.size());
        for (std::size_t i = 0; i < peers.size() && picks; ++i) {
            rests[i] = ConsoleWorld::lessFirstCard(*peers[i]) + "~";
        }
        peers[0]->rest();
        for (std::size_t i = 1; i < peers.size(); ++i) {
            peers[i]->say(said + rests[i]);
            peers[i]->close();
        }
        for (int num = 2; num <= kSeats; ++num) {
            EXPECT_TRUE(world.seatIsFree(num));
        }
        const std::string heard = peers[0]->rest();
        for (int num = 2; num <= kSeats; ++num) {
            const std::string seat = std::to_string(num - 1);
            const auto& places = world.console().server().table().tableOf;
            const int position = places.at(static_cast<std::size_t>(num - 1));
            const std::string told = picks ? "BSTA" + std::to_string(position) + "~"
                                     : said.starts_with('C') ? "CODE" + seat + "7~"
                                                             : "MESGP" + std::to_string(num) +
                                                                   " intentionally dropped.~";
            EXPECT_NE(heard.find(told), std::string::npos) << told << "\nin " << heard;
        }
    }
}

TEST(Seats, AVanishedClientIsFoundByThePoke) {
    ConsoleWorld world;
    auto peers = world.table(2);
    FrmServer& console = world.console();
    peers[1]->vanish();
    // A lost seat is picked for within two seconds, not a twentieth later.
    for (const auto& [timer, interval] :
         {std::pair(console.tmrPoke, 1000), std::pair(console.tmrRandoms, 2000)}) {
        EXPECT_EQ(timer->interval(), interval);
        EXPECT_EQ(timer->timerType(), Qt::PreciseTimer);
    }
    console.tmrPoke->setInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return console.lstNames->text(1) == u" "; }, 3000));
    console.tmrPoke->stop();
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~"));
}

}  // namespace
}  // namespace packwise
