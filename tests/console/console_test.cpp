#include "console/consoleworld.h"
#include "support/keys.h"

#include <QGroupBox>

namespace packwise {
namespace {

TEST(Console, TakesWhatFitsTheWire) {
    ConsoleWorld world;
    world.shell.settings().write(u"Sets"_s, u"3"_s, u"\u03A9mega"_s);  // not in the code page
    FrmServer& console = world.console();
    EXPECT_EQ(console.cboPack[5]->count(), 2);
    console.txtPort->setText(u"123456"_s);
    console.txtName->setText(u"Wilhelmina Longname"_s);
    EXPECT_EQ(console.txtPort->text(), u"1234"_s);
    EXPECT_EQ(console.txtName->text(), u"Wilhelmina L"_s);
}

TEST(Console, ASetWithoutItsFileIsGreyUntilTheFileIsThere) {
    ConsoleWorld world;
    world.shell.settings().write(u"Sets"_s, u"3"_s, u"R & D"_s);
    FrmServer& console = world.console();
    QComboBox& box = *console.cboPack[4];
    const auto isGrey = [&box](int row) {
        return box.itemData(row, Qt::ForegroundRole).isValid() &&
               !box.itemData(row, Qt::ToolTipRole).toString().isEmpty();
    };
    EXPECT_EQ(box.placeholderText(), u"choose a set"_s);
    EXPECT_EQ(box.currentText(), QString());
    EXPECT_FALSE(isGrey(0));
    EXPECT_TRUE(isGrey(2));
    EXPECT_EQ(box.itemData(2, Qt::AccessibleDescriptionRole).toString(),
              u"There is no card file R&D.pw in the folder "_s +
                  QDir::toNativeSeparators(QDir::currentPath()));
    EXPECT_TRUE(box.itemData(2, Qt::ToolTipRole).toString().contains(u"R&amp;D.pw"_s));
    box.setCurrentIndex(2);
    EXPECT_EQ(box.toolTip(), box.itemData(2, Qt::ToolTipRole).toString());

    console.optPack[5]->click();
    console.show();
    const QImage grey = box.grab().toImage();
    world.folder.write("R&D.pw", sample::wholeSet());
    box.showPopup();
    EXPECT_FALSE(isGrey(2));
    EXPECT_EQ(box.toolTip(), QString());
    box.hidePopup();
    EXPECT_NE(box.grab().toImage(), grey);
    remove(world.folder.path() / "Sample.pw");
    QWidget other;
    for (QWidget* window : {&other, static_cast<QWidget*>(&console)}) {
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    EXPECT_TRUE(isGrey(0));
}

TEST(Console, StoredChoicesComeBack) {
    ConsoleWorld world;
    const std::pair<const char16_t*, const char16_t*> stored[] = {
        {u"Port", u"7001"},   {u"DraftType", u"R"}, {u"Timed", u"0"},     {u"Time", u"0"},
        {u"FixSeats", u"1"},  {u"Silence", u"1"},   {u"Halt", u"1"},      {u"Reality", u"1"},
        {u"RunClient", u"0"}, {u"PackCount", u"5"}, {u"Pack1", u"Other"}, {u"Pack2", u"Nowhere"}};
    for (const auto& [key, value] : stored) {
        world.shell.settings().write(u"Server"_s, QString::fromUtf16(key),
                                     QString::fromUtf16(value));
    }
    FrmServer& console = world.console();
    EXPECT_EQ(console.txtPort->text(), u"7001"_s);
    EXPECT_TRUE(console.optRochester->isChecked());
    EXPECT_TRUE(console.vsbSecs->isEnabled());
    EXPECT_FALSE(console.chkTimed->isChecked());
    EXPECT_EQ(console.lblSecs->text(), u"30"_s);
    EXPECT_TRUE(console.chkFixSeats->isChecked() && console.chkSilence->isChecked() &&
                console.chkHalt->isChecked() && console.chkReal->isChecked());
    EXPECT_FALSE(console.txtName->isEnabled());
    EXPECT_TRUE(console.cboPack[4]->isEnabled());
    EXPECT_FALSE(console.cboPack[5]->isEnabled());
    EXPECT_EQ(console.cboPack[0]->currentText(), u"Other"_s);
    EXPECT_EQ(console.cboPack[1]->currentIndex(), -1);
    console.optPack[2]->click();
    EXPECT_TRUE(console.cboPack[2]->isEnabled());
    EXPECT_FALSE(console.cboPack[3]->isEnabled());
    console.chkHalt->click();
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Halt"_s), u"0"_s);
    console.chkSilence->click();
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Silence"_s), u"0"_s);
}

TEST(Console, ChecksNameAndPortBeforeItListens) {
    ConsoleWorld world;
    QTcpServer taken;
    const quint16 port = freePort();
    ASSERT_TRUE(taken.listen(QHostAddress::AnyIPv4, port));
    QTcpServer lowest;
    lowest.listen(QHostAddress::AnyIPv4, 1000);  // taken now, or forbidden
    struct Row {
        QString name;
        QString port;
        QString box;
        QString title;
    };
    const Row rows[] = {
        {u""_s, u"5252"_s, u"Name is blank."_s, u"Packwise 1.41"_s},
        {u"a~b"_s, u"5252"_s, u"Character ~ reserved"_s, u"Error"_s},
        {u"Ann"_s, u"999"_s, u"Use a port greater than 1000"_s, u"Error"_s},
        {u"Ann"_s, u"1000"_s, u"Bad port"_s, u"Error"_s},
        {u"Ann"_s, u"abc"_s, u"Bad port"_s, u"Error"_s},
        {u"Ann"_s, u""_s, u"Bad port"_s, u"Error"_s},
        {u"Ann"_s, QString::number(port), u"Bad port"_s, u"Error"_s},
    };
    FrmServer& console = world.console();
    for (const Row& row : rows) {
        console.txtName->setText(row.name);
        console.txtPort->setText(row.port);
        world.shell.script.expect(row.box);
        console.cmdOpenPort->click();
        const Box& box = world.shell.script.last();
        EXPECT_EQ(box.title, row.title);
        EXPECT_EQ(box.icon, row.title == u"Error" ? BoxIcon::Exclamation : BoxIcon::None);
        EXPECT_EQ(box.buttons, BoxButtons::Ok);
        EXPECT_TRUE(console.cmdOpenPort->isEnabled());
        EXPECT_FALSE(console.cmdStart->isEnabled());
    }
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Port"_s, u"-"_s), u"-"_s);

    taken.close();
    console.show();
    QTest::keyClick(console.txtPort, Qt::Key_Return);  // the window's default button
    EXPECT_EQ(console.wskServer[0]->state(), Socket::Listening);
    EXPECT_EQ(world.localClient.startedName, u"Ann"_s);
    EXPECT_EQ(world.localClient.startedPort, port);
    EXPECT_TRUE(world.security.isVisible());
    EXPECT_EQ(world.shell.settings().read(u"Client"_s, u"Name"_s), u"Ann"_s);
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Port"_s), QString::number(port));
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"RunClient"_s), u"1"_s);
    for (const QWidget* control : std::initializer_list<QWidget*>{
             console.cmdOpenPort, console.txtPort, console.txtName, console.chkClient}) {
        EXPECT_FALSE(control->isEnabled());
    }
    EXPECT_TRUE(console.cmdStart->isEnabled());
    EXPECT_EQ(console.focusWidget(), console.cmdStart);
}

TEST(Console, TheEnterThatOpensThePortDoesNotStartTheDraft) {
    ConsoleWorld world;
    FrmServer& console = world.console();
    console.chkClient->setChecked(false);
    console.txtPort->setText(QString::number(freePort()));
    console.show();
    console.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console));
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(60000);
    console.txtPort->setFocus();
    holdKey(console, Qt::Key_Return);
    EXPECT_EQ(console.wskServer[0]->state(), Socket::Listening);
    EXPECT_EQ(console.focusWidget(), console.cmdStart);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(console.cmdStart, key);  // pressed twice
    }
    EXPECT_TRUE(world.shell.script.seen().empty());
    QApplication::setDoubleClickInterval(0);
    world.shell.script.expect(u"No valid connections"_s);
    holdKey(console, Qt::Key_Return);
    EXPECT_EQ(world.shell.script.seen().size(), 1U);
    EXPECT_EQ(world.shell.script.last().title, u"Packwise 1.41"_s);
    EXPECT_EQ(world.shell.script.last().icon, BoxIcon::Exclamation);
    EXPECT_TRUE(console.server().state() == DraftServer::State::Lobby &&
                console.cmdStart->isEnabled());
    QApplication::setDoubleClickInterval(interval);
}

