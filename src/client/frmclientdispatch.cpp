// What the draft client does on each message of the server. A body that is not as it should be
// changes nothing.
#include "client/cardlist.h"
#include "client/frmclient.h"
#include "client/passingarrow.h"
#include "common/codepage.h"
#include "companions/frmmessage.h"
#include "companions/frmsecurity.h"
#include "deck/frmdeckbuild.h"
#include "platform/look.h"
#include "platform/twips.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Twips.
constexpr int kBoosterPickedHeight = 4100;

constexpr int kMostPickSeconds = 30;

std::optional<int> readBetween(std::string_view text, int least, int most) {
    const std::optional<int> number = readNumber(text);
    return number && *number >= least && *number <= most ? number : std::nullopt;
}

// A body that is a seat index or a table position and nothing else.
std::optional<std::size_t> readPlace(std::string_view text) {
    const std::optional<int> digit = text.size() == 1 ? readSeatDigit(text) : std::nullopt;
    return digit ? std::optional(static_cast<std::size_t>(*digit)) : std::nullopt;
}

// The card tokens of a pack string; nothing when it is none.
std::optional<std::vector<std::string>> readPack(std::string_view body) {
    std::vector<std::string> tokens = readFields(body);
    const bool whole = body.empty() || body.back() == kFieldEnd;
    const bool named = std::ranges::all_of(tokens, [](const auto& t) { return t.size() > 1; });
    if (!whole || !named || tokens.size() > kMostCardsInPack) {
        return std::nullopt;
    }
    return tokens;
}

}  // namespace

std::span<const FrmClient::Command> FrmClient::commands() {
    static constexpr Command kCommands[] = {
        {"CLOS", &FrmClient::onClos}, {"MESG", &FrmClient::onMesg}, {"PING", &FrmClient::onPing},
        {"HELO", &FrmClient::onHelo}, {"STAT", &FrmClient::onStat}, {"DROP", &FrmClient::onDrop},
        {"NAME", &FrmClient::onName}, {"ADDR", &FrmClient::onAddr}, {"TEST", &FrmClient::onTest},
        {"SEAT", &FrmClient::onSeat}, {"INFO", &FrmClient::onInfo}, {"PAKS", &FrmClient::onPaks},
        {"ROUN", &FrmClient::onRoun}, {"BOOS", &FrmClient::onBoos}, {"TURN", &FrmClient::onTurn},
        {"RPCK", &FrmClient::onRpck}, {"REVW", &FrmClient::onRevw}, {"RPAU", &FrmClient::onRpau},
        {"BSTA", &FrmClient::onBsta}, {"RSTA", &FrmClient::onRsta}, {"OVER", &FrmClient::onOver},
        {"SNOW", &FrmClient::onSnow}, {"CODE", &FrmClient::onCode}};
    return kCommands;
}

void FrmClient::Dispatch(std::string_view message) {
    const std::optional<Message> read = readMessage(message);
    if (!read) {
        return;
    }
    setLight(shaLight->fillColor() == shade::green ? shade::darkGreen : shade::green);
    const auto known = commands();
    const auto found = std::ranges::find(known, read->command, &Command::name);
    if (found != known.end()) {
        (this->*found->handle)(read->body);
    }
}

void FrmClient::onClos(std::string_view) {
    wskClient->close();
    setStatus(u"Connection closed"_s, lastWords());
    setLight(shade::red);
    tmrMisc->stop();
    frmMessage_->txtSend->setEnabled(false);
    if (draftType != ' ' && !draftOver_) {
        frmMessage_->showNote(lastSaid_.isEmpty()
                                  ? u"The host has stopped the draft."_s
                                  : u"The draft was stopped. Last word of the server: "_s +
                                        lastSaid_);
    }
}

void FrmClient::onMesg(std::string_view body) {
    if (!body.starts_with('<') && !body.starts_with('*')) {
        lastSaid_ = screenText(body);
    }
    frmMessage_->Receive(body);
}

void FrmClient::onPing(std::string_view) {
    Send("PONG~");
}

