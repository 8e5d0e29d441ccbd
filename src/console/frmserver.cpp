// The console: load, settings, opening the port, closing.
#include "console/frmserver.h"

#include "platform/codepage.h"
#include "platform/settings.h"
#include "widgets/heldkey.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

FrmServer::FrmServer(Shell& shell, Lazy<FrmSecurity>& security, Lazy<FrmFixSeats>& fixSeats,
                     LocalClient& localClient, std::function<double()> draw, const QString& records)
    : Form(u"frmServer"_s, u"Packwise Server"_s, FormBorder::Fixed),
      shell_(shell),
      security_(security),
      fixSeats_(fixSeats),
      localClient_(localClient),
      draw_(std::move(draw)),
      record_(records,
              [this](const QString& line) {
                  if (!shell_.ended()) {
                      localClient_.showNote(line);
                  }
              }),
      server_(links_, *this, *this, draw_, record_.observer()) {
    makeControls();
    placeControls();
    makeSockets();
    makeTimers();
    connectControls();
    load();
}

void FrmServer::load() {
    const SettingsStore& store = shell_.settings();
    txtPort->setText(setting::serverPort.read(store));
    optRochester->setChecked(setting::draftType.read(store) != u"B");
    chkTimed->setChecked(setting::timed.readInt(store) != 0);
    vsbSecs->setValue(setting::time.readInt(store));
    chkFixSeats->setChecked(setting::fixSeats.readInt(store) != 0);
    chkSilence->setChecked(setting::silence.readInt(store) != 0);
    chkHalt->setChecked(setting::halt.readInt(store) != 0);
    chkReal->setChecked(setting::reality.readInt(store) != 0);
    chkClient->setChecked(setting::runClient.readInt(store) != 0);
    txtName->setText(setting::clientName.read(store));
    loadSets();
    loadPackChoices();
    restorePlace(setting::serverPlace.read(store));
}

void FrmServer::cmdOpenPort_Click() {
    const bool runClient = chkClient->isChecked();
    if (runClient && txtName->text().isEmpty()) {
        shell_.boxes().show(this, Box{u"Name is blank."_s, programTitle()});
        return;
    }
    if (runClient && txtName->text().contains(QLatin1Char(kTerminator))) {
        shell_.boxes().error(this, u"Character ~ reserved"_s);
        return;
    }
    if (!openPort()) {
        return;
    }
    SettingsStore& store = shell_.settings();
    setting::serverPort.write(store, txtPort->text());
    setting::runClient.write(store, runClient ? 1 : 0);
    if (runClient) {
        setting::clientName.write(store, txtName->text());
    }
    cmdStart->setEnabled(true);
    cmdStart->setFocus();
    for (QWidget* control :
         std::initializer_list<QWidget*>{cmdOpenPort, chkClient, txtName, lblPortQ, txtPort}) {
        control->setEnabled(false);
    }
    reach->present(wskServer[0]->localPort(), ownAddresses());
    security_().show();
    if (runClient) {
        startLocalClient();
    }
    activateWindow();
    cmdStart->setFocus();
    sinceListen_.start();
}

bool FrmServer::openPort() {
    bool isNumber = false;
    const double port = txtPort->text().trimmed().toDouble(&isNumber);
    if (isNumber && port < 1000) {
        shell_.boxes().error(this, u"Use a port greater than 1000"_s);
        return false;
    }
    if (isNumber && port <= 65535) {
        wskServer[0]->setLocalPort(static_cast<quint16>(std::lround(port)));
        if (wskServer[0]->listen()) {
            return true;
        }
    }
    shell_.boxes().error(this, u"Bad port"_s);
    return false;
}

void FrmServer::startLocalClient() {
    setting::clientName.write(shell_.settings(), txtName->text());
    localClient_.start(txtName->text(), wskServer[0]->localPort());
}

void FrmServer::chkClient_Click() const {
    txtName->setEnabled(chkClient->isChecked());
}

void FrmServer::chkHalt_Click() {
    setting::halt.write(shell_.settings(), chkHalt->isChecked() ? 1 : 0);
}

void FrmServer::chkReal_Click() {
    setting::reality.write(shell_.settings(), chkReal->isChecked() ? 1 : 0);
}

void FrmServer::chkSilence_Click() {
    setting::silence.write(shell_.settings(), chkSilence->isChecked() ? 1 : 0);
}

void FrmServer::optBooster_Click() const {
    chkTimed->setEnabled(false);
    lblSecs->setEnabled(false);
    vsbSecs->setEnabled(false);
}

void FrmServer::optRochester_Click() const {
    chkTimed->setEnabled(true);
    lblSecs->setEnabled(true);
    vsbSecs->setEnabled(true);
}

void FrmServer::optPack_Click(int index) {
    for (int i = 2; i < kMostPacks; ++i) {
        cboPack[static_cast<std::size_t>(i)]->setEnabled(i <= index);
    }
}

void FrmServer::vsbSecs_Change() const {
    lblSecs->setText(QString::number(to_client::Info::kMostSeconds - vsbSecs->value()));
}

bool FrmServer::someConnectionOpen() const {
    return std::any_of(wskServer.begin() + 1, wskServer.end(),
                       [](const Socket* socket) { return socket->state() != Socket::Closed; });
}

bool FrmServer::queryUnload(UnloadMode mode) {
    if (shell_.ended()) {
        return true;
    }
    if (mode == UnloadMode::User && !isEnabled()) {
        return false;
    }
    if (mode != UnloadMode::User || !someConnectionOpen()) {
        record_.giveUp();
        for (Socket* socket : wskServer) {
            socket->close();
        }
        fixingSeats_ = false;
        if (FrmFixSeats* dialog = fixSeats_.ifLoaded()) {
            dialog->hide();
        }
        if (!shell_.isVisible(FormId::DeckBuild)) {
            shell_.saveForms();
            shell_.end();
        }
        return true;
    }
    const bool quit =
        shell_.boxes().show(this, Box{u"Quit? Some connections are still open."_s, programTitle(),
                                      BoxButtons::YesNo, BoxIcon::Exclamation});
    if (shell_.ended()) {
        return true;
    }
    if (!quit) {
        return false;
    }
    record_.giveUp();
    server_.sayGoodbye();
    if (shell_.isVisible(FormId::DeckBuild) || shell_.isVisible(FormId::Security)) {
        hide();
        return false;
    }
    shell_.end();
    return true;
}

bool FrmServer::eventFilter(QObject* watched, QEvent* event) {
    // optRochester and chkReal share a letter: each press of it chooses the next of the two.
    auto* const button = qobject_cast<QAbstractButton*>(watched);
    if (button && event->type() == QEvent::Shortcut &&
        static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
        button->setFocus(Qt::ShortcutFocusReason);
        button->click();
        return true;
    }
    // A second press that was meant for cmdOpenPort must not start the draft.
    if (watched == cmdStart && event->type() == QEvent::KeyPress && sinceListen_.isValid() &&
        sinceListen_.elapsed() < QApplication::doubleClickInterval()) {
        return pressesButtons(static_cast<QKeyEvent*>(event)->key());
    }
    if (event->type() == QEvent::Show && qobject_cast<QAbstractItemView*>(watched)) {
        lookForSets();
    }
    return Form::eventFilter(watched, event);
}

void FrmServer::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && cmdOpenPort->isEnabled()) {
        cmdOpenPort->click();
        return;
    }
    Form::keyPressEvent(event);
}

}  // namespace packwise
