// The demonstration from the deck builders to the security codes.
#include "bot/deckplan.h"
#include "demo/demotable.h"
#include "engine/deckfile.h"
#include "platform/codepage.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

const std::array kColorNames = {u"black"_s, u"blue"_s, u"green"_s, u"red"_s, u"white"_s};
static_assert(kColorNames.size() == packwise::kColorLetters.size());

QString namesOf(ColorSet colors) {
    QStringList names;
    for (std::size_t color = 0; color < kColorNames.size(); ++color) {
        if (colors & colorBit(color)) {
            names += kColorNames[color];
        }
    }
    return names.join(u" and "_s);
}

}  // namespace

void DemoTable::buildDecks() {
    for (const auto& seat : seats_) {
        buildDeck(*seat);
        if (seat.get() == &shown()) {
            showDeckBuilder(seat->program.frmDeckBuild());
        }
        saveDeck(*seat);
        narrator_.tell(u"%1 builds %2 and saves."_s.arg(seat->name, seat->colors));
        if (options_.watched) {
            pause(500);
        }
    }
}

void DemoTable::buildDeck(DemoSeat& seat) {
    const DeckPlan plan = planDeck(seat.picks);
    seat.colors = namesOf(plan.colors);
    FrmDeckBuild& builder = seat.program.frmDeckBuild();
    std::array<int, kBasicLands.size()> lands{};
    for (const std::string& name : plan.deck) {
        const QString wanted = fromBytes(name);
        int row = 0;
        while (row < builder.lstSB->count() &&
               (builder.lstSB->text(row) != wanted || builder.lstSB->item(row)->isSelected())) {
            ++row;
        }
        const auto land = std::find(kBasicLands.begin(), kBasicLands.end(), name);
        if (row < builder.lstSB->count()) {
            builder.lstSB->setCurrentRow(row, QItemSelectionModel::Select);
        } else if (land != kBasicLands.end()) {
            ++lands[static_cast<std::size_t>(land - kBasicLands.begin())];
        } else {
            throw DemoFailure(u"%1 lacks %2 in the sideboard"_s.arg(seat.name, wanted));
        }
    }
    builder.cmdAdd->click();
    for (std::size_t land = 0; land < lands.size(); ++land) {
        for (int i = 0; i < lands[land]; ++i) {
            builder.cmdLand[land]->click();
        }
    }
}

// With cards and land in view, and a card selected.
void DemoTable::showDeckBuilder(FrmDeckBuild& builder) {
    ListBox& deck = *builder.lstDeck;
    deck.scrollToItem(deck.item(deck.count() / 3), QAbstractItemView::PositionAtTop);
    builder.lstSB->scrollToTop();
    builder.lstSB->setCurrentRow(1);
    takePicture(builder, u"deckbuilder"_s);
}

void DemoTable::saveDeck(DemoSeat& seat) {
    seat.program.frmDeckBuild->cmdSave->click();
    FrmSave& save = seat.program.frmSave();
    if (!save.isVisible()) {
        throw DemoFailure(seat.name + u"'s deck cannot be saved"_s);
    }
    save.txtSaveName->setText(seat.name.toLower() + u".dec"_s);
    seat.deckFile = save.SaveName();
    save.cmdOK->click();
    checkAlive();
    QFile file(seat.deckFile);
    if (!file.open(QIODevice::ReadOnly)) {
        throw DemoFailure(u"there is no file "_s + seat.deckFile);
    }
    const std::optional<std::int32_t> code = codeOfDeckFile(file.readAll().toStdString());
    if (!code) {
        throw DemoFailure(seat.deckFile + u" holds no deck"_s);
    }
    seat.code = *code;
}

void DemoTable::checkCodes() {
    waitFor(u"every window of Draft Information shows every code"_s, [this] {
        return forAll([this](DemoSeat& seat) {
            const ListBox& codes = *seat.program.frmSecurity->lstCode;
            for (std::size_t row = 0; row < seats_.size(); ++row) {
                if (codes.text(static_cast<int>(row)) != QString::number(seats_[row]->code)) {
                    return false;
                }
            }
            return true;
        });
    });
    narrator_.tell(u"All eight codes, worked out again from the files, stand in every window."_s);
}

}  // namespace packwise
