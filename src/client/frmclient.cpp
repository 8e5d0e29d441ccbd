// The draft client's link: its load, the socket, the way out.
#include "client/frmclient.h"

#include "companions/frmcard.h"
#include "companions/frmmessage.h"
#include "platform/settings.h"
#include "widgets/shell.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kSmallWidth = 3450;  // twips
constexpr int kSmallHeight = 975;

// The server says something every second.
constexpr int kLongestSilence = 35;  // seconds
constexpr int kSecondsTillHint = 5;

// What is usually the matter, as a line of its own; empty for a connection that stood once.
QString wordsFor(Socket::ConnectFault fault) {
    switch (fault) {
        case Socket::ConnectFault::Refused:
            return u"\nIt refuses: nobody listens there, or the draft has begun."_s;
        case Socket::ConnectFault::NoAnswer:
            return u"\nNo answer: the address is wrong, or the host's router or firewall is closed."_s;
        case Socket::ConnectFault::UnknownHost:
            return u"\nUnknown host: no machine has that name."_s;
        case Socket::ConnectFault::None:
            return {};
    }
    return {};
}

}  // namespace

FrmClient::FrmClient(Shell& shell, Lazy<FrmMessage>& frmMessage, Lazy<FrmDeckBuild>& frmDeckBuild,
                     Lazy<FrmSecurity>& frmSecurity, Lazy<FrmCard>& frmCard,
                     std::function<double()> draw)
    : Form(u"frmClient"_s, u"Packwise Client"_s, FormBorder::Fixed),
      wskClient(new Socket(this)),
      shell_(shell),
      frmMessage_(frmMessage),
      frmDeckBuild_(frmDeckBuild),
      frmSecurity_(frmSecurity),
      frmCard_(frmCard),
      draw_(std::move(draw)),
      Sets(kMostPacks) {
    wskClient->setObjectName(u"wskClient"_s);
    makeControls();
    chkInfo->setChecked(setting::showInfo.readInt(shell_.settings()) != 0);
    connectControls();
    setLight(shade::red);
    cmdDraft->setEnabled(false);
    colorPack(shade::black);
    setSizeTwips(kSmallWidth, kSmallHeight);
    setRoomTwips(kDraftWidth, kRochesterHeight);
    restorePlace(setting::clientPlace.read(shell_.settings()));
    tmrMisc->start();
    tmrSilence->start();
}

void FrmClient::Form_GotFocus() {
    hasFocus_ = true;
}

void FrmClient::Form_LostFocus() {
    hasFocus_ = false;
}

void FrmClient::Connect() {
    setStatus(u"Connecting..."_s, u"Connecting to "_s + serverPlace());
    connectingSeconds_ = 0;
    wskClient->connectToHost();
}

QString FrmClient::serverPlace() const {
    return u"%1, port %2"_s.arg(wskClient->remoteHost()).arg(wskClient->remotePort());
}

void FrmClient::setStatus(const QString& status, const QString& detail) {
    lblStatus->setText(status);
    lblStatus->setToolTip(detail);
    lblStatus->setAccessibleDescription(detail);
}

QString FrmClient::lastWords() const {
    QStringList words{lastStat_, lastSaid_};
    words.removeAll(QString());
    return words.isEmpty() ? QString() : u"The server said last: "_s + words.join(u" / "_s);
}

void FrmClient::Send(std::string_view message) {
    if (wskClient->state() != Socket::Connected) {
        return;
    }
    wskClient->sendData(message);
    if (wskClient->state() == Socket::Failed) {
        // A server that reads nothing any more has no event of its own. What has one is through
        // by then and has closed the socket.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (wskClient->state() == Socket::Failed) {
                    wskClient_Close();
                }
            },
            Qt::QueuedConnection);
    }
}

void FrmClient::wskClient_DataArrival() {
    silentSeconds_ = 0;
    received_.append(wskClient->getData());
    while (const std::optional<std::string> message = received_.next()) {
        Dispatch(*message);
        if (shell_.ended()) {
            return;
        }
    }
    if (wskClient->state() == Socket::Closed) {
        received_.clear();
    } else if (received_.overflowed()) {
        wskClient_Close();
    }
}

bool FrmClient::takeArrived() {
    received_.append(wskClient->getData());
    while (const std::optional<std::string> message = received_.next()) {
        Dispatch(*message);
    }
    return wskClient->state() != Socket::Closed;
}

void FrmClient::wskClient_Close() {
    if (!takeArrived()) {
        return;
    }
    wskClient->close();
    received_.clear();
    setStatus(u"Server disconnect."_s, lastWords());
    setLight(shade::red);
    if (frmMessage_.ifLoaded()) {
        frmMessage_->hide();
    }
}

void FrmClient::wskClient_Error() {
    if (!takeArrived()) {
        return;
    }
    if (draftOver_) {
        // The player's deck is in the deck builder.
        wskClient_Close();
        return;
    }
    const QString why = wordsFor(wskClient->connectFault());
    wskClient->close();
    shell_.boxes().show(
        this, Box{u"Connection error!\n\nServer: "_s + serverPlace() + why, programTitle()});
    shell_.end();
}

void FrmClient::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        hideCard();
    } else {
        Form::keyPressEvent(event);
    }
}

void FrmClient::tmrMisc_Timer() {
    Send(to_server::Ping{}.write());
}

void FrmClient::tmrSilence_Timer() {
    // Ticks, not the time of day: a machine that was asleep has heard nothing, too.
    if (wskClient->state() == Socket::Connecting && ++connectingSeconds_ == kSecondsTillHint) {
        setStatus(lblStatus->text(),
                  u"Connecting to "_s + serverPlace() + wordsFor(Socket::ConnectFault::NoAnswer));
    }
    if (wskClient->state() != Socket::Connected) {
        silentSeconds_ = 0;
    } else if (++silentSeconds_ >= kLongestSilence) {
        wskClient_Close();
    }
}

bool FrmClient::queryUnload(UnloadMode) {
    if (shell_.ended()) {
        return true;
    }
    hideCard();
    if (wskClient->state() != Socket::Closed) {
        const bool leave = shell_.boxes().show(
            this, Box{u"Are you sure?"_s, programTitle(), BoxButtons::YesNo, BoxIcon::Exclamation});
        // The draft may have ended while the box stood: the player is in the deck builder now.
        if (leave && !shell_.ended() && !draftOver_) {
            Send(to_server::Drop{}.write());
            tmrClose->start();
        }
        return false;
    }
    if (frmMessage_.ifLoaded()) {
        frmMessage_->hide();
    }
    if (!shell_.isVisible(FormId::Server)) {
        shell_.saveForms();
        shell_.end();
    }
    return true;
}

void FrmClient::tmrClose_Timer() {
    tmrClose->stop();
    wskClient->close();
    hide();
    if (frmMessage_.ifLoaded()) {
        frmMessage_->hide();
    }
    if (!shell_.isVisible(FormId::Server)) {
        shell_.end();
    }
}

}  // namespace packwise
