// From the console's choices to a running draft.
#include "console/frmserver.h"
#include "engine/dealing.h"
#include "platform/codepage.h"
#include "platform/settings.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <filesystem>
#include <system_error>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

const Box kNobodyThere{u"No valid connections"_s, programTitle(), BoxButtons::Ok,
                       BoxIcon::Exclamation};
const Box kHole{u"Can't fix seat with connection hole."_s, programTitle()};

}  // namespace

void FrmServer::cmdStart_Click() {
    if (server_.namedSeats().empty()) {
        shell_.boxes().show(this, kNobodyThere);
        return;
    }
    // Card data that turns out to be unusable in a later round would cost everybody the draft.
    const QString fault = faultOfPacks();
    if (!fault.isEmpty()) {
        shell_.boxes().error(this, fault);
        return;
    }
    storeChoices();
    const QStringList names = lstNames->texts();
    server_.start();
    disableChoices();
    wskServer[0]->close();
    reach->dismiss();
    if (nobodyIsLeft()) {
        return;
    }
    if (server_.hasHole() && chkFixSeats->isChecked()) {
        chkFixSeats->setChecked(false);
        shell_.boxes().show(this, kHole);
        if (shell_.ended() || nobodyIsLeft()) {
            return;
        }
    }
    if (chkFixSeats->isChecked()) {
        showFixSeats(names);
        return;
    }
    server_.seatByChance();
    StartUp2();
}

void FrmServer::storeChoices() {
    QList<SettingsStore::Entry> choices = {
        setting::draftType.entry(optBooster->isChecked() ? u"B"_s : u"R"_s),
        setting::timed.entry(chkTimed->isChecked() ? 1 : 0),
        setting::time.entry(vsbSecs->value()),
        setting::fixSeats.entry(chkFixSeats->isChecked() ? 1 : 0),
        setting::packCount.entry(packCount()),
    };
    for (std::size_t i = 0; i < cboPack.size(); ++i) {
        choices.append(setting::pack[i].entry(cboPack[i]->currentText()));
    }
    shell_.settings().write(choices);
}

void FrmServer::disableChoices() {
    // A control that is disabled hands the focus to its neighbour, which the next key would change.
    lstNames->setFocus();
    for (QWidget* control :
         std::initializer_list<QWidget*>{cmdKick, cmdStart, optBooster, optRochester, chkTimed,
                                         lblSecs, vsbSecs, chkFixSeats}) {
        control->setEnabled(false);
    }
    for (SetBox* box : cboPack) {
        box->setEnabled(false);
    }
    for (QRadioButton* option : optPack) {
        if (option) {
            option->setEnabled(option->isChecked());
        }
    }
}

void FrmServer::showFixSeats(const QStringList& names) {
    server_.tellOfSeating();
    FrmFixSeats& dialog = fixSeats_();
    connect(&dialog, &FrmFixSeats::seated, this, &FrmServer::fixSeatsDone, Qt::UniqueConnection);
    dialog.clear();
    int position = 0;
    for (const int seatIndex : server_.players()) {
        dialog.seat(position++, names[seatIndex], seatIndex);
        if (server_.seat(seatIndex).dropped) {
            dialog.lose(seatIndex);
        }
    }
    fixingSeats_ = true;
    setEnabled(false);
    dialog.present();
}

void FrmServer::fixSeatsDone() {
    if (fixingSeats_ && !shell_.ended()) {
        StartUp2();
    }
}

bool FrmServer::nobodyIsLeft() {
    if (server_.canGoOn()) {
        return false;
    }
    shell_.boxes().show(this, kNobodyThere);
    return true;
}

void FrmServer::StartUp2() {
    if (fixingSeats_) {
        fixingSeats_ = false;
        setEnabled(true);
        lstNames->setFocus();
        const FrmFixSeats& dialog = fixSeats_();
        for (int position = 0; position < kSeats; ++position) {
            const int seatIndex = dialog.lblSeat[static_cast<std::size_t>(position)]->seatIndex;
            if (seatIndex >= 0) {
                server_.seatAt(seatIndex, position);
            }
        }
    }
    if (!nobodyIsLeft()) {
        server_.deal();
    }
}

bool FrmServer::isRochester() const {
    return optRochester->isChecked();
}

bool FrmServer::isTimed() const {
    return chkTimed->isChecked();
}

int FrmServer::pickSeconds() const {
    return lblSecs->text().toInt();
}

int FrmServer::packCount() const {
    for (int i = 2; i < kMostPacks; ++i) {
        if (optPack[static_cast<std::size_t>(i)]->isChecked()) {
            return i + 1;
        }
    }
    return 3;
}

std::string FrmServer::setName(int packIndex) const {
    return toBytes(cboPack.at(static_cast<std::size_t>(packIndex))->currentText());
}

bool FrmServer::haltsOnDrop() const {
    return chkHalt->isChecked();
}

std::vector<Pack> FrmServer::dealPacks(int packIndex, int count) {
    std::error_code error;
    const DealtRound round = dealRound(std::filesystem::current_path(error), setName(packIndex),
                                       chkReal->isChecked(), count, draw_);
    record_.recorder().setAlongLists(round.alongLists);
    if (!round.packs.empty() && !round.alongLists) {
        chkReal->setChecked(false);
    }
    return round.packs;
}

void FrmServer::cardDataFailed() {
    shell_.boxes().error(this, u"Error reading file"_s);
    if (!shell_.ended()) {
        shell_.end();
    }
}

}  // namespace packwise
