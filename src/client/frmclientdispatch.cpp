// What the draft client does on each message of the server. A body that is not as it should be
// changes nothing.
#include "client/cardlist.h"
#include "client/frmclient.h"
#include "client/passingarrow.h"
#include "companions/frmmessage.h"
#include "companions/frmsecurity.h"
#include "deck/frmdeckbuild.h"
#include "platform/codepage.h"
#include "widgets/look.h"
#include "widgets/twips.h"

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

}  // namespace

void FrmClient::Dispatch(std::string_view message) {
    if (message.size() >= kCommandLength) {
        setLight(shaLight->fillColor() == shade::green ? shade::darkGreen : shade::green);
        to_client::dispatch(message, *this);
    }
}

void FrmClient::on(const to_client::Close&) {
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

void FrmClient::on(const to_client::Chat& message) {
    const std::string& body = message.text;
    if (!body.starts_with('<') && !body.starts_with('*')) {
        lastSaid_ = screenText(body);
    }
    frmMessage_->Receive(body);
}

void FrmClient::on(const to_client::Ping&) {
    Send(to_server::Pong{}.write());
}

void FrmClient::on(const to_client::Hello& message) {
    setLight(shade::green);
    setStatus(u"Connected as "_s + QString::number(message.socket));
    myNumber = message.socket;
    Send(to_server::Version{{std::string(kProtocolVersion)}}.write());
    Send(to_server::Name{toBytes(clientName)}.write());
}

void FrmClient::on(const to_client::Status& message) {
    lastStat_ = screenText(message.text);
    setStatus(lastStat_);
}

void FrmClient::on(const to_client::Test&) {
    Send(to_server::Test{}.write());
}

void FrmClient::on(const to_client::Drop& message) {
    Names[static_cast<std::size_t>(message.seat)].clear();
    frmMessage_->lstNames->setText(message.seat, u" "_s);
    frmSecurity_->lstNames->setText(message.seat, u" "_s);
    frmSecurity_->lstIP->setText(message.seat, u" "_s);
    countPlayers();
}

void FrmClient::countPlayers() {
    playerCount = static_cast<int>(
        std::ranges::count_if(Names, [](const QString& known) { return !known.isEmpty(); }));
}

void FrmClient::on(const to_client::Name& message) {
    const QString name = screenText(message.name);
    Names[static_cast<std::size_t>(message.seat)] = name;
    frmMessage_->lstNames->setText(message.seat, name);
    frmSecurity_->lstNames->setText(message.seat, name);
    countPlayers();
}

void FrmClient::on(const to_client::Address& message) {
    // The server's own machine: shown by the address at which it was reached from here.
    const QString address = screenText(message.address);
    frmSecurity_->lstIP->setText(message.seat,
                                 address == u"127.0.0.1"_s ? wskClient->remoteHostIp() : address);
}

void FrmClient::on(const to_client::Seat& message) {
    const auto place = static_cast<std::size_t>(message.position);
    const QString& name = Names[static_cast<std::size_t>(message.seat)];
    lblNameB[place]->setText(name);
    lblNameR[place]->setText(name);
    txtLastPick[place]->setAccessibleName(u"Last pick of "_s + name);
    if (message.seat == myNumber - 1) {
        shaSeat[place]->setBorderColor(shade::white);
        myPosition = message.position;
    }
    colorSeat(place, shade::red);
    keeper_.seat(message.position, toBytes(name), message.seat == myNumber - 1);
}

void FrmClient::on(const to_client::Sets& message) {
    for (int index = 0; index < kMostPacks; ++index) {
        const std::string& set = message.names[static_cast<std::size_t>(index)];
        Sets[index] = screenText(set);
        frmDeckBuild_->setPack(index, set);
    }
    keeper_.sets(message.names);
}

void FrmClient::on(const to_client::Info& message) {
    lastSaid_.clear();  // what was said before the draft is not why it stops
    fraDraft_->show();
    int height = heightTwips();
    if (message.format == 'B') {
        draftType = 'B';
        height = kBoosterHeight;
        fraBooster->show();
        fraRoch->hide();
        for (CardList* list : {lstPicked, lstPickedNS}) {
            list->resize(list->width(), toPixels(kBoosterPickedHeight));
        }
    } else if (message.format == 'R') {
        draftType = 'R';
        height = kRochesterHeight;
        fraBooster->hide();
        fraRoch->show();
        lstPicked->hide();
        clockSeconds = message.seconds;
        lblTick->setVisible(message.timed);
        disableNamesR();
    }
    setSizeTwips(kDraftWidth, height);
    moveIntoWorkArea();
    keeper_.begin(draftType);
    begun_ = QDateTime::currentDateTime();
}

void FrmClient::on(const to_client::Round& message) {
    keeper_.round(message.text);
    lblRound->setText(screenText(message.text));
    const bool wasClockwise = !imgCW->isHidden();
    imgCW->setVisible(!wasClockwise);
    imgCCW->setVisible(wasClockwise);
}

void FrmClient::on(const to_client::ShowPack& message) {
    callPlayer();
    if (draftType == 'B') {
        allowPick();
    }
    for (std::size_t place = 0; place < shaSeat.size(); ++place) {
        if (static_cast<int>(place) < playerCount) {
            colorSeat(place, shade::red);
        }
    }
    keeper_.pack(message.pack);
    showPack(message.pack.cards());
    lstPack->setFocus();  // takes effect once the window is active
}

void FrmClient::on(const to_client::Picked& message) {
    colorSeat(static_cast<std::size_t>(message.position), shade::green);
}

void FrmClient::on(const to_client::Turn& message) {
    disableNamesR();
    lightNameR(static_cast<std::size_t>(message.position), true, u"on turn"_s);
    if (message.position != myPosition) {
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

void FrmClient::on(const to_client::Pick& message) {
    if (message.row >= lstPack->count()) {
        return;
    }
    const auto place = static_cast<std::size_t>(message.position);
    const QString card = lstPack->text(message.row);
    txtLastPick[place]->setText(card);
    txtLastPick[place]->setCursorPosition(0);
    txtLastPick[place]->setToolTip(plainToolTip(card));
    addHistory(lblNameR[place]->text() + (message.random ? u" goofgrabbed "_s : u" picked "_s) +
               card);
    removePackRow(message.row);
    keeper_.takeRow(message.position, message.row);
}

void FrmClient::on(const to_client::Review&) {
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

void FrmClient::on(const to_client::Pause&) {
    addHistory(u"Pack finished. Review drafted cards..."_s);
    cmdOK->show();
    lstPicked->show();
    lstPickedNS->show();
    (chkSort->isChecked() ? lstPicked : lstPickedNS)->raise();
    (chkSort->isChecked() ? lstPickedNS : lstPicked)->setFocusPolicy(Qt::NoFocus);
    disableNamesR();
}

void FrmClient::on(const to_client::Answered& message) {
    lightNameR(static_cast<std::size_t>(message.position), true, u"has finished the review"_s);
}

void FrmClient::on(const to_client::Over&) {
    if (draftOver_) {
        return;  // the deck builder has the cards
    }
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

void FrmClient::on(const to_client::Snow&) {
    frmDeckBuild_->chkSnow->setEnabled(true);
}

void FrmClient::on(const to_client::Code& message) {
    frmSecurity_->lstCode->setText(message.seat, QString::number(message.code));
}

}  // namespace packwise