void FrmClient::onHelo(std::string_view body) {
    const std::optional<int> number = readBetween(body, 1, kSeats);
    if (!number) {
        return;
    }
    setLight(shade::green);
    setStatus(u"Connected as "_s + fromBytes(body));
    myNumber = *number;
    Send("VERS" + std::string(kProtocolVersion) + kTerminator);
    Send("NAME" + toBytes(clientName) + kTerminator);
}

void FrmClient::onStat(std::string_view body) {
    lastStat_ = screenText(body);
    setStatus(lastStat_);
}

void FrmClient::onTest(std::string_view) {
    Send("TEST~");
}

void FrmClient::onDrop(std::string_view body) {
    const std::optional<std::size_t> seat = readPlace(body);
    if (!seat) {
        return;
    }
    const int row = static_cast<int>(*seat);
    Names[*seat].clear();
    frmMessage_->lstNames->setText(row, u" "_s);
    frmSecurity_->lstNames->setText(row, u" "_s);
    frmSecurity_->lstIP->setText(row, u" "_s);
    countPlayers();
}

void FrmClient::countPlayers() {
    playerCount = static_cast<int>(
        std::ranges::count_if(Names, [](const QString& known) { return !known.isEmpty(); }));
}

void FrmClient::onName(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    if (!seat) {
        return;
    }
    const QString name = screenText(body.substr(1));
    Names[static_cast<std::size_t>(*seat)] = name;
    frmMessage_->lstNames->setText(*seat, name);
    frmSecurity_->lstNames->setText(*seat, name);
    countPlayers();
}

void FrmClient::onAddr(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    if (!seat) {
        return;
    }
    // The server's own machine: shown by the address at which it was reached from here.
    const QString address = screenText(body.substr(1));
    frmSecurity_->lstIP->setText(*seat,
                                 address == u"127.0.0.1"_s ? wskClient->remoteHostIp() : address);
}

void FrmClient::onSeat(std::string_view body) {
    const std::optional<std::size_t> seat = readPlace(body.substr(0, 1));
    const std::optional<std::size_t> place =
        body.size() == 2 ? readPlace(body.substr(1)) : std::nullopt;
    if (!seat || !place) {
        return;
    }
    const QString& name = Names[*seat];
    lblNameB[*place]->setText(name);
    lblNameR[*place]->setText(name);
    txtLastPick[*place]->setAccessibleName(u"Last pick of "_s + name);
    if (static_cast<int>(*seat) == myNumber - 1) {
        shaSeat[*place]->setBorderColor(shade::white);
        myPosition = static_cast<int>(*place);
    }
    colorSeat(*place, shade::red);
}

void FrmClient::onPaks(std::string_view body) {
    const std::vector<std::string> fields = readFields(body);
    if (fields.size() != kMostPacks || body.back() != kFieldEnd) {
        return;
    }
    for (int index = 0; index < kMostPacks; ++index) {
        const std::string& set = fields[static_cast<std::size_t>(index)];
        Sets[index] = screenText(set);
        frmDeckBuild_->setPack(index, set);
    }
}

void FrmClient::onInfo(std::string_view body) {
    if (body.empty()) {
        return;
    }
    const bool timed = body.starts_with("R1");
    const std::optional<int> seconds =
        timed ? readBetween(body.substr(2), 1, kMostPickSeconds) : std::optional(0);
    if (!seconds) {
        return;
    }
    lastSaid_.clear();  // what was said before the draft is not why it stops
    fraDraft_->show();
    int height = heightTwips();
    if (body.front() == 'B') {
        draftType = 'B';
        height = kBoosterHeight;
        fraBooster->show();
        fraRoch->hide();
        for (CardList* list : {lstPicked, lstPickedNS}) {
            list->resize(list->width(), toPixels(kBoosterPickedHeight));
        }
    } else if (body.front() == 'R') {
        draftType = 'R';
        height = kRochesterHeight;
        fraBooster->hide();
        fraRoch->show();
        lstPicked->hide();
        clockSeconds = *seconds;
        lblTick->setVisible(timed);
        disableNamesR();
    }
    setSizeTwips(kDraftWidth, height);
    moveIntoWorkArea();
}

void FrmClient::onRoun(std::string_view body) {
    lblRound->setText(screenText(body));
    const bool wasClockwise = !imgCW->isHidden();
    imgCW->setVisible(!wasClockwise);
    imgCCW->setVisible(wasClockwise);
}

