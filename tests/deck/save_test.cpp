#include "deck/deckfixture.h"
#include "engine/deckfile.h"
#include "platform/codepage.h"
#include "platform/settings.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"
#include "support/faults.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace packwise {
namespace {

class SaveAs : public DeckBuilder {
protected:
    SaveAs() { setting::savePath.write(shell.settings(), folder.path()); }

    // A deck of 40 with three cards left in the sideboard, and Save As open over it.
    void openWithDeck() {
        deal({{1, "Caf\xE9|Tide|"}, {7, "Cave|"}});
        addLands(39);
        select(window.lstSB, {2});
        window.cmdAdd->click();
        addLands(1);
        select(window.lstDeck, {0});
        window.cmdTake->click();
        window.cmdSave->click();
    }

    void saveAs(const QString& name) {
        save->txtSaveName->setText(name);
        save->cmdOK->click();
    }

    QString path(const QString& name) const { return folder.filePath(name); }

    static QStringList names(const QString& folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
};

TEST_F(SaveAs, WritesTheDeckAndReportsItsCode) {
    openWithDeck();
    EXPECT_FALSE(window.isEnabled());
    EXPECT_TRUE(save->isVisible());
    EXPECT_EQ(link.hidden, 1);
    put(u"mine.dec"_s, "an older deck");
    const QDateTime before = QDateTime::currentDateTime();
    saveAs(u"mine.dec"_s);

    const std::string bytes = bytesOf(path(u"mine.dec"_s)).toStdString();
    const QString text = QString::fromLatin1(bytes.c_str());
    static const QRegularExpression form(
        u"\\A//NAME: Packwise deck ([^\\r\\n]*)\\r\\n"
        u"(    1 (Swamp|Island|Forest|Mountain|Plains)\\r\\n){38}"
        u"    1 Tide\\r\\n    1 Swamp\\r\\nSB: 1 Café\\r\\nSB: 1 Cave\\r\\nSB: 1 Swamp\\r\\n\\z"_s);
    const QRegularExpressionMatch match = form.match(text);
    EXPECT_TRUE(match.hasMatch()) << bytes;
    QStringList stamps;
    for (QDateTime now = before; now < QDateTime::currentDateTime().addSecs(1);
         now = now.addSecs(1)) {
        stamps += timeStamp(now, QLocale::system());
    }
    EXPECT_TRUE(stamps.contains(match.captured(1))) << bytes;
    EXPECT_EQ(link.sent, std::vector<std::string>{
                             "CODE" + std::to_string(codeOfDeckFile(bytes).value()) + "~"});
    EXPECT_EQ(window.lstDeck->count() + window.lstSB->count(), 0);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(save->isVisible());
    EXPECT_EQ(names(folder.path()), QStringList{u"mine.dec"_s});
}

TEST_F(SaveAs, WritesBesideTheDeckWhatIsAskedFor) {
    setting::savePicks.write(shell.settings(), 1);
    openWithDeck();
    EXPECT_TRUE(save->chkPicks->isChecked());
    save->chkExport->click();
    saveAs(u"mine.DEC"_s);
    EXPECT_EQ(names(folder.path()),
              QStringList({u"mine.cod"_s, u"mine.DEC"_s, u"mine.picks.txt"_s}));
    PickTextFault fault;
    EXPECT_EQ(readPicks(bytesOf(path(u"mine.picks.txt"_s)).toStdString(), fault), link.picks());
    const QByteArray exported = bytesOf(path(u"mine.cod"_s));
    EXPECT_TRUE(exported.contains("<card number=\"8\" name=\"Swamp\"/>")) << exported.data();
    EXPECT_TRUE(exported.contains("<card number=\"1\" name=\"Caf\xC3\xA9\"/>"));
    const FrmSave next(shell);
    EXPECT_TRUE(next.chkPicks->isChecked() && next.chkExport->isChecked());
}

// Neither the deck nor its code waits for what goes with it.
TEST_F(SaveAs, LosesNoDeckOverAFileBesideIt) {
    QDir(folder.path()).mkdir(u"mine.cod"_s);
    QDir(folder.path()).mkdir(u"mine.picks.txt"_s);
    openWithDeck();
    save->chkPicks->click();
    save->chkExport->click();
    saveAs(u"mine.dec"_s);
    EXPECT_EQ(bytesOf(path(u"mine.dec"_s)).count('\n'), 44);
    EXPECT_EQ(link.sent.size(), 1U);
    EXPECT_EQ(link.saved, QStringList{path(u"mine.dec"_s)});
    ASSERT_EQ(link.unsaved.size(), 2);
    EXPECT_TRUE(link.unsaved[1].startsWith(path(u"mine.cod"_s) + u": "_s));
    EXPECT_FALSE(shell.ended() || window.isVisible());
}

TEST_F(SaveAs, StaysOpenWhileTheFileCannotBeMade) {
    put(u"file"_s, "whole");
    put(u"mine.dec"_s, "an older deck");
    QDir(folder.path()).mkdir(u"folder.dec"_s);
    openWithDeck();
    for (const QString& name : {u""_s, u"folder.dec"_s, u"nowhere/a.dec"_s, u"file/a.dec"_s,
                                QString(300, u'x'), u".."_s, u"mine.dec"_s, u"full.dec"_s}) {
        std::optional<FullDisk> disk;
        if (name == u"mine.dec"_s || name == u"full.dec"_s) {
            disk.emplace(500);
        }
        const QString full = folder.path() + u'/' + name;
        shell.script.expect(
            u"Cannot save the deck as %1: %2\n\nChoose another folder or name."_s.arg(
                QDir::toNativeSeparators(full), whyNotWritable(full, 1000)));
        saveAs(name);
        expectWarning(shell.script.last(), u"Error"_s, BoxButtons::Ok);
        EXPECT_TRUE(save->isVisible() && !window.isEnabled() && !shell.ended());
    }
    EXPECT_EQ(bytesOf(path(u"file"_s)), "whole");
    EXPECT_EQ(bytesOf(path(u"mine.dec"_s)), "an older deck");
    EXPECT_EQ(names(folder.path()), QStringList({u"file"_s, u"folder.dec"_s, u"mine.dec"_s}));
    EXPECT_EQ(window.lstDeck->count(), 40);
    EXPECT_TRUE(link.sent.empty());
    saveAs(u"mine.dec"_s);
    EXPECT_EQ(link.sent.size(), 1U);
}

// What the trial has not foreseen: the last way out, with the deck kept if that can be.
TEST_F(SaveAs, AFailedSaveEndsTheProgramAndKeepsTheDeckAmongTheDocuments) {
    const QTemporaryDir home;
    const QByteArray homeBefore = qgetenv("HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    const QString documents = home.filePath(u"Documents"_s);
    openWithDeck();
    put(u"mine.dec"_s, "an older deck");
    QStringList told;
    shell.boxes().setHook([&](const Box& box) {
        told += box.text;
        expectWarning(box, u"Error"_s, BoxButtons::Ok);
        return true;
    });
    for (const QString& name : {u"nowhere/a.dec"_s, u"nowhere/a.dec"_s, u"mine.dec"_s}) {
        std::optional<FullDisk> disk;
        if (name == u"mine.dec"_s) {
            disk.emplace(500);
        }
        save->txtSaveName->setText(name);
        window.SaveFile();
    }
    qputenv("HOME", homeBefore);

    ASSERT_EQ(told.size(), 3);
    const QString error = u"Error writing to file. Must quit. :(\n\n"_s;
    for (int copy = 0; copy < 2; ++copy) {
        const QString kept = told[copy].section(u"The deck is kept as "_s, 1);
        EXPECT_EQ(told[copy], error + u"The deck is kept as "_s + kept);
        EXPECT_EQ(bytesOf(kept).count('\n'), 44);
    }
    EXPECT_NE(told[0], told[1]) << "one copy over the other";
    EXPECT_TRUE(told[2].startsWith(error + u"It cannot be kept as "_s + documents));
    EXPECT_EQ(names(documents).size(), 2);
    EXPECT_EQ(bytesOf(path(u"mine.dec"_s)), "an older deck");
    EXPECT_TRUE(shell.ended());
    EXPECT_EQ(window.lstDeck->count(), 40);
    EXPECT_TRUE(link.sent.empty());
}

TEST_F(SaveAs, EveryWayBackEnablesTheBuilder) {
    openWithDeck();
    EXPECT_FALSE(window.closeByUser()) << "a disabled window cannot be closed";
    const std::function<void()> ways[] = {[this] { save->cmdCancel->click(); },
                                          [this] { save->closeByUser(); },
                                          [this] { QTest::keyClick(&save(), Qt::Key_Escape); }};
    for (const auto& way : ways) {
        save->txtSaveName->setText(u"kept"_s);
        bool enabledFirst = false;
        const auto connection = QObject::connect(&save(), &FrmSave::leaving, [&] {
            enabledFirst = window.isEnabled() && save->isVisible();
        });
        way();
        QObject::disconnect(connection);
        EXPECT_TRUE(enabledFirst) << "the focus would go to some other window";
        EXPECT_TRUE(window.isEnabled());
        EXPECT_FALSE(save->isVisible());
        EXPECT_EQ(save->txtSaveName->text(), u"kept"_s);
        window.cmdSave->click();
        EXPECT_FALSE(window.isEnabled());
        EXPECT_TRUE(save->isVisible());
    }
    EXPECT_TRUE(link.sent.empty());
}

TEST_F(SaveAs, BrowsesFoldersAndDeckFiles) {
    put(u"a.dec"_s, "");
    put(u"b.txt"_s, "");
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"inner/deep"_s));
    const QDateTime before = QDateTime::currentDateTime();
    FrmSave& dialog = save();
    dialog.show();
    const QDateTime after = QDateTime::currentDateTime();
    QStringList defaults;
    for (const QDateTime& now : {before, after}) {
        defaults += QString::asprintf("draft-%02d%02d%04d-%02d%02d.dec", now.date().month(),
                                      now.date().day(), now.date().year(), now.time().hour(),
                                      now.time().minute());
    }
    EXPECT_TRUE(defaults.contains(dialog.txtSaveName->text())) << defaults[0].toStdString();
    EXPECT_EQ(dialog.dlbDir->path(), folder.path());
    EXPECT_EQ(dialog.flbFile->texts(), QStringList{u"a.dec"_s});
    const QString typed = dialog.txtSaveName->text();
    dialog.flbFile->setFocus();
    EXPECT_EQ(dialog.txtSaveName->text(), typed) << "the focus alone chooses nothing";
    clickRow(dialog.flbFile, 0);
    EXPECT_EQ(dialog.txtSaveName->text(), u"a.dec"_s);

