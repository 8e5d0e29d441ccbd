#include "app/draftparty.h"
#include "client/cardlist.h"
#include "platform/codepage.h"

namespace packwise {
namespace {

constexpr int kPlayers = 8;
constexpr int kLeaver = 5;  // seat index
constexpr int kCards = 15;

using Counts = std::map<QString, int>;

int total(const Counts& counts) {
    int sum = 0;
    for (const auto& [name, count] : counts) {
        sum += count;
    }
    return sum;
}

// Adds the names of the cards that lie before the seats.
void addDealtPacks(const FrmServer& server, Counts& dealt) {
    for (int position = 0; position < kPlayers; ++position) {
        for (const std::string& token : server.server().booster().seatPack(position).cards()) {
            ++dealt[fromBytes(token.substr(1))];
        }
    }
}

// Plays to the end; the player of seat index kLeaver goes in the middle of round two. Gives what
// was dealt.
Counts playDraft(DraftParty& party) {
    FrmServer& server = party.console();
    Counts dealt;
    int round = 0;
    const bool over = spinUntil(
        [&] {
            server.tmrRandoms->stop();  // its ticks are ours
            if (server.server().state() == DraftServer::State::Over) {
                return true;
            }
            if (server.server().table().roundNo != round) {
                round = server.server().table().roundNo;
                addDealtPacks(server, dealt);
            }
            PlayerProgram& leaver = party.player(kLeaver);
            if (round == 2 && !leaver.gone && leaver.mayPick() &&
                leaver.client().lstPack->count() == kCards - 5) {
                party.leave(kLeaver);
            }
            party.actOnce();
            server.tmrRandoms_Timer();
            return false;
        },
        30000);
    EXPECT_TRUE(over);
    return dealt;
}

// What one player types is read by everybody who is still there.
void expectChat(DraftParty& party, int seat, const QString& typed, const QString& line) {
    QPlainTextEdit* box = party.player(seat).program.frmMessage->txtSend;
    box->setPlainText(typed);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(spinUntil([&] {
        return std::ranges::all_of(party.players(), [&](const auto& player) {
            return player->gone || player->program.frmMessage->lstMessage->texts().contains(line);
        });
    })) << line.toStdString();
}

void expectEveryCardInOnePlace(DraftParty& party, Counts dealt) {
    EXPECT_EQ(total(dealt), kPlayers * kRounds * kCards);
    for (const auto& player : party.players()) {
        const QStringList picks = player->client().lstPickedNS->texts();
        EXPECT_EQ(picks.size(), player->gone ? kCards + 5 : kRounds * kCards);
        for (const QString& name : picks) {
            EXPECT_GE(--dealt[name], 0) << name.toStdString() << " was picked twice";
        }
    }
    // What is left went to the lost seat.
    EXPECT_EQ(total(dealt), kRounds * kCards - (kCards + 5));
}

TEST(BoosterDraft, EightPlayWhileOneLeaves) {
    const CardFolder cards;
    ASSERT_EQ(cards.setNames().size(), 2);
    DraftParty party(kPlayers, cards.setNames(), kRounds);
    ASSERT_TRUE(party.join());
    expectChat(party, 1, u"good luck"_s, u"<Player 1> good luck"_s);
    party.start();

    const Counts dealt = playDraft(party);
    EXPECT_TRUE(spinUntil([&] { return party.allBuildDecks(); }));
    expectEveryCardInOnePlace(party, dealt);
    expectChat(party, 0, u"/me builds"_s, u"*Player 0 builds"_s);
}

}  // namespace
}  // namespace packwise
