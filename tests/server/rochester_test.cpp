#include "server/smalltable.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(RochesterFlow, OnePackOnTheWire) {
    SmallTable table(2, true);
    table.cards = 2;
    table.sets[0] = "Ice Age";
    table.begin();
    EXPECT_THAT(table.take(), ElementsAre("ROUN1:1", "BOOSU0a0|U0a1|", "REVW"));
    table.receive(1, "RPOK");  // of no pause
    table.receive(2, "RROK");
    EXPECT_THAT(table.server.awaited(), ElementsAre(0));
    table.receive(1, "RROK");
    EXPECT_THAT(table.take(), ElementsAre("RSTA1", "RSTA0", "TURN1"));
    table.receive(1, "RAND");
    table.receive(1, "RPCK1");
    table.receive(kSeats, "RAND");  // an onlooker's
    table.receive(2, "RPCK0");
    EXPECT_THAT(table.take(), ElementsAre("RPCK01!", "TURN2", "RPCK10", "RPAU"));
    table.receiveFromAll("RPOK");
    EXPECT_THAT(table.take(), ElementsAre("RSTA0", "RSTA1", "ROUN1:2", "BOOSU0b0|U0b1|", "REVW"));
    EXPECT_EQ(table.server.step(), 5);  // a review, two turns, a pause, a review

    SmallTable alone(1, true);
    alone.cards = 1;
    alone.begin();
    for (int pack = 0; pack < 3; ++pack) {
        alone.take();
        for (const char* message : {"RROK", "RPCK0", "RPOK"}) {
            alone.receive(1, message);
        }
    }
    EXPECT_THAT(alone.take(), ElementsAre("RSTA0", "TURN1", "RPCK00", "OVER"));
    EXPECT_TRUE(alone.isOver());
}

TEST(RochesterFlow, TakesACardAtRandomForARowThatDoesNotStand) {
    SmallTable table(1, true);
    table.cards = 15;
    table.uniform = [] { return 0.5; };
    table.begin();
    table.receiveFromAll("RROK");
    table.sent.clear();
    int left = table.cards;
    for (const char* row : {"", "15", "-1", "0!", "x", "99999999999", "+3", "1x"}) {
        table.receive(1, "RPCK" + std::string(row));
        const std::string taken = "RPCK0" + std::to_string(left-- / 2) + "!";
        EXPECT_THAT(table.sent,
                    ElementsAre("MESG*P1 sent no card of the pack; one is taken at random.*", taken,
                                "TURN1"))
            << row;
        table.sent.clear();
    }
    table.receive(1, "RPCK005");
    EXPECT_THAT(table.sent, ElementsAre("RPCK05", "TURN1"));
}

TEST(RochesterFlow, LostSeatsAnswerAtOnceAndTheOthersAreWaitedFor) {
    SmallTable table(3, true);
    table.uniform = [] { return 0.99; };
    table.begin();
    table.receive(1, "RROK");
    table.receive(2, "RROK");
    table.take();
    table.lose(3);
    EXPECT_THAT(table.take(), ElementsAre("RSTA2", "TURN1"));
    table.server.tick();
    EXPECT_THAT(table.take(), IsEmpty()) << "a player who is there is waited for";
}

TEST(RochesterFlow, EveryRowCanBePickedByAPlayerAndByTheDraw) {
    SmallTable table(2, true);
    table.cards = 15;
    table.begin();
    table.receiveFromAll("RROK");
    table.receive(1, "RPCK14");
    table.receive(2, "RPCK13");
    table.take();
    table.lose(1);
    table.lose(2);
    std::vector<double> draws = {0.0, 0.999, 0.99, 0.95, 0.5};  // of 13 rows, 12 and so on
    table.uniform = [&draws] {
        const double u = draws.back();
        draws.pop_back();
        return u;
    };
    while (!draws.empty()) {
        table.server.tick();
    }
    EXPECT_THAT(table.take(), ElementsAre("RPCK16!", "TURN1", "RPCK011!", "TURN1", "RPCK010!",
                                          "TURN2", "RPCK19!", "TURN2", "RPCK10!", "TURN1"));
}

}  // namespace
}  // namespace packwise
