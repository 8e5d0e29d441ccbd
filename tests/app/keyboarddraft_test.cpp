// A draft of two from the start windows to saved decks with nothing but keys. The one thing that is
// not a key is the change to another window, which is the desktop's.
#include "app/draftparty.h"
#include "client/cardlist.h"
#include "deck/dirlistbox.h"
#include "engine/deckfile.h"
#include "engine/picktext.h"
#include "platform/codepage.h"
#include "support/keys.h"

namespace packwise {
namespace {

constexpr int kPicks = 15;  // three packs of five

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWindow* window = QGuiApplication::focusWindow();
    ASSERT_TRUE(window);
    QTest::keyClick(window, key, modifiers);
}

void type(const QString& text) {
    for (const QChar letter : text) {
        QWindow* window = QGuiApplication::focusWindow();
        ASSERT_TRUE(window);
        QTest::keyClick(window, letter.toLatin1());
    }
}

// Types over what stands in the control with the focus.
void retype(const QString& text) {
    press(Qt::Key_A, Qt::ControlModifier);
    type(text);
}

// Goes to a control of the active window with the Tab key.
void tabTo(const QWidget* control) {
    for (int step = 0; step < 50 && QApplication::focusWidget() != control; ++step) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(QApplication::focusWidget(), control)
        << control->objectName().toStdString() << " cannot be reached with Tab";
}

void switchTo(Form& window) {
    // Windows that have just come may still ask for the focus.
    ASSERT_TRUE(spinUntil([&] {
        if (!window.isActiveWindow()) {
            window.activateWindow();
        }
        return window.isActiveWindow() && QGuiApplication::focusWindow() == window.windowHandle();
    }));
}

void host(PlayerProgram& player, quint16 port, const QString& set) {
    player.program.settings().write(u"Sets"_s, u"1"_s, u"Some Other Set"_s);
    player.program.settings().write(u"Sets"_s, u"2"_s, set);
    player.program.start();
    switchTo(player.program.frmMain());
    press(Qt::Key_S, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return player.program.isVisible(FormId::Server); }));
    FrmServer& console = player.program.frmServer();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console));
    for (int pack = 0; pack < 3; ++pack) {
        QComboBox* choice = console.cboPack.at(static_cast<std::size_t>(pack));
        tabTo(choice);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        EXPECT_EQ(choice->currentText(), set);
    }
    tabTo(console.txtPort);
    retype(QString::number(port));
    tabTo(console.txtName);
    retype(player.name);
    press(Qt::Key_L, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return console.lstNames->text(0) == player.name; }));
}

void join(PlayerProgram& player, quint16 port) {
    player.program.start();
    switchTo(player.program.frmMain());
    press(Qt::Key_C, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return player.program.isVisible(FormId::Connect); }));
    FrmConnect& dialog = player.program.frmConnect();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    ASSERT_EQ(QApplication::focusWidget(), dialog.txtName);
    type(player.name);
    press(Qt::Key_Tab);
    retype(u"127.0.0.1"_s);
    press(Qt::Key_Tab);
    retype(QString::number(port));
    press(Qt::Key_C, Qt::AltModifier);
}

// Goes down a row and takes the card, by Enter or by the button's letter.
void pick(PlayerProgram& player, bool byEnter) {
    FrmClient& client = player.client();
    switchTo(client);
    tabTo(client.lstPack);
    press(Qt::Key_Down);
    const QString card = client.lstPack->text(client.lstPack->selectedRow());
    ASSERT_FALSE(card.isEmpty());
    const int picked = client.lstPickedNS->count();
    byEnter ? press(Qt::Key_Return) : press(Qt::Key_D, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return client.lstPickedNS->count() == picked + 1; }));
    EXPECT_EQ(client.lstPickedNS->text(0), card);
}

