#include "server/smalltable.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// The message of a player who takes the first card of the pack last sent to him.
std::string pickFirst(const SmallTable& table, int socket) {
    const std::string& pack = table.lastPack.at(static_cast<std::size_t>(socket));
    return "BPCK" + pack.substr(pack.find('|') + 1);
}

void everybodyPicks(SmallTable& table) {
    for (int socket = 1; socket <= table.server.table().playerCount; ++socket) {
        table.receive(socket, pickFirst(table, socket));
    }
}

TEST(BoosterFlow, PacksGoUpInOddRoundsAndDownInEvenOnes) {
    SmallTable table(3, false);
    table.cards = 2;
    table.sets = {"Ice Age", "ice age", "Alliances", "", "", ""};
    table.begin();
    EXPECT_THAT(table.take(), ElementsAre("ROUN1", "SNOW", "1:BOOSU0a0|U0a1|", "2:BOOSU0b0|U0b1|",
                                          "3:BOOSU0c0|U0c1|"));
    table.receive(2, "BPCKU0b1|");
    table.receive(3, "BPCKU0c1|");
    table.receive(1, "BPCKU0a0|");
    EXPECT_THAT(table.take(), ElementsAre("BSTA1", "BSTA2", "BSTA0", "1:BOOSU0c1|", "2:BOOSU0a0|",
                                          "3:BOOSU0b1|"));
    everybodyPicks(table);
    EXPECT_THAT(table.take(), ElementsAre("BSTA0", "BSTA1", "BSTA2", "ROUN2", "1:BOOSU1d0|U1d1|",
                                          "2:BOOSU1e0|U1e1|", "3:BOOSU1f0|U1f1|"));
    everybodyPicks(table);
    EXPECT_THAT(table.take(), ElementsAre("BSTA0", "BSTA1", "BSTA2", "1:BOOSU1e1|", "2:BOOSU1f1|",
                                          "3:BOOSU1d1|"));
    everybodyPicks(table);
    EXPECT_THAT(table.take(), AllOf(Contains("ROUN3"), Contains("SNOW")));
    everybodyPicks(table);
    everybodyPicks(table);
    EXPECT_THAT(table.take(), Contains("OVER"));
    EXPECT_TRUE(table.isOver());
    EXPECT_FALSE(table.server.booster().running());
    table.receive(1, "BPCK");
    table.server.tick();
    EXPECT_THAT(table.take(), IsEmpty());
}

TEST(BoosterFlow, TakesACardAtRandomForAPickThatIsNotThePackLessOneCard) {
    for (const std::string bad :
         {"", "U0a1|", "U0a0|U0a1|U0a2|", "U0a1|U0a2", "U0a1|U0a2|x", "||", "U0a1||", "U0a1|U|",
          "|U0a1|U0a2|", "U0a1|U0b2|", "U0a1|U0a1|", "a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|"}) {
        SmallTable table(2, false);
        table.uniform = [] { return 0.5; };
        table.begin();
        table.sent.clear();
        table.receive(1, "BPCK" + bad);
        EXPECT_THAT(
            table.sent,
            ElementsAre("MESG*P1 sent no card of the pack; one is taken at random.*", "BSTA0"))
            << bad;
        EXPECT_EQ(table.server.booster().seatPack(0).text(), "U0a0|U0a2|") << bad;
        table.sent.clear();
        table.receive(1, "BPCK" + bad);  // it has picked
        table.receive(2, "BPCKU0b1|U0b0|");
        EXPECT_THAT(table.take(), ElementsAre("BSTA1", "1:BOOSU0b1|U0b0|", "2:BOOSU0a0|U0a2|"));
    }
}

TEST(BoosterFlow, EachCardIsPickedFromItsOwnShareOfTheDraw) {
    for (const auto& [u, left] : {std::pair(0.0, "U0a1|U0a2|"), std::pair(0.33, "U0a1|U0a2|"),
                                  std::pair(0.34, "U0a0|U0a2|"), std::pair(0.66, "U0a0|U0a2|"),
                                  std::pair(0.67, "U0a0|U0a1|"), std::pair(0.9999, "U0a0|U0a1|")}) {
        SmallTable table(2, false);
        table.uniform = [u = u] { return u; };
        table.begin();
        table.lose(1);
        table.server.tick();
        EXPECT_EQ(table.server.booster().seatPack(0).text(), left) << u;
    }
}

}  // namespace
}  // namespace packwise
