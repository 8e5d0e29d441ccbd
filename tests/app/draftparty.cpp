#include "app/draftparty.h"

#include "client/cardlist.h"
#include "deck/dirlistbox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRadioButton>
#include <QTcpServer>
#include <QTest>

#include <gtest/gtest.h>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

bool spinUntil(const std::function<bool()>& condition, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    QTimer beat;  // wakes the loop when nothing else happens
    beat.start(5);
    while (!condition()) {
        if (clock.elapsed() > milliseconds) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

quint16 freePort() {
    for (int attempt = 0; attempt < 100; ++attempt) {
        const auto port = static_cast<quint16>(2000 + std::random_device{}() % 7900);
        QTcpServer probe;
        if (probe.listen(QHostAddress::AnyIPv4, port)) {
            return port;
        }
    }
    return 0;
}

CardFolder::CardFolder() : before_(QDir::currentPath()) {
    const QDir data(QStringLiteral(PACKWISE_DATA));
    QStringList arguments{u"build"_s, u"--into"_s, folder_.path(), u"--register"_s};
    for (const QString& source : data.entryList({u"*.set"_s}, QDir::Files, QDir::Name)) {
        arguments += data.filePath(source);
    }
    QProcess sets;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, folder_.filePath(u"config"_s));
    sets.setProcessEnvironment(environment);
    sets.start(QStringLiteral(PACKWISE_SETS), arguments);
    EXPECT_TRUE(sets.waitForFinished());
    EXPECT_EQ(sets.exitCode(), 0) << sets.readAllStandardError().toStdString();
    const SettingsStore registered(folder_.filePath(u"config/Packwise/Packwise.ini"_s));
    for (const auto& [key, value] : registered.readAll(u"Sets"_s)) {
        setNames_ += value;
    }
    QDir::setCurrent(folder_.path());
}

CardFolder::~CardFolder() {
    QDir::setCurrent(before_);
}

Player::Player(int number)
    : name(u"Player "_s + QString::number(number)),
      program(settingsFolder.filePath(u"Packwise.ini"_s), static_cast<std::uint64_t>(number)) {}

DraftParty::DraftParty(int players, const QStringList& sets, int packs)
    : packs_(packs), sets_(sets), port_(freePort()) {
    for (int i = 0; i < players; ++i) {
        players_.push_back(std::make_unique<Player>(i));
    }
}

bool DraftParty::join() {
    SettingsStore& settings = host().program.settings();
    for (int i = 0; i < sets_.size(); ++i) {
        settings.write(u"Sets"_s, QString::number(i + 1), sets_.at(i));
    }
    host().program.start();
    QTest::mouseClick(host().program.frmMain->cmdServer, Qt::LeftButton);
    FrmServer& console = server();
    console.optPack.at(static_cast<std::size_t>(packs_ - 1))->click();
    for (int i = 0; i < packs_; ++i) {
        console.cboPack.at(static_cast<std::size_t>(i))->setCurrentText(sets_.at(i % sets_.size()));
    }
    console.txtPort->setText(QString::number(port_));
    console.txtName->setText(host().name);
    QTest::mouseClick(console.cmdOpenPort, Qt::LeftButton);

    for (int i = 0; i < static_cast<int>(players_.size()); ++i) {
        Player& joining = player(i);
        if (i > 0) {
            joining.program.start();
            QTest::mouseClick(joining.program.frmMain->cmdClient, Qt::LeftButton);
            FrmConnect& dialog = joining.program.frmConnect();
            dialog.txtName->setText(joining.name);
            dialog.txtIP->setText(u"127.0.0.1"_s);
            dialog.txtPort->setText(QString::number(port_));
            QTest::mouseClick(dialog.cmdConnect, Qt::LeftButton);
        }
        if (!spinUntil([&] { return console.lstNames->text(i) == joining.name; })) {
            return false;
        }
    }
    return true;
}

void DraftParty::start() {
    QTest::mouseClick(server().cmdStart, Qt::LeftButton);
}

void DraftParty::pickOnce() {
    for (const auto& player : players_) {
        if (player->mayPick()) {
            ListBox& pack = *player->client().lstPack;
            pack.setCurrentRow(pack.count() / 2);
            QTest::mouseClick(player->client().cmdDraft, Qt::LeftButton);
        }
    }
    QCoreApplication::processEvents();
}

void DraftParty::leave(int seatIndex) {
    Player& leaving = player(seatIndex);
    leaving.script.expect(u"Are you sure?"_s, true);
    leaving.client().closeByUser();
    leaving.client().tmrClose_Timer();
    EXPECT_TRUE(leaving.program.ended());
    leaving.gone = true;
}

bool DraftParty::buildDeck(int seatIndex, const QString& folder, const QString& file) {
    FrmDeckBuild& builder = player(seatIndex).program.frmDeckBuild();
    int chosen = 0;
    for (int row = 0; row < builder.lstSB->count() && chosen < 23; ++row) {
        if (FrmDeckBuild::isCardLine(builder.lstSB->text(row))) {
            builder.lstSB->setCurrentRow(row, QItemSelectionModel::Select);
            ++chosen;
        }
    }
    QTest::mouseClick(builder.cmdAdd, Qt::LeftButton);
    for (int land = 0; land < 17; ++land) {
        QTest::mouseClick(builder.cmdLand.at(static_cast<std::size_t>(land % 5)), Qt::LeftButton);
    }
    EXPECT_EQ(builder.lblDeckCount->text(), u"40"_s);
    QTest::mouseClick(builder.cmdSave, Qt::LeftButton);
    FrmSave& save = player(seatIndex).program.frmSave();
    if (!save.isVisible()) {
        return false;
    }
    save.dlbDir->setPath(folder);
    save.txtSaveName->setText(file);
    QTest::mouseClick(save.cmdOK, Qt::LeftButton);
    return QFile::exists(folder + u'/' + file);
}

}  // namespace packwise