void buildDeck(FrmDeckBuild& builder) {
    switchTo(builder);
    tabTo(builder.lstSB);
    press(Qt::Key_A, Qt::ControlModifier);
    tabTo(builder.cmdAdd);
    press(Qt::Key_Space);
    EXPECT_EQ(builder.lblDeckCount->text(), QString::number(kPicks));
    press(Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(spinUntil([&] { return builder.lstDeck->texts().contains(u"Plains"_s); }));
    tabTo(builder.cmdLand[2]);
    holdKey(builder, Qt::Key_Return);
    EXPECT_EQ(builder.lblDeckCount->text().toInt(), kPicks + 2) << "one land for one press";
    while (builder.lblDeckCount->text().toInt() < 40) {
        press(Qt::Key_Space);
        ASSERT_EQ(builder.lstDeck->texts().last(), u"Forest"_s);
    }
}

// Saves into the folder "decks" in the current directory.
void saveDeck(PlayerProgram& player, const QString& file) {
    press(Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return player.program.isVisible(FormId::Save); }));
    FrmSave& save = player.program.frmSave();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&save));
    ASSERT_EQ(QApplication::focusWidget(), save.txtSaveName);
    retype(file);
    if (QDir(save.dlbDir->path()).dirName() != u"decks"_s) {
        tabTo(save.dlbDir);
        do {
            press(Qt::Key_Down);
        } while (save.dlbDir->text(save.dlbDir->currentRow()).trimmed() != u"decks"_s &&
                 save.dlbDir->currentRow() + 1 < save.dlbDir->count());
        press(Qt::Key_Return);
    }
    tabTo(save.chkPicks);
    press(Qt::Key_Space);
    press(Qt::Key_O, Qt::AltModifier);
    ASSERT_TRUE(spinUntil([&] { return !player.program.isVisible(FormId::DeckBuild); }));
    const QString told = player.program.frmMessage->lstMessage->texts().join(QString());
    EXPECT_TRUE(told.contains(u"* Your deck is saved as "_s) && told.endsWith(file + u'.'));
}

TEST(KeyboardDraft, TwoPlayFromTheStartWindowToSavedDecks) {
    const CardFolder cards(1, 1, 3);
    ASSERT_TRUE(QDir().mkdir(u"decks"_s));
    const quint16 port = freePort();
    std::array<PlayerProgram, 2> players{PlayerProgram(0), PlayerProgram(1)};
    ASSERT_NO_FATAL_FAILURE(host(players[0], port, cards.setNames().first()));
    FrmServer& console = players[0].program.frmServer();
    ASSERT_NO_FATAL_FAILURE(join(players[1], port));
    ASSERT_TRUE(spinUntil([&] { return console.lstNames->text(1) == players[1].name; }));
    switchTo(console);
    ASSERT_EQ(QApplication::focusWidget(), console.cmdStart);
    ASSERT_TRUE(spinUntil([&] {
        press(Qt::Key_Return);  // counts for nothing so soon after the one that opened the port
        return console.server().state() == DraftServer::State::Drafting;
    }));

    for (int turn = 0; turn < kPicks; ++turn) {
        for (PlayerProgram& player : players) {
            ASSERT_TRUE(spinUntil([&] { return player.mayPick(); }));
            ASSERT_NO_FATAL_FAILURE(pick(player, turn % 5 != 0));
        }
    }
    for (PlayerProgram& player : players) {
        ASSERT_TRUE(spinUntil([&] { return player.program.isVisible(FormId::DeckBuild); }));
        ASSERT_NO_FATAL_FAILURE(buildDeck(player.program.frmDeckBuild()));
        ASSERT_NO_FATAL_FAILURE(saveDeck(player, player.name.right(1) + u".dec"_s));
    }
    for (int seat = 0; seat < 2; ++seat) {
        QFile file(u"decks/%1.dec"_s.arg(seat));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString code = QString::number(codeOfDeckFile(file.readAll().toStdString()).value());
        for (PlayerProgram& player : players) {
            EXPECT_TRUE(
                spinUntil([&] { return player.program.frmSecurity->lstCode->text(seat) == code; }));
        }
        PickTextFault fault;
        const std::optional<PickLog> log =
            readPicks(bytesOf(u"decks/%1.picks.txt"_s.arg(seat)).toStdString(), fault);
        ASSERT_TRUE(log) << fault.what;
        QStringList taken;
        for (const SeenPack& seen : log->packs) {
            taken.prepend(fromBytes(seen.cards.at(static_cast<std::size_t>(seen.taken))));
        }
        EXPECT_EQ(taken, players.at(static_cast<std::size_t>(seat)).client().lstPickedNS->texts());
    }
}

}  // namespace
}  // namespace packwise
