#include "bot/player.h"

#include "bot/fakelink.h"
#include "engine/samplefiles.h"
#include "support/test.h"

namespace packwise {
namespace {

constexpr std::string_view kJoin =
    "HELO2~MESGDuplicate connection~MESGAda has joined~NAME1Ada~ADDR1127.0.0.1~"
    "NAME0Host~NAME1Ada~NAME2~NAME3~NAME4~NAME5~NAME6~NAME7~";
constexpr std::string_view kBooster = "STATDraft in progress~SEAT11~SEAT00~PAKSA|B|C||||~INFOB~";
constexpr std::string_view kTimedRochester = "SEAT11~SEAT00~PAKSA|B|C||||~INFOR12~";

class PlayerTest : public testing::Test {
protected:
    FakeLink link;
    CardBook book{"/nonexistent"};
    Player player{link, book, 1, 5000};

    void SetUp() override { player.begin("Ada"); }

    // What the player answers to that, after all the time that he takes.
    std::string answer(std::string_view bytes) {
        player.receive(bytes);
        elapse(player, link);
        return link.take();
    }
};

TEST_F(PlayerTest, AnswersWhatADraftAsks) {
    struct Script {
        std::string text;
        std::string answers;
        std::string seen;  // who took what
    };
    const std::string join(kJoin);
    for (const Script& script :
         {Script{join + std::string(kBooster) +
                     "PING~TEST~ROUN1~BOOSUFirst|~BSTA0~\r\nBO\nOSUSecond|~OVER~OVER~",
                 "VERS1.41~NAMEAda~PONG~TEST~CARDUFirst~BPCK~CARDUSecond~BPCK~CODE-44281~",
                 ":First :Second "},
          Script{join + std::string(kTimedRochester) +
                     "ROUN1:1~BOOSUOne|~REVW~RSTA0~RSTA1~TURN1~RPCK00!~RPAU~ROUN1:2~BOOSUTwo|~"
                     "REVW~TURN2~RPCK10~OVER~CLOS~PING~",
                 "VERS1.41~NAMEAda~RROK~RPOK~RROK~CARDUTwo~RPCK0~CODE-44281~",
                 "Host:One Ada:Two "}}) {
        FakeLink own;
        Player fresh(own, book, 1, 1000);
        fresh.begin("Ada");
        for (std::size_t at = 0; at < script.text.size();) {
            const std::size_t end = script.text.find('~', at) + 1;
            fresh.receive(std::string_view(script.text).substr(at, end - at));
            elapse(fresh, own);
            at = end;
        }
        EXPECT_EQ(own.sent, script.answers);
        EXPECT_EQ(own.decks, 1);
        std::string seen;
        for (const SeenPack& pack : own.picks.packs) {
            seen += pack.player + ":" + pack.cards.at(static_cast<std::size_t>(pack.taken)) + " ";
        }
        EXPECT_EQ(seen, script.seen);
        EXPECT_EQ(own.deck.size(), 40U);
    }
}

TEST_F(PlayerTest, KnowsTheRosterOnceItIsWhole) {
    player.receive(kJoin.substr(0, kJoin.size() - 1));
    EXPECT_EQ(player.stage(), Player::Stage::Seated);
    EXPECT_FALSE(player.knowsRoster());
    player.receive("~NAME4Late~DROP0~");
    EXPECT_TRUE(player.knowsRoster());
    EXPECT_EQ(player.roster()[0], "");
    EXPECT_EQ(player.roster()[4], "Late");

    player.begin("Zoe");  // the last seat's own name is not yet the end of the list
    player.receive("HELO8~NAME7Zoe~NAME0Host~");
    EXPECT_FALSE(player.knowsRoster());
    player.receive("NAME7Zoe~");
    EXPECT_TRUE(player.knowsRoster());
}

TEST_F(PlayerTest, WaitsBeforeEachAnswerButNotBeyondThePickClock) {
    player.receive(kJoin);
    player.receive(kTimedRochester);
    player.receive("ROUN1:1~BOOSUOne|BTwo|~REVW~");
    EXPECT_EQ(link.timer, 5000);
    EXPECT_EQ(answer(""), "VERS1.41~NAMEAda~RROK~");
    player.receive("TURN1~");
    EXPECT_EQ(link.timer, std::nullopt);
    player.receive("RPCK01~TURN2~");
    EXPECT_EQ(link.timer, 2000);  // INFO allows two seconds
    EXPECT_EQ(answer(""), "CARDUOne~RPCK0~");
}

TEST_F(PlayerTest, TakesAServerThatFallsSilentAsGone) {
    const auto pass = [this](int seconds) {
        for (int i = 0; i < seconds; ++i) {
            player.onSecond();
        }
    };
    pass(34);
    player.begin("Ada");
    pass(34);
    player.receive("~");
    link.take();
    pass(34);
    EXPECT_FALSE(link.over);
    EXPECT_EQ(link.sent.size(), 34 * std::string_view("PING~").size());
    pass(1);
    EXPECT_TRUE(link.over);
    EXPECT_EQ(player.ending(), Player::Ending::Lost);
}

TEST_F(PlayerTest, AnswersNothingThatIsNotAsked) {
    answer(kJoin);
    answer(kBooster);
    EXPECT_EQ(answer("~~ABC~HELO9~PAKSA|B~INFOX~TURN2~REVW~RPAU~RPCK10~BOOS~nonsense\xFF~"), "");
    EXPECT_EQ(answer("ROUN1~BOOSUReal|~"), "CARDUReal~BPCK~");
    EXPECT_EQ(answer("INFOR1x~INFOR~TURN2~RPCK10~"), "");
}

TEST_F(PlayerTest, PicksByTheCardFilesOfTheDraftsSets) {
    const sample::TempFolder folder;
    folder.write("SecondSe.pw", sample::header(1, 0, 1) + sample::record("Common", "-") +
                                    sample::record("Rare", "+") + sample::end());
    CardBook files(folder.path());
    for (std::uint64_t seed = 0; seed < 8; ++seed) {  // taste decides where no file does
        Player reader(link, files, seed, 0);
        reader.begin("Ada");
        reader.receive(std::string(kJoin) + "PAKSFirst|Second Set|||||~INFOB~BOOSUCommon|URare|~");
        elapse(reader, link);
        EXPECT_EQ(link.take(), "VERS1.41~NAMEAda~CARDURare~BPCKUCommon|~");
    }
}

TEST_F(PlayerTest, BuildsNoDeckWithoutADraft) {
    answer(kJoin);
    EXPECT_EQ(answer("OVER~"), "");
    answer(kBooster);
    EXPECT_EQ(answer("OVER~"), "");
    EXPECT_EQ(link.decks, 0);
}

}  // namespace
}  // namespace packwise
