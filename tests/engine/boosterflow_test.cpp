#include "engine/boosterflow.h"

#include "engine/fakehost.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// The message of a player who takes the first card of the pack last sent to him.
std::string pickFirst(const FakeHost& host, int socket) {
    const std::string& pack = host.lastBoos.at(static_cast<std::size_t>(socket));
    return "BPCK" + pack.substr(pack.find('|') + 1);
}

void everybodyPicks(FakeHost& host) {
    for (int socket = 1; socket <= host.table.playerCount; ++socket) {
        host.receive(socket, pickFirst(host, socket));
    }
}

TEST(BoosterFlow, PacksGoUpInOddRoundsAndDownInEvenOnes) {
    FakeHost host(3, 3);
    host.cards = 2;
    host.sets = {"Ice Age", "ice age", "Alliances", "", "", ""};
    host.booster.begin();
    EXPECT_THAT(host.take(), ElementsAre("ROUN1", "SNOW", "1:BOOSU0a0|U0a1|", "2:BOOSU0b0|U0b1|",
                                         "3:BOOSU0c0|U0c1|"));
    host.receive(2, "BPCKU0b1|");
    host.receive(3, "BPCKU0c1|");
    host.receive(1, "BPCKU0a0|");
    EXPECT_THAT(host.take(), ElementsAre("BSTA1", "BSTA2", "BSTA0", "1:BOOSU0c1|", "2:BOOSU0a0|",
                                         "3:BOOSU0b1|"));
    everybodyPicks(host);
    EXPECT_THAT(host.take(), ElementsAre("BSTA0", "BSTA1", "BSTA2", "ROUN2", "1:BOOSU1d0|U1d1|",
                                         "2:BOOSU1e0|U1e1|", "3:BOOSU1f0|U1f1|"));
    everybodyPicks(host);
    EXPECT_THAT(host.take(), ElementsAre("BSTA0", "BSTA1", "BSTA2", "1:BOOSU1e1|", "2:BOOSU1f1|",
                                         "3:BOOSU1d1|"));
    everybodyPicks(host);
    EXPECT_THAT(host.take(), AllOf(Contains("ROUN3"), Contains("SNOW")));
    everybodyPicks(host);
    everybodyPicks(host);
    EXPECT_THAT(host.take(), Contains("OVER"));
    EXPECT_TRUE(host.over);
    EXPECT_FALSE(host.booster.running());
    host.receive(1, "BPCK");
    host.booster.onRandomsTick();
    EXPECT_THAT(host.take(), IsEmpty());
}

TEST(BoosterFlow, IgnoresWhatWouldBreakTheLockStep) {
    FakeHost host(2, 3);
    host.receive(1, "BPCK");
    EXPECT_THAT(host.sent, IsEmpty());
    host.booster.begin();
    host.take();
    for (const int stranger : {0, 3, 8, 9, -1}) {
        host.receive(stranger, "BPCKU0a1|U0a2|");
        EXPECT_THAT(host.sent, IsEmpty()) << stranger;
    }
    host.receive(1, "BPCKU0a1|U0a2|");
    host.receive(1, "BPCKU0a1|U0a2|");
    host.receive(1, "BPCKU0a2|");
    EXPECT_THAT(host.take(), ElementsAre("BSTA0"));
    EXPECT_EQ(host.booster.picksIn(), 1);
}

TEST(BoosterFlow, TakesACardAtRandomForAPickThatIsNotThePackLessOneCard) {
    for (const std::string bad :
         {"", "U0a1|", "U0a0|U0a1|U0a2|", "U0a1|U0a2", "U0a1|U0a2|x", "||", "U0a1||", "U0a1|U|",
          "|U0a1|U0a2|", "U0a1|U0b2|", "U0a1|U0a1|", "a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|"}) {
        FakeHost host(2, 3);
        host.uniform = [] { return 0.5; };
        host.booster.begin();
        host.sent.clear();
        host.receive(1, "BPCK" + bad);
        EXPECT_THAT(host.sent, ElementsAre("MESG1 replaced", "BSTA0")) << bad;
        EXPECT_EQ(host.booster.seatPack(0), "U0a0|U0a2|") << bad;
        host.sent.clear();
        host.receive(1, "BPCK" + bad);  // it has picked
        host.receive(2, "BPCKU0b1|U0b0|");
        EXPECT_THAT(host.take(), ElementsAre("BSTA1", "1:BOOSU0b1|U0b0|", "2:BOOSU0a0|U0a2|"));
    }
}

TEST(BoosterFlow, EachCardIsPickedFromItsOwnShareOfTheDraw) {
    for (const auto& [u, left] : {std::pair(0.0, "U0a1|U0a2|"), std::pair(0.33, "U0a1|U0a2|"),
                                  std::pair(0.34, "U0a0|U0a2|"), std::pair(0.66, "U0a0|U0a2|"),
                                  std::pair(0.67, "U0a0|U0a1|"), std::pair(0.9999, "U0a0|U0a1|")}) {
        FakeHost host(2, 3);
        host.uniform = [u = u] { return u; };
        host.booster.begin();
        host.lose(1);
        host.tick();
        EXPECT_EQ(host.booster.seatPack(0), left) << u;
    }
}

}  // namespace
}  // namespace packwise
