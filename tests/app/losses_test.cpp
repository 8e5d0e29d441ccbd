// A player is lost at every kind of moment of both formats: the others reach the end, waiting one
// tick at the most for each thing that the lost seat owes them, or are sent home with "Halt on
// drop".
#include "app/draftparty.h"
#include "client/cardlist.h"

namespace packwise {
namespace {

constexpr int kSmallTable = 3;
constexpr int kSmallPack = 3;

// Looked at whenever nothing is under way; true when the player of the seat index is to be lost.
using Moment = bool (*)(DraftParty&, int seat);

struct Case {
    const char* name;
    bool rochester;
    bool fixSeats;
    Moment moment;
};

int cardsLeft(DraftParty& party) {
    return party.console().server().rochester().rochCards() -
           party.console().server().rochester().rochTurn();
}

bool otherMayPick(DraftParty& party, int seat) {
    for (int other = 0; other < kSmallTable; ++other) {
        if (other != seat && party.player(other).mayPick()) {
            return true;
        }
    }
    return false;
}

const Case kCases[] = {
    {"while the seats are fixed", true, true,
     [](DraftParty& party, int) { return party.host().program.isVisible(FormId::FixSeats); }},
    {"review", true, false,
     [](DraftParty& party, int seat) { return party.player(seat).client().tmrReview->isActive(); }},
    {"own turn", true, false,
     [](DraftParty& party, int seat) { return party.player(seat).mayPick(); }},
    {"another's turn", true, false,
     [](DraftParty& party, int seat) { return otherMayPick(party, seat); }},
    {"pause", true, false,
     [](DraftParty& party, int seat) { return party.player(seat).client().cmdOK->isVisible(); }},
    {"last pick of a pack", true, false,
     [](DraftParty& party, int) {
         return cardsLeft(party) == 1 && party.console().server().table().roundNo == 2;
     }},
    {"last pick of the draft", true, false,
     [](DraftParty& party, int) {
         return cardsLeft(party) == 1 && party.console().server().table().roundNo == kSmallTable &&
                party.console().server().rochester().rochSet() == kRounds;
     }},
    {"while the seats are fixed, Booster", false, true,
     [](DraftParty& party, int) { return party.host().program.isVisible(FormId::FixSeats); }},
    {"before the pick", false, false,
     [](DraftParty& party, int seat) { return party.player(seat).mayPick(); }},
    {"after the pick", false, false,
     [](DraftParty& party, int seat) {
         const FrmClient& client = party.player(seat).client();
         return client.lstPickedNS->count() == 1 && !client.cmdDraft->isEnabled();
     }},
    {"last pick of a round", false, false,
     [](DraftParty& party, int seat) {
         return party.player(seat).mayPick() && party.player(seat).client().lstPack->count() == 1;
     }},
};

class LossTable {
public:
    LossTable(const Case& c, int seat, bool halt)
        : case_(c),
          seat_(seat),
          party_(kSmallTable, cards_.setNames(), kRounds,
                 {.rochester = c.rochester, .fixSeats = c.fixSeats, .halt = halt}) {}

    // Plays until the draft is over or stopped.
    void play(bool halt) {
        ASSERT_TRUE(party_.join());
        if (halt && case_.fixSeats) {
            party_.host().script.expect(u"No valid connections"_s);
        }
        party_.start();
        bool lost = false;
        int ticks = 0;
        ASSERT_TRUE(spinUntil([&] {
            console().tmrRandoms->stop();  // its ticks are ours
            if (console().server().state() == DraftServer::State::Over ||
                (lost && halt && everybodySentHome())) {
                return true;
            }
            loseAtTheMoment(lost);
            const bool acted = actOneByOne();
            loseAtTheMoment(lost);  // now, before the server has heard of what was done
            if (!acted && lost && !halt && waitsForTheLost()) {
                console().tmrRandoms_Timer();
                ++ticks;
            }
            return false;
        })) << "round "
            << console().server().table().roundNo;
        EXPECT_TRUE(lost);
        if (!halt) {
            EXPECT_LE(ticks, kRounds * kSmallPack);  // a card of each pack, or a turn in each
        }
    }

