#include "engine/rochesterflow.h"

#include "engine/fakehost.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void all(FakeHost& host, std::string_view message) {
    for (int socket = 1; socket <= host.table.playerCount; ++socket) {
        if (!host.dropped(socket)) {
            host.receive(socket, message);
        }
    }
}

TEST(RochesterFlow, OnePackOnTheWire) {
    FakeHost host(2, 3);
    host.cards = 2;
    host.sets[0] = "Ice Age";
    host.rochester.begin();
    EXPECT_THAT(host.take(), ElementsAre("ROUN1:1", "BOOSU0a0|U0a1|", "REVW"));
    host.receive(2, "RROK");
    host.receive(1, "RROK");
    EXPECT_THAT(host.take(), ElementsAre("RSTA1", "RSTA0", "TURN1"));
    host.receive(1, "RAND");
    host.receive(1, "RPCK1");
    host.receive(2, "RPCK0");
    EXPECT_THAT(host.take(), ElementsAre("RPCK01!", "TURN2", "RPCK10", "RPAU"));
    all(host, "RPOK");
    EXPECT_THAT(host.take(), ElementsAre("RSTA0", "RSTA1", "ROUN1:2", "BOOSU0b0|U0b1|", "REVW"));

    FakeHost alone(1, 3);
    alone.cards = 1;
    alone.rochester.begin();
    for (int pack = 0; pack < 3; ++pack) {
        alone.take();
        for (const char* message : {"RROK", "RPCK0", "RPOK"}) {
            alone.receive(1, message);
        }
    }
    EXPECT_THAT(alone.take(), ElementsAre("RSTA0", "TURN1", "RPCK00", "OVER"));
    EXPECT_TRUE(alone.over);
}

TEST(RochesterFlow, IgnoresWhatIsNotAwaited) {
    FakeHost host(2, 3);
    const auto ignores = [&host](int socket, std::string_view message) {
        host.take();
        const int answers = host.rochester.answers();
        const int turn = host.rochester.rochTurn();
        host.receive(socket, message);
        EXPECT_THAT(host.sent, IsEmpty()) << message;
        EXPECT_EQ(host.rochester.answers(), answers) << message;
        EXPECT_EQ(host.rochester.rochTurn(), turn) << message;
    };
    for (const char* early : {"RROK", "RPOK", "RPCK0", "RAND"}) {
        ignores(1, early);
    }
    host.rochester.begin();
    host.receive(1, "RROK");
    ignores(1, "RROK");
    ignores(2, "RPOK");
    ignores(2, "RPCK0");
    ignores(2, "RAND");
    ignores(3, "RROK");
    host.receive(2, "RROK");
    ignores(2, "RPCK3");  // no row, and not its turn
    ignores(3, "RPCK0");
    ignores(0, "RPCK0");
    ignores(1, "RROK");
    host.receive(1, "RPCK2");
    EXPECT_THAT(host.take(), ElementsAre("RPCK02!", "TURN2")) << "the review's mark stands";
    ignores(1, "RPCK2");
    host.receive(2, "RPCK1");
    EXPECT_THAT(host.take(), ElementsAre("RPCK11", "TURN2"));
    host.receive(2, "RPCK0");
    host.receive(1, "RPOK");
    ignores(1, "RPOK");
    ignores(2, "RROK");
}

TEST(RochesterFlow, TakesACardAtRandomForARowThatDoesNotStand) {
    FakeHost host(1, 3);
    host.cards = 15;
    host.uniform = [] { return 0.5; };
    host.rochester.begin();
    all(host, "RROK");
    host.sent.clear();
    int left = host.cards;
    for (const char* row : {"", "15", "-1", "0!", "x", "99999999999", "+3", "1x"}) {
        host.receive(1, "RPCK" + std::string(row));
        const std::string taken = "RPCK0" + std::to_string(left-- / 2) + "!";
        EXPECT_THAT(host.sent, ElementsAre("MESG1 replaced", taken, "TURN1")) << row;
        host.sent.clear();
    }
    host.receive(1, "RPCK005");
    EXPECT_THAT(host.sent, ElementsAre("RPCK05", "TURN1"));
}

TEST(RochesterFlow, LostSeatsAnswerAtOnceAndTheOthersAreWaitedFor) {
    FakeHost host(3, 3);
    host.uniform = [] { return 0.99; };
    host.rochester.begin();
    host.receive(1, "RROK");
    host.receive(2, "RROK");
    host.take();
    host.lose(3);
    EXPECT_THAT(host.take(), ElementsAre("RSTA2", "TURN1"));
    host.tick();
    EXPECT_THAT(host.take(), IsEmpty()) << "a player who is there is waited for";
}

TEST(RochesterFlow, EveryRowCanBePickedByAPlayerAndByTheDraw) {
    FakeHost host(2, 3);
    host.cards = 15;
    host.rochester.begin();
    all(host, "RROK");
    host.receive(1, "RPCK14");
    host.receive(2, "RPCK13");
    host.take();
    host.lose(1);
    host.lose(2);
    std::vector<double> draws = {0.0, 0.999, 0.99, 0.95, 0.5};  // of 13 rows, 12 and so on
    host.uniform = [&draws] {
        const double u = draws.back();
        draws.pop_back();
        return u;
    };
    while (!draws.empty()) {
        host.tick();
    }
    EXPECT_THAT(host.take(), ElementsAre("RPCK16!", "TURN1", "RPCK011!", "TURN1", "RPCK010!",
                                         "TURN2", "RPCK19!", "TURN2", "RPCK10!", "TURN1"));
}

}  // namespace
}  // namespace packwise
