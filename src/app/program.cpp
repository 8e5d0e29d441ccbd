#include "app/program.h"

#include "platform/settings.h"
#include "platform/socket.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QTimer>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

Program::Program(QString settingsFile, std::uint64_t seed, const QString& records)
    : settings_(std::move(settingsFile)),
      generator_(seed),
      frmMain([this] { return std::make_unique<FrmMain>(*this); }),
      frmSecurity([this] { return std::make_unique<FrmSecurity>(*this, *this); }),
      frmMessage([this] { return std::make_unique<FrmMessage>(*this, *this); }),
      frmCard([this] { return std::make_unique<FrmCard>(*this); }),
      frmSave([this] { return std::make_unique<FrmSave>(*this); }),
      frmDeckBuild([this] { return std::make_unique<FrmDeckBuild>(*this, frmSave, *this); }),
      frmFixSeats([this] { return std::make_unique<FrmFixSeats>(*this); }),
      frmClient([this] {
          return std::make_unique<FrmClient>(*this, frmMessage, frmDeckBuild, frmSecurity, frmCard,
                                             [this] { return draw(); });
      }),
      frmConnect([this] { return std::make_unique<FrmConnect>(*this, frmClient, frmSecurity); }),
      frmServer([this, records] {
          return std::make_unique<FrmServer>(
              *this, frmSecurity, frmFixSeats, *this, [this] { return draw(); }, records);
      }),
      frmInfo([this] { return std::make_unique<FrmInfo>(*this); }) {
    QApplication::setWindowIcon(QIcon(u":/packwise.ico"_s));
}

Program::~Program() = default;

void Program::start() {
    FrmMain& main = frmMain();
    connect(&main, &FrmMain::clientWanted, this, [this, &main] {
        frmConnect->present();
        main.hide();
    });
    connect(&main, &FrmMain::serverWanted, this, [this, &main] {
        frmServer->present();
        main.hide();
    });
    connect(&main, &FrmMain::aboutWanted, this, [this] { frmInfo->showModally(); });
    main.present();
}

double Program::draw() {
    return std::uniform_real_distribution<double>(0.0, 1.0)(generator_);
}

std::array<Form*, 11> Program::loadedForms() const {
    return {frmMain.ifLoaded(),      frmConnect.ifLoaded(), frmServer.ifLoaded(),
            frmClient.ifLoaded(),    frmMessage.ifLoaded(), frmCard.ifLoaded(),
            frmDeckBuild.ifLoaded(), frmSave.ifLoaded(),    frmSecurity.ifLoaded(),
            frmFixSeats.ifLoaded(),  frmInfo.ifLoaded()};
}

bool Program::isVisible(FormId form) const {
    const Form* const window = loadedForms().at(static_cast<std::size_t>(form));
    return window && window->isVisible();
}

void Program::saveForms() {
    const QString messageSize = frmMessage->wasShown()
                                    ? QString::number(frmMessage->widthTwips()) + u' ' +
                                          QString::number(frmMessage->heightTwips())
                                    : setting::messageSize.read(settings_);
    settings_.write({setting::serverPlace.entry(frmServer->place()),
                     setting::clientPlace.entry(frmClient->place()),
                     setting::messagePlace.entry(frmMessage->place()),
                     setting::messageSize.entry(messageSize),
                     setting::securityPlace.entry(frmSecurity->place())});
}

void Program::end() {
    if (ended_) {
        return;
    }
    ended_ = true;
    for (Form* form : loadedForms()) {
        if (!form) {
            continue;
        }
        for (QTimer* timer : form->findChildren<QTimer*>()) {
            timer->stop();
        }
        for (Socket* socket : form->findChildren<Socket*>()) {
            socket->close();
        }
        form->hide();
    }
    Q_EMIT hasEnded();
}

void Program::start(const QString& name, quint16 port) {
    frmClient->show();
    frmClient->clientName = name;
    Socket& socket = *frmClient->wskClient;
    socket.setRemoteHost(u"127.0.0.1"_s);
    socket.setRemotePort(port);
    frmClient->Connect();
}

void Program::showNote(const QString& line) {
    frmMessage->showNote(line);
}

QString Program::clientName() const {
    const FrmClient* const client = frmClient.ifLoaded();
    return client ? client->clientName : QString();
}

void Program::send(std::string_view message) {
    if (FrmClient* const client = frmClient.ifLoaded()) {
        client->Send(message);
    }
}

void Program::closeConnection() {
    if (FrmClient* const client = frmClient.ifLoaded()) {
        client->wskClient->close();
    }
}

void Program::showCard(const QString& name, const QStringList& sets, int left, int top) {
    const QRect caller = frmDeckBuild->frameGeometry();
    frmCard->placeAt(left, top, caller, caller);
    frmCard->Card(name, sets);
}

PickLog Program::picks() const {
    const FrmClient* const client = frmClient.ifLoaded();
    return client ? client->pickLog() : PickLog();
}

void Program::deckSaved(const QString& path) {
    const FrmClient* const client = frmClient.ifLoaded();
    const bool linked = client && client->wskClient->state() == Socket::Connected;
    frmMessage->showNote(u"Your deck is saved as "_s + QDir::toNativeSeparators(path) +
                         (linked ? u"."_s : u". The server is gone and has not had its code."_s));
}

void Program::notSaved(const QString& path, const QString& reason) {
    frmMessage->showNote(QFileInfo(path).fileName() + u" could not be written beside it: "_s +
                         reason);
}

void Program::hideCard() {
    if (FrmCard* const card = frmCard.ifLoaded()) {
        card->hide();
    }
}

}  // namespace packwise