    void expectEnd(bool halt) {
        const QString name = party_.player(seat_).name;
        EXPECT_EQ(console().lstNames->text(seat_), u" "_s);
        for (int other = 0; other < kSmallTable; ++other) {
            if (other == seat_) {
                continue;
            }
            PlayerProgram& player = party_.player(other);
            if (halt) {
                EXPECT_EQ(player.client().lblStatus->text(), u"Connection closed"_s);
                EXPECT_FALSE(player.program.isVisible(FormId::DeckBuild));
            } else {
                EXPECT_TRUE(spinUntil([&] { return player.program.isVisible(FormId::DeckBuild); }));
                // Who has left a draft stays listed on the other screens.
                EXPECT_EQ(player.program.frmMessage->lstNames->text(seat_), name);
                EXPECT_EQ(player.program.frmSecurity->lstNames->text(seat_), name);
                EXPECT_EQ(player.client().lstPickedNS->count(), picksOfEach());
                const QString told = player.program.frmMessage->lstMessage->texts().join(u' ');
                EXPECT_FALSE(told.contains(u"sent no card"_s)) << told.toStdString();
            }
        }
        EXPECT_EQ(console().server().state(),
                  halt ? DraftServer::State::Halted : DraftServer::State::Over);
    }

private:
    FrmServer& console() { return party_.console(); }

    static int picksOfEach() { return kRounds * kSmallPack; }  // with as many cards as seats

    void loseAtTheMoment(bool& lost) {
        if (!lost && case_.moment(party_, seat_)) {
            party_.lose(seat_);
            lost = true;
        }
    }

    // One player acts at a time, so that every moment comes up.
    bool actOneByOne() {
        if (case_.fixSeats && party_.host().program.isVisible(FormId::FixSeats)) {
            if (console().server().seat(seat_).dropped) {
                QTest::mouseClick(party_.host().program.frmFixSeats->cmdOK, Qt::LeftButton);
            }
            return true;
        }
        for (const auto& player : party_.players()) {
            if (DraftParty::act(*player)) {
                return true;
            }
        }
        return false;
    }

    bool waitsForTheLost() {
        const int position = console().server().table().positionOfSocket(seat_ + 1);
        if (!console().server().seat(seat_).dropped || position < 0) {
            return false;
        }
        if (case_.rochester) {
            return console().server().rochester().turnPosition() == position;
        }
        for (int other = 0; other < kSmallTable; ++other) {
            if (other != position && !console().server().booster().seatPicked(other)) {
                return false;
            }
        }
        return console().server().booster().running() &&
               !console().server().booster().seatPicked(position);
    }

    bool everybodySentHome() {
        for (int other = 0; other < kSmallTable; ++other) {
            if (!party_.player(other).gone &&
                party_.player(other).client().wskClient->state() != Socket::Closed) {
                return false;
            }
        }
        return !party_.host().program.isVisible(FormId::FixSeats);
    }

    const Case& case_;
    int seat_;
    CardFolder cards_{1, 1, 1};
    DraftParty party_;
};

class LossesWithAndWithoutHalt : public testing::TestWithParam<bool> {};

TEST_P(LossesWithAndWithoutHalt, AtNoMomentMakeTheOthersWait) {
    const bool halt = GetParam();
    for (const Case& c : kCases) {
        for (int seat = 0; seat < kSmallTable; ++seat) {
            SCOPED_TRACE(std::string(c.name) + ", seat " + std::to_string(seat));
            LossTable table(c, seat, halt);
            ASSERT_NO_FATAL_FAILURE(table.play(halt));
            table.expectEnd(halt);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(HaltOnDrop, LossesWithAndWithoutHalt, testing::Bool());

}  // namespace
}  // namespace packwise
