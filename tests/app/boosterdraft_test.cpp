#include "app/draftparty.h"
#include "client/cardlist.h"
#include "common/codepage.h"
#include "deck/deckfile.h"

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
        for (const std::string& token : readFields(server.booster().seatPack(position))) {
            ++dealt[fromBytes(token.substr(1))];
        }
    }
}

// Plays to the end; the player of seat index kLeaver goes in the middle of round two. Gives what
// was dealt.
Counts playDraft(DraftParty& party) {
    FrmServer& server = party.server();
    Counts dealt;
    int round = 0;
    const bool over = spinUntil(
        [&] {
            server.tmrRandoms->stop();  // its ticks are ours
            if (server.draftState == "O") {
                return true;
            }
            if (server.table().roundNo != round) {
                round = server.table().roundNo;
                addDealtPacks(server, dealt);
            }
            Player& leaver = party.player(kLeaver);
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

void expectEveryCodeEverywhere(DraftParty& party, const QString& folder) {
    std::map<int, QString> codes;
    for (int seat = 0; seat < kPlayers; ++seat) {
        if (seat == kLeaver) {
            continue;
        }
        const QString file = QString::number(seat) + u".dec"_s;
        ASSERT_TRUE(party.buildDeck(seat, folder, file));
        QFile saved(folder + u'/' + file);
        ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
        codes[seat] = QString::number(codeOfDeckFile(saved.readAll().toStdString()).value());
        EXPECT_NE(codes[seat], u"0"_s);
    }
    for (const auto& player : party.players()) {
        if (player->gone) {
            continue;
        }
        const ListBox& shown = *player->program.frmSecurity->lstCode;
        EXPECT_TRUE(spinUntil([&] {
            return std::all_of(codes.begin(), codes.end(), [&](const auto& code) {
                return shown.text(code.first) == code.second;
            });
        })) << player->name.toStdString();
    }
}

TEST(BoosterDraft, EightPlayWhileOneLeavesAndSevenSaveTheirDecks) {
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

    const QTemporaryDir decks;
    expectEveryCodeEverywhere(party, decks.path());
    for (int seat = 1; seat < kPlayers; ++seat) {
        Player& player = party.player(seat);
        if (!player.gone) {
            EXPECT_FALSE(player.program.ended());
            player.program.frmSecurity->closeByUser();  // the way out
            EXPECT_TRUE(player.program.ended());
        }
    }
    EXPECT_FALSE(party.host().program.frmSecurity->closeByUser());
}

}  // namespace
}  // namespace packwise