    QTest::keyClick(dialog.dlbDir, Qt::Key_Down);
    QTest::keyClick(dialog.dlbDir, Qt::Key_Return);
    EXPECT_EQ(dialog.SaveName(), path(u"inner/a.dec"_s));
    EXPECT_EQ(dialog.flbFile->count(), 0);
    doubleClickRow(dialog.dlbDir, dialog.dlbDir->currentRow() - 1);
    EXPECT_EQ(dialog.dlbDir->path(), folder.path());

    Q_EMIT dialog.dlbDrive->activated(dialog.dlbDrive->currentIndex());
    EXPECT_EQ(dialog.dlbDir->path(), folder.path()) << "the same drive again is no change";
    dialog.dlbDrive->addItem(path(u"inner"_s));  // stands for another volume
    dialog.dlbDrive->setCurrentIndex(dialog.dlbDrive->count() - 1);
    Q_EMIT dialog.dlbDrive->activated(dialog.dlbDrive->currentIndex());
    EXPECT_EQ(dialog.dlbDir->path(), path(u"inner"_s));
    dialog.cmdOK->click();
    EXPECT_EQ(setting::savePath.read(shell.settings()), path(u"inner"_s));
}

TEST_F(SaveAs, AFolderThatIsGoneGivesTheCurrentOne) {
    for (const QString& stored : {path(u"gone"_s), u""_s}) {
        setting::savePath.write(shell.settings(), stored);
        const FrmSave dialog(shell);
        EXPECT_EQ(dialog.dlbDir->path(), QDir::currentPath());
    }
}

TEST(DeckFile, CountsDeckDoubleSideboardOnceAndTheHeaderAgainst) {
    const std::string_view stamp = "11/18/2026 6:25:38 AM";
    std::vector<std::string> deck(17, "Swamp");
    deck.insert(deck.end(), 23, "Island");
    const DeckFile file = makeDeckFile(stamp, deck, {"Forest", "Plains"});
    EXPECT_EQ(file.code, 44281);
    EXPECT_EQ(codeOfDeckFile(file.text), 44281);
    EXPECT_EQ(std::count(file.text.begin(), file.text.end(), '\n'), 43);

    EXPECT_EQ(makeDeckFile(stamp, {"Snow-Covered Swamp"}, {"\xC6ther Fox"}).text,
              "//NAME: Packwise deck 11/18/2026 6:25:38 AM\r\n"
              "    1 Snow-Covered Swamp\r\n"
              "SB: 1 \xC6ther Fox\r\n");
    EXPECT_EQ(makeDeckFile(stamp, {}, {"\xFF"}).code, 255 - 2379);
    EXPECT_EQ(codeOfDeckFile("no deck"), std::nullopt);
}

const QDateTime kMorning(QDate(2026, 11, 18), QTime(6, 25, 38));

TEST(TimeStamp, FollowsTheUsersSettings) {
    const std::pair<QString, QString> cases[] = {{u"en_US"_s, u"11/18/2026 6:25:38 AM"_s},
                                                 {u"de_DE"_s, u"18.11.2026 06:25:38"_s},
                                                 {u"en_GB"_s, u"18/11/2026 06:25:38"_s}};
    for (const auto& [locale, stamp] : cases) {
        EXPECT_EQ(timeStamp(kMorning, QLocale(locale)), stamp);
    }
}

// Whatever the language, the stamp survives the way into the file and tells the second.
TEST(TimeStamp, HoldsSecondsAndTheCodePageAloneInEveryLanguage) {
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString stamp = timeStamp(kMorning, locale);
        const std::string where = locale.name().toStdString() + ": " + stamp.toStdString();
        EXPECT_TRUE(fitsCodePage(stamp)) << where;
        EXPECT_TRUE(stamp.contains(u"38"_s)) << where;
        EXPECT_TRUE(stamp.contains(u"25"_s)) << where;
        EXPECT_FALSE(stamp.contains(u"  "_s)) << where;
    }
}

}  // namespace
}  // namespace packwise
