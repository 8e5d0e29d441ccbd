#include "app/draftparty.h"

#include "client/cardlist.h"
#include "engine/samplefiles.h"

#include <QElapsedTimer>

namespace packwise {

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

CardFolder::CardFolder() : before_(QDir::currentPath()) {
    const QDir data(QStringLiteral(PACKWISE_DATA));
    QStringList arguments{u"build"_s, u"--into"_s, folder_.path()};
    for (const QString& source : data.entryList({u"*.set"_s}, QDir::Files, QDir::Name)) {
        arguments += data.filePath(source);
    }
    QProcess sets;
    sets.start(QStringLiteral(PACKWISE_SETS), arguments);
    EXPECT_TRUE(sets.waitForFinished());
    EXPECT_EQ(sets.exitCode(), 0) << sets.readAllStandardError().toStdString();
    const QString told = QString::fromUtf8(sets.readAllStandardOutput());
    for (const QString& line : told.split(u'\n', Qt::SkipEmptyParts)) {
        setNames_ += line.section(u':', 0, 0);  // "NAME: written"
    }
    QDir::setCurrent(folder_.path());
}

CardFolder::CardFolder(int rares, int uncommons, int commons)
    : before_(QDir::currentPath()), setNames_{u"Tiny"_s} {
    QFile file(folder_.filePath(u"Tiny.pw"_s));
    const std::string bytes =
        sample::header(rares, uncommons, commons) + sample::wholeSet().substr(6);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(bytes));
    QDir::setCurrent(folder_.path());
}

CardFolder::~CardFolder() {
    QDir::setCurrent(before_);
}

PlayerProgram::PlayerProgram(int number)
    : name(u"Player "_s + QString::number(number)),
      program(settingsFolder.filePath(u"Packwise.ini"_s), static_cast<std::uint64_t>(number)) {}

DraftParty::DraftParty(int players, const QStringList& sets, int packs, const DraftChoices& choices)
    : packs_(packs), choices_(choices), sets_(sets), port_(freePort()) {
    for (int i = 0; i < players; ++i) {
        players_.push_back(std::make_unique<PlayerProgram>(i));
    }
}

bool DraftParty::join() {
    SettingsStore& settings = host().program.settings();
    for (int i = 0; i < sets_.size(); ++i) {
        settings.write(u"Sets"_s, QString::number(i + 1), sets_.at(i));
    }
    host().program.start();
    QTest::mouseClick(host().program.frmMain->cmdServer, Qt::LeftButton);
    FrmServer& console = host().program.frmServer();
    console.optPack.at(static_cast<std::size_t>(packs_ - 1))->click();
    for (int i = 0; i < packs_; ++i) {
        console.cboPack.at(static_cast<std::size_t>(i))->setCurrentText(sets_.at(i % sets_.size()));
    }
    (choices_.rochester ? console.optRochester : console.optBooster)->click();
    console.chkTimed->setChecked(choices_.timed);
    console.chkFixSeats->setChecked(choices_.fixSeats);
    console.chkHalt->setChecked(choices_.halt);
    console.txtPort->setText(QString::number(port_));
    console.txtName->setText(host().name);
    QTest::mouseClick(console.cmdOpenPort, Qt::LeftButton);

    for (int i = 0; i < static_cast<int>(players_.size()); ++i) {
        PlayerProgram& joining = player(i);
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
    QTest::mouseClick(console().cmdStart, Qt::LeftButton);
}

bool DraftParty::act(PlayerProgram& player) {
    FrmClient& client = player.client();
    if (player.mayPick()) {
        client.lstPack->setCurrentRow(client.lstPack->count() / 2);
        QTest::mouseClick(client.cmdDraft, Qt::LeftButton);
        return true;
    }
    if (!player.gone && client.tmrReview->isActive()) {
        while (client.tmrReview->isActive()) {
            client.tmrReview_Timer();
        }
        return true;
    }
    if (!player.gone && client.cmdOK->isVisible()) {
        QTest::mouseClick(client.cmdOK, Qt::LeftButton);
        return true;
    }
    return false;
}

void DraftParty::actOnce() {
    for (const auto& player : players_) {
        act(*player);
    }
    QCoreApplication::processEvents();
}

void DraftParty::lose(int seatIndex) {
    player(seatIndex).client().wskClient->close();
    player(seatIndex).gone = true;
}

bool DraftParty::allBuildDecks() const {
    return std::all_of(players_.begin(), players_.end(), [](const auto& player) {
        return player->gone || player->program.isVisible(FormId::DeckBuild);
    });
}

}  // namespace packwise
