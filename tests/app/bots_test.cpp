#include "app/draftparty.h"
#include "engine/deckfile.h"

#include <QElapsedTimer>

namespace packwise {
namespace {

constexpr int kBots = 8;

// A console without a client of its own, with an open port.
void openConsole(PlayerProgram& host, const QStringList& sets, quint16 port, bool rochester) {
    host.program.settings().write(u"Sets"_s, u"1"_s, sets.at(0));
    FrmServer& console = host.program.frmServer();
    console.show();
    (rochester ? console.optRochester : console.optBooster)->click();
    console.chkTimed->setChecked(false);
    for (int pack = 0; pack < 3; ++pack) {
        console.cboPack.at(static_cast<std::size_t>(pack))->setCurrentIndex(0);
    }
    console.chkClient->setChecked(false);
    console.txtPort->setText(QString::number(port));
    QTest::mouseClick(console.cmdOpenPort, Qt::LeftButton);
}

TEST(Bots, EightDraftOnTheRealServerAndSaveWhatTheyReport) {
    // With its drive, which another current folder may lack.
    const QString program = QFileInfo(QStringLiteral(PACKWISE_BOT)).absoluteFilePath();
    for (const bool rochester : {false, true}) {
        SCOPED_TRACE(rochester ? "Rochester" : "Booster");
        const CardFolder cards;
        const QTemporaryDir decks;
        const quint16 port = freePort();
        PlayerProgram host(0);
        openConsole(host, cards.setNames(), port, rochester);
        FrmServer& console = host.program.frmServer();

        QProcess bots;
        bots.start(program, {u"--seats"_s, u"8"_s, u"--port"_s, QString::number(port), u"--cards"_s,
                             QDir::currentPath(), u"--decks"_s, decks.path(), u"--seed"_s, u"3"_s,
                             u"--delay"_s, u"0"_s});
        ASSERT_TRUE(bots.waitForStarted());
        ASSERT_TRUE(spinUntil([&] { return !console.lstNames->texts().contains(u" "_s); }, 20000));
        QElapsedTimer clock;
        clock.start();
        QTest::mouseClick(console.cmdStart, Qt::LeftButton);
        ASSERT_TRUE(
            spinUntil([&] { return console.server().state() == DraftServer::State::Over; }, 60000));
        RecordProperty(rochester ? "rochester_ms" : "booster_ms",
                       static_cast<int>(clock.elapsed()));

        const QDir folder(decks.path());
        ASSERT_TRUE(spinUntil(
            [&] { return folder.entryList({u"*.dec"_s}, QDir::Files).size() == kBots; }, 10000));
        host.program.end();
        ASSERT_TRUE(spinUntil([&] { return bots.state() == QProcess::NotRunning; }, 10000));
        EXPECT_EQ(bots.exitCode(), 0);
        const QString told = QString::fromUtf8(bots.readAllStandardOutput());
        for (const QString& name : folder.entryList({u"*.dec"_s}, QDir::Files)) {
            QFile deck(folder.filePath(name));
            ASSERT_TRUE(deck.open(QIODevice::ReadOnly));
            const std::string text = deck.readAll().toStdString();
            EXPECT_TRUE(told.contains(QString::number(codeOfDeckFile(text).value())))
                << name.toStdString();
            EXPECT_EQ(QString::fromStdString(text).count(u"\r\n    1 "_s), 40);
            // 17 of the 40 are land: all of the player's 45 picks are in the file.
            EXPECT_EQ(QString::fromStdString(text).count(u"\r\nSB: 1 "_s), 22);
        }
    }
}

}  // namespace
}  // namespace packwise
