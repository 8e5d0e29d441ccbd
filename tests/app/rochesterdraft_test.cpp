#include "app/draftparty.h"
#include "client/cardlist.h"

namespace packwise {
namespace {

using Counts = std::map<QString, int>;

// Plays a Rochester draft in step: nobody acts before every client shows the same pack.
class RochesterTable {
public:
    RochesterTable(int players, bool timed)
        : party_(players, cards_.setNames(), kRounds, {.rochester = true, .timed = timed}),
          timed_(timed) {}

    void play() {
        ASSERT_TRUE(party_.join());
        party_.start();
        while (party_.console().server().state() == DraftServer::State::Drafting) {
            ASSERT_TRUE(spinUntil([this] {
                return party_.console().server().state() == DraftServer::State::Over || inStep();
            })) << "set "
                << flow().rochSet() << " pack " << party_.console().server().table().roundNo
                << " turn " << flow().rochTurn();
            ASSERT_NO_FATAL_FAILURE(step());
        }
        EXPECT_TRUE(spinUntil([this] { return party_.allBuildDecks(); }));
    }

    // The table positions of the pickers, by pack in order of opening.
    const std::vector<std::vector<int>>& pickers() const { return pickers_; }
    const Counts& dealt() const { return dealt_; }
    DraftParty& party() { return party_; }

private:
    const RochesterFlow& flow() { return party_.console().server().rochester(); }

    int cardsLeft() { return flow().rochCards() - flow().rochTurn(); }

    bool inStep() {
        int ready = 0;
        for (const auto& player : party_.players()) {
            const FrmClient& client = player->client();
            if (client.lstPack->texts() != party_.host().client().lstPack->texts() ||
                client.lstPack->count() != cardsLeft()) {
                return false;
            }
            ready += client.tmrReview->isActive() || client.cmdOK->isVisible() ? 1 : 0;
            if (player->mayPick()) {
                return true;
            }
        }
        return ready == static_cast<int>(party_.players().size());
    }

    void step() {
        for (const auto& player : party_.players()) {
            FrmClient& client = player->client();
            if (player == party_.players().front() && client.tmrReview->isActive()) {
                pickers_.emplace_back();
                for (const QString& name : client.lstPack->texts()) {
                    ++dealt_[name];
                }
            }
            if (player->mayPick()) {
                pickers_.back().push_back(flow().turnPosition());
                if (timed_ && cardsLeft() % 2 == 0) {
                    letTheClockRunOut(client);
                    continue;
                }
            }
            DraftParty::act(*player);
        }
    }

    // Five seconds and one more: the label stands at ":00" for a whole second.
    static void letTheClockRunOut(FrmClient& client) {
        int ticks = 0;
        QString before;
        while (client.cmdDraft->isEnabled() && ticks < 10) {
            before = client.lblTick->text();
            client.tmrRoch_Timer();
            ++ticks;
        }
        EXPECT_LE(ticks, 6);
        EXPECT_EQ(before, u":00"_s);
    }

    CardFolder cards_;
    DraftParty party_;
    bool timed_;
    std::vector<std::vector<int>> pickers_;
    Counts dealt_;
};

// Every card that was on the table is with exactly one player.
void expectEveryCardInOnePlace(RochesterTable& table) {
    Counts left = table.dealt();
    for (const auto& player : table.party().players()) {
        for (const QString& name : player->client().lstPickedNS->texts()) {
            --left[name];
        }
    }
    for (const auto& [name, count] : left) {
        EXPECT_EQ(count, 0) << name.toStdString();
    }
}

TEST(RochesterDraft, EightSeatsSnakeRoundTheTable) {
    RochesterTable table(8, false);
    ASSERT_NO_FATAL_FAILURE(table.play());
    ASSERT_EQ(table.pickers().size(), 24U);
    const std::vector<int> first{0, 1, 2, 3, 4, 5, 6, 7, 7, 6, 5, 4, 3, 2, 1};
    const std::vector<int> second{1, 2, 3, 4, 5, 6, 7, 0, 0, 7, 6, 5, 4, 3, 2};
    const std::vector<int> otherWay{7, 6, 5, 4, 3, 2, 1, 0, 0, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(table.pickers()[0], first);
    EXPECT_EQ(table.pickers()[1], second);
    EXPECT_EQ(table.pickers()[8], otherWay);
    EXPECT_EQ(table.pickers()[16], first);
    expectEveryCardInOnePlace(table);
}

TEST(RochesterDraft, SmallTablesPlayToTheEndTimedAndUntimed) {
    for (const int players : {1, 2}) {
        for (const bool timed : {true, false}) {
            SCOPED_TRACE(std::to_string(players) + (timed ? " timed" : " untimed"));
            RochesterTable table(players, timed);
            ASSERT_NO_FATAL_FAILURE(table.play());
            ASSERT_EQ(table.pickers().size(), static_cast<std::size_t>(players * kRounds));
            const std::vector<int> alone(15, 0);
            const std::vector<int> first{0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1};
            EXPECT_EQ(table.pickers()[0], players == 1 ? alone : first);
            expectEveryCardInOnePlace(table);
        }
    }
}

}  // namespace
}  // namespace packwise