void FrmClient::onBoos(std::string_view body) {
    const std::optional<std::vector<std::string>> tokens = readPack(body);
    if (!tokens) {
        return;
    }
    callPlayer();
    if (draftType == 'B') {
        allowPick();
    }
    for (std::size_t place = 0; place < shaSeat.size(); ++place) {
        if (static_cast<int>(place) < playerCount) {
            colorSeat(place, shade::red);
        }
    }
    showPack(*tokens);
    lstPack->setFocus();  // takes effect once the window is active
}

void FrmClient::onBsta(std::string_view body) {
    if (const std::optional<std::size_t> place = readPlace(body)) {
        colorSeat(*place, shade::green);
    }
}

void FrmClient::onTurn(std::string_view body) {
    const std::optional<int> turn = readBetween(body, 1, kSeats);
    if (!turn) {
        return;
    }
    disableNamesR();
    lightNameR(static_cast<std::size_t>(*turn - 1), true, u"on turn"_s);
    if (*turn - 1 != myPosition) {
        return;
    }
    allowPick();
    callPlayer();
    lstPack->setFocus();  // takes effect once the window is active
    if (clockSeconds != 0) {
        tmrRoch->start();
        lblTick->setEnabled(true);
        setTick(clockSeconds);
    }
}

void FrmClient::onRpck(std::string_view body) {
    const bool random = body.ends_with('!');
    if (random) {
        body.remove_suffix(1);
    }
    const std::optional<std::size_t> place = readPlace(body.substr(0, 1));
    const std::optional<int> row =
        place ? readBetween(body.substr(1), 0, lstPack->count() - 1) : std::nullopt;
    if (!row) {
        return;
    }
    const QString card = lstPack->text(*row);
    txtLastPick[*place]->setText(card);
    txtLastPick[*place]->setCursorPosition(0);
    txtLastPick[*place]->setToolTip(plainToolTip(card));
    addHistory(lblNameR[*place]->text() + (random ? u" goofgrabbed "_s : u" picked "_s) + card);
    removePackRow(*row);
}

void FrmClient::onRevw(std::string_view) {
    disableNamesR();
    colorPack(shade::grey);
    tmrReview->start();
    lblTick->setEnabled(true);
    lblTick->show();
    if (clockSeconds >= 1) {
        addHistory(u"20 seconds for pack review..."_s);
        setTick(20);
    } else {
        addHistory(u"5 seconds for pack review (untimed draft)"_s);
        setTick(5);
    }
}

void FrmClient::onRpau(std::string_view) {
    addHistory(u"Pack finished. Review drafted cards..."_s);
    cmdOK->show();
    lstPicked->show();
    lstPickedNS->show();
    (chkSort->isChecked() ? lstPicked : lstPickedNS)->raise();
    (chkSort->isChecked() ? lstPickedNS : lstPicked)->setFocusPolicy(Qt::NoFocus);
    disableNamesR();
}

void FrmClient::onRsta(std::string_view body) {
    if (const std::optional<std::size_t> place = readPlace(body)) {
        lightNameR(*place, true, u"has finished the review"_s);
    }
}

void FrmClient::onOver(std::string_view) {
    for (int color = 0; color < kColors; ++color) {
        frmDeckBuild_->setCards(color, Picks[static_cast<std::size_t>(color)]);
    }
    // A player who was about to leave has a deck to build now.
    tmrClose->stop();
    draftOver_ = true;
    // Where the player looks, and not over the chat, which says what to do now.
    frmDeckBuild_->move(pos());
    frmDeckBuild_->moveIntoWorkArea();
    frmDeckBuild_->show();
    frmSecurity_->show();
    hide();
    frmMessage_->showNote(
        u"The draft is over. Build a deck of at least 40 cards, then press Save As."_s);
    frmDeckBuild_->present();
}

void FrmClient::onSnow(std::string_view) {
    frmDeckBuild_->chkSnow->setEnabled(true);
}

void FrmClient::onCode(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    if (seat && readNumber(body.substr(1))) {
        frmSecurity_->lstCode->setText(*seat, screenText(body.substr(1)));
    }
}

}  // namespace packwise