TEST(Console, TheLetterOfTwoControlsChoosesOneAfterTheOther) {
    ConsoleWorld world;
    FrmServer& console = world.console();
    console.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&console));
    QTest::keyClick(console.windowHandle(), Qt::Key_R, Qt::AltModifier);
    EXPECT_NE(console.optRochester->isChecked(), console.chkReal->isChecked());
    QTest::keyClick(console.windowHandle(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(console.optRochester->isChecked() && console.chkReal->isChecked());
}

TEST(Console, ClosingAsksWhileConnectionsAreOpen) {
    struct Row {
        int connections;
        bool yes;
        std::set<FormId> visible;
        bool stays;  // the close was refused
        bool ended;
        int saved;
    };
    for (const Row& row :
         {Row{0, false, {FormId::Security}, false, true, 1},
          Row{0, false, {FormId::DeckBuild}, false, false, 0},
          Row{1, false, {FormId::Security}, true, false, 0},
          Row{1, true, {FormId::Security}, true, false, 0}, Row{1, true, {}, false, true, 0}}) {
        ConsoleWorld world;
        world.shell.visible = row.visible;
        world.listen();
        std::unique_ptr<Peer> peer;
        if (row.connections > 0) {
            peer = world.connected(1);
            world.shell.script.expect(u"Quit? Some connections are still open."_s, row.yes);
        }
        world.console().show();
        EXPECT_EQ(world.console().closeByUser(), !row.stays);
        for (const Box& box : world.shell.script.seen()) {
            EXPECT_EQ(box.title, u"Packwise 1.41"_s);
            EXPECT_EQ(box.icon, BoxIcon::Exclamation);
            EXPECT_EQ(box.buttons, BoxButtons::YesNo);
        }
        EXPECT_EQ(world.shell.ended(), row.ended);
        EXPECT_EQ(world.shell.savedForms, row.saved);
        EXPECT_EQ(world.console().isVisible(), row.connections > 0 && !row.yes);
        if (peer) {
            EXPECT_EQ(peer->rest(), row.yes ? "CLOS~" : "");
        }
    }
}

TEST(Console, NothingIsClippedAndTheLightsStandBesideTheirRows) {
    ConsoleWorld world;
    FrmServer& console = world.console();
    console.show();
    for (const QAbstractButton* button : console.findChildren<QAbstractButton*>()) {
        // The style would have a button of one word wider than that needs.
        const int text = button->fontMetrics().horizontalAdvance(button->text()) + 10;
        const bool isNarrow = button->parent() == console.reach;
        EXPECT_GE(button->width(), isNarrow ? text : button->sizeHint().width())
            << qPrintable(button->text());
    }
    EXPECT_GE(console.cboPack[0]->width(),
              console.fontMetrics().horizontalAdvance(u"Thirty Letters of a Set's Name"_s) + 40);
    console.lstNames->setText(0, QString(4000, u'W'));
    for (int row = 0; row < kSeats; ++row) {
        const QRect place = console.lstNames->visualItemRect(console.lstNames->item(row));
        EXPECT_TRUE(console.lstNames->viewport()->rect().contains(place)) << row;
        const int middle = console.lstNames->viewport()->mapTo(&console, place.center()).y();
        const QRect light = console.shaLight[static_cast<std::size_t>(row)]->geometry();
        EXPECT_LE(std::abs(light.center().y() - middle), 1) << row;
        EXPECT_LT(light.right(), console.lstNames->x());
    }
}

}  // namespace
}  // namespace packwise
