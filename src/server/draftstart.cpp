// From the console's choices to a running draft, and what the flows need of the server.
#include "common/codepage.h"
#include "common/settings.h"
#include "engine/dealing.h"
#include "engine/seating.h"
#include "server/frmserver.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

const Box kNobodyThere{u"No valid connections"_s, u"Packwise 1.41"_s, BoxButtons::Ok,
                       BoxIcon::Exclamation};
const Box kHole{u"Can't fix seat with connection hole."_s, u"Packwise 1.41"_s};

}  // namespace

std::vector<int> FrmServer::namedSeats() const {
    std::vector<int> seats;
    for (int row = 0; row < kSeats; ++row) {
        if (lstNames->text(row) != u" ") {
            seats.push_back(row);
        }
    }
    return seats;
}

void FrmServer::findPlayers() {
    players_ = namedSeats();
    dropped.fill(false);
    table_.clear();
    table_.playerCount = static_cast<int>(players_.size());
}

void FrmServer::cmdStart_Click() {
    if (namedSeats().empty()) {
        shell_.boxes().show(this, kNobodyThere);
        return;
    }
    // Card data that turns out to be unusable in a later round would cost everybody the draft.
    const QString fault = faultOfPacks();
    if (!fault.isEmpty()) {
        shell_.boxes().error(this, fault);
        return;
    }
    findPlayers();
    // Who is lost from here on keeps the place at the table.
    draftState = "D";
    playerCards.fill({});
    table_.packCount = chosenPackCount();
    storeChoices();
    QStringList names;
    for (const int seatIndex : players_) {
        names += lstNames->text(seatIndex);
    }
    Broadcast("STATDraft in progress~");
    disableChoices();
    wskServer[0]->close();
    if (nobodyIsLeft()) {
        return;
    }
    const bool hole = players_.back() != table_.playerCount - 1;
    if (hole && chkFixSeats->isChecked()) {
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
    const std::vector<int> order = seatAtRandom(players_, draw_());
    for (std::size_t position = 0; position < order.size(); ++position) {
        seatPlayer(order[position], static_cast<int>(position));
    }
    StartUp2();
}

int FrmServer::chosenPackCount() const {
    for (int i = 2; i < kMostPacks; ++i) {
        if (optPack[static_cast<std::size_t>(i)]->isChecked()) {
            return i + 1;
        }
    }
    return 3;
}

void FrmServer::storeChoices() {
    QList<SettingsStore::Entry> choices = {
        setting::draftType.entry(optBooster->isChecked() ? u"B"_s : u"R"_s),
        setting::timed.entry(chkTimed->isChecked() ? 1 : 0),
        setting::time.entry(vsbSecs->value()),
        setting::fixSeats.entry(chkFixSeats->isChecked() ? 1 : 0),
        setting::packCount.entry(table_.packCount),
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
    Broadcast("MESG*Server is fixing seat order.*~");
    FrmFixSeats& dialog = fixSeats_();
    connect(&dialog, &FrmFixSeats::seated, this, &FrmServer::fixSeatsDone, Qt::UniqueConnection);
    dialog.clear();
    for (const int seatIndex : players_) {
        dialog.seat(seatIndex, names[seatIndex], seatIndex);
        if (dropped[static_cast<std::size_t>(seatIndex) + 1]) {
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

void FrmServer::seatPlayer(int seatIndex, int position) {
    table_.place(seatIndex, position);
    Broadcast("SEAT" + std::to_string(seatIndex) + std::to_string(position) + kTerminator);
}

// Whether there is no draft to be had any more; the host has then been told.
bool FrmServer::nobodyIsLeft() {
    const bool gone = std::all_of(players_.begin(), players_.end(), [this](int seatIndex) {
        return dropped[static_cast<std::size_t>(seatIndex) + 1];
    });
    if (!gone && !halted_) {
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
                seatPlayer(seatIndex, position);
            }
        }
    }
    if (nobodyIsLeft()) {
        return;
    }
    tellSets();
    if (draftStopped()) {
        return;
    }
    if (optBooster->isChecked()) {
        Broadcast("INFOB~");
        booster_.begin();
        return;
    }
    const std::string timed = chkTimed->isChecked() ? "1" : "0";
    Broadcast("INFOR" + timed + toBytes(lblSecs->text()) + kTerminator);
    rochester_.begin();
}

void FrmServer::tellSets() {
    // One write each: a lost player who is found out between two pieces would be announced in the
    // middle of the message.
    std::string packs = "PAKS";
    std::string line = "MESGDraft is ";
    for (int i = 0; i < kMostPacks; ++i) {
        if (i < table_.packCount) {
            const std::string name = host_.setName(i);
            packs += name;
            line += (i > 0 ? " - " : "") + name;
        }
        packs += kFieldEnd;
    }
    Broadcast(packs + kTerminator);
    Broadcast(line + kTerminator);
}

void FrmServer::startRandoms() {
    // A start while it runs would begin its interval anew.
    if (!tmrRandoms->isActive()) {
        tmrRandoms->start();
    }
}

std::vector<std::string> FrmServer::makePacks(int packIndex, int count) {
    if (draftStopped()) {
        return {};
    }
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    const std::string setName = host_.setName(packIndex);
    const auto deal = [&](auto* way) {
        std::vector<std::string> packs;
        for (int i = 0; i < count; ++i) {
            std::optional<std::string> pack = way(folder, setName, draw_);
            if (!pack) {
                return std::vector<std::string>();
            }
            packs.push_back(std::move(*pack));
        }
        return packs;
    };
    std::vector<std::string> packs;
    if (chkReal->isChecked()) {
        packs = deal(realPack);
    }
    if (packs.empty()) {
        packs = deal(randomPack);
        if (!packs.empty()) {
            chkReal->setChecked(false);
        }
    }
    if (!packs.empty()) {
        return packs;
    }
    failed_ = true;
    shell_.boxes().error(this, u"Error reading file"_s);
    if (!shell_.ended()) {
        shell_.end();
    }
    return {};
}

// A write may find a loss that ends the draft; nobody hears of its flow behind that.

void FlowHost::send(int socket, std::string_view data) {
    if (!server_.draftStopped()) {
        server_.Send(socket, data);
    }
}

void FlowHost::broadcast(std::string_view data) {
    for (int num = 1; num <= kSeats; ++num) {
        send(num, data);
    }
}

void FlowHost::dispatch(int socket, std::string_view message) {
    server_.Dispatch(socket, message);
}

std::vector<std::string> FlowHost::makePacks(int packIndex, int count) {
    return server_.makePacks(packIndex, count);
}

std::string FlowHost::setName(int packIndex) const {
    return toBytes(server_.cboPack.at(static_cast<std::size_t>(packIndex))->currentText());
}

bool FlowHost::dropped(int socket) const {
    return server_.dropped.at(static_cast<std::size_t>(socket));
}

double FlowHost::draw() {
    return server_.draw_();
}

void FlowHost::tellReplacedPick(int socket) {
    broadcast("MESG*" + server_.playerName.at(static_cast<std::size_t>(socket - 1)) +
              " sent no card of the pack; one is taken at random.*~");
}

void FlowHost::enableRandoms() {
    if (!server_.draftStopped()) {
        server_.startRandoms();
    }
}

void FlowHost::draftOver() {
    if (!server_.draftStopped()) {
        server_.draftState = "O";
    }
}

}  // namespace packwise
