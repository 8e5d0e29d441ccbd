// The demonstration from the start of the draft to the deck builders.
#include "client/cardlist.h"
#include "demo/demotable.h"
#include "platform/codepage.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kCards = static_cast<int>(kMostCardsInPack);
constexpr int kAllPicks = kSeats * 3 * kCards;
constexpr int kShownAt = 10;  // cards in the pack that the pictures show
// Milliseconds for somebody who watches: after everybody's pick, and after a turn.
constexpr int kBoosterPace = 300;
constexpr int kRochesterPace = 25;

// Empty before the draft. A Rochester draft tells the pack too, behind a colon.
QString roundOf(const FrmClient& client) {
    return client.lblRound->text().section(u':', 0, 0);
}

}  // namespace

void DemoTable::draft() {
    narrator_.tell(options_.rochester ? u"The Rochester draft begins."_s
                                      : u"The Booster draft begins."_s);
    console().cmdStart->click();
    const auto atDeckBuilder = [](DemoSeat& seat) {
        return seat.program.isVisible(FormId::DeckBuild);
    };
    while (!forAll(atDeckBuilder)) {
        bool acted = false;
        const int before = picked_;
        waitFor(u"somebody may pick"_s, [&] {
            onNewRound();
            options_.rochester ? showRochesterDraft() : showBoosterDraft();
            for (const auto& seat : seats_) {
                acted = act(*seat) || acted;
            }
            return acted || forAll(atDeckBuilder);
        });
        if (options_.watched && picked_ > before) {
            pause(options_.rochester ? kRochesterPace : kBoosterPace);
        }
    }
    if (picked_ != kAllPicks) {
        throw DemoFailure(u"%1 cards were picked, not %2"_s.arg(picked_).arg(kAllPicks));
    }
}

bool DemoTable::act(DemoSeat& seat) {
    FrmClient& client = seat.client();
    if (client.tmrReview->isActive()) {
        client.tmrReview_Timer();  // the clock runs as fast as it may
        return true;
    }
    if (options_.rochester && client.cmdOK->isVisible()) {
        client.cmdOK->click();
        return true;
    }
    if (client.cmdDraft->isEnabled()) {
        pick(seat);
        return true;
    }
    return false;
}

void DemoTable::pick(DemoSeat& seat) {
    FrmClient& client = seat.client();
    std::vector<CardFacts> pack;
    for (const QString& name : client.lstPack->texts()) {
        pack.push_back(factsOfCard(name));
    }
    const auto row = static_cast<int>(seat.picker.choose(pack));
    const CardFacts& card = pack[static_cast<std::size_t>(row)];
    if (client.lstPack->count() == kCards) {
        narrator_.tell(u"%1 takes %2 from a new pack."_s.arg(seat.name, fromBytes(card.name)));
    }
    client.lstPack->setCurrentRow(row);
    client.cmdDraft->click();
    seat.picker.take(card);
    seat.picks.push_back(card);
    narrator_.progress(++picked_, kAllPicks);
}

CardFacts DemoTable::factsOfCard(const QString& name) {
    const std::string plain = toBytes(name);
    const CardRecord* record = book_.find(plain);
    return factsOf((record ? record->color : std::string("A")) + plain, record);
}

void DemoTable::onNewRound() {
    const QString round = roundOf(host().client());
    if (round == round_ || host().client().lstPack->count() == 0) {
        return;
    }
    round_ = round;
    narrator_.tell(u"Round %1: %2."_s.arg(round, sets_.at((round.toInt() - 1) % sets_.size())));
    if (round == u"2") {
        say(2, u"/me wants that rare back"_s);
        say(6, u"who is cutting red?"_s);
    } else if (round == u"3") {
        say(5, u"one more, and nothing is settled yet"_s);
    }
}

// In the middle of round two: half of the table has picked, and the shown player has not.
void DemoTable::showBoosterDraft() {
    FrmClient& client = shown().client();
    const bool now = roundOf(client) == u"2" && client.lstPack->count() == kShownAt;
    if (draftShown_ || !now ||
        !forAll([](DemoSeat& seat) { return seat.client().cmdDraft->isEnabled(); })) {
        return;
    }
    draftShown_ = true;
    constexpr std::size_t kAhead = 4;
    for (std::size_t ahead = 0; ahead < kAhead; ++ahead) {
        DemoSeat& seat = *seats_[2 * ahead];
        pick(seat);
    }
    waitFor(u"the seats change colour"_s, [&] {
        return std::count_if(client.shaSeat.begin(), client.shaSeat.end(), [](const Shape* seat) {
                   return seat->fillColor() == shade::green;
               }) == kAhead;
    });
    showCardAndTable(u"draft"_s);
}

// At the shown player's turn in round two.
void DemoTable::showRochesterDraft() {
    FrmClient& client = shown().client();
    if (draftShown_ || roundOf(client) != u"2" || !client.cmdDraft->isEnabled() ||
        client.lstPack->count() > kShownAt) {
        return;
    }
    draftShown_ = true;
    showCardAndTable(u"rochester"_s);
}

// The card with the most to read is the selected one.
void DemoTable::showCardAndTable(const QString& name) {
    FrmClient& client = shown().client();
    std::size_t most = 0;
    for (int row = 0; row < client.lstPack->count(); ++row) {
        const CardRecord* record = book_.find(toBytes(client.lstPack->text(row)));
        if (record && record->text.size() > most) {
            most = record->text.size();
            client.lstPack->setCurrentRow(row);
        }
    }
    takePicture(client, name);
    client.lstPack_MouseDown();
    takePicture(shown().program.frmCard(), u"card"_s);
    shown().program.frmCard->Form_MouseDown();
}

}  // namespace packwise
