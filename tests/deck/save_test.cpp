#include "common/settings.h"
#include "deck/deckfile.h"
#include "deck/deckfixture.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

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

    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
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
    saveAs(u"mine.dec"_s);

    const std::string bytes = bytesOf(path(u"mine.dec"_s)).toStdString();
    const QString text = QString::fromLatin1(bytes.c_str());
    static const QRegularExpression form(
        u"\\A//NAME: Packwise deck [^\\r\\n]*\\d\\d?:\\d\\d:\\d\\d[^\\r\\n]*\\r\\n"
        u"(    1 (Swamp|Island|Forest|Mountain|Plains)\\r\\n){38}"
        u"    1 Tide\\r\\n    1 Swamp\\r\\nSB: 1 Café\\r\\nSB: 1 Cave\\r\\nSB: 1 Swamp\\r\\n\\z"_s);
    EXPECT_TRUE(form.match(text).hasMatch()) << bytes;
    EXPECT_EQ(link.sent,
              std::vector<std::string>{"CODE" + std::to_string(codeOfDeckFile(bytes)) + "~"});
    EXPECT_EQ(window.lstDeck->count() + window.lstSB->count(), 0);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(save->isVisible());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"mine.dec"_s});
}

TEST_F(SaveAs, AFailureEndsTheProgramAndKeepsTheDeck) {
    put(u"file"_s, "whole");
    QDir(folder.path()).mkdir(u"folder.dec"_s);
    for (const QString& name : {u""_s, u"folder.dec"_s, u"nowhere/a.dec"_s, u"file/a.dec"_s,
                                QString(300, u'x'), u".."_s}) {
        FakeShell ownShell;
        setting::savePath.write(ownShell.settings(), folder.path());
        FakeDeckLink ownLink;
        Lazy<FrmSave> ownSave{[&] { return std::make_unique<FrmSave>(ownShell); }};
        FrmDeckBuild own(ownShell, ownSave, ownLink);
        for (int land = 0; land < 40; ++land) {
            own.cmdLand_Click(0);
        }
        own.cmdSave_Click();
        ownSave->txtSaveName->setText(name);
        ownShell.script.expect(u"Error writing to file. Must quit. :("_s);
        ownSave->cmdOK->click();
        EXPECT_EQ(ownShell.script.last().title, u"Error"_s);
        EXPECT_TRUE(ownShell.ended()) << name.toStdString();
        EXPECT_TRUE(ownLink.sent.empty());
        EXPECT_EQ(own.lstDeck->count(), 40);
    }
    EXPECT_EQ(bytesOf(path(u"file"_s)), "whole");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList({u"file"_s, u"folder.dec"_s}));
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
    FrmSave& dialog = save();
    dialog.show();
    static const QRegularExpression name(u"\\Adraft-\\d{8}-\\d{4}\\.dec\\z"_s);
    EXPECT_TRUE(name.match(dialog.txtSaveName->text()).hasMatch());
    EXPECT_EQ(dialog.dlbDir->path(), folder.path());
    EXPECT_EQ(dialog.flbFile->texts(), QStringList{u"a.dec"_s});
    const QString typed = dialog.txtSaveName->text();
    dialog.flbFile->setFocus();
    EXPECT_EQ(dialog.txtSaveName->text(), typed) << "the focus alone chooses nothing";
    QTest::mouseClick(dialog.flbFile->viewport(), Qt::LeftButton, {},
                      dialog.flbFile->visualItemRect(dialog.flbFile->item(0)).center());
    EXPECT_EQ(dialog.txtSaveName->text(), u"a.dec"_s);

    QTest::keyClick(dialog.dlbDir, Qt::Key_Down);
    QTest::keyClick(dialog.dlbDir, Qt::Key_Return);
    EXPECT_EQ(dialog.SaveName(), path(u"inner/a.dec"_s));
    EXPECT_EQ(dialog.flbFile->count(), 0);
    const QModelIndex up = dialog.dlbDir->model()->index(dialog.dlbDir->currentRow() - 1, 0);
    QTest::mouseClick(dialog.dlbDir->viewport(), Qt::LeftButton, {},
                      dialog.dlbDir->visualRect(up).center());
    QTest::mouseDClick(dialog.dlbDir->viewport(), Qt::LeftButton, {},
                       dialog.dlbDir->visualRect(up).center());
    EXPECT_EQ(dialog.dlbDir->path(), folder.path());

    dialog.dlbDrive->setCurrentIndex(0);
    dialog.dlbDrive_Change();
    EXPECT_EQ(dialog.dlbDir->path(), QDir::rootPath());
    dialog.dlbDir->setPath(path(u"inner"_s));
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

}  // namespace
}  // namespace packwise
