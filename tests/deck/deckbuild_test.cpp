#include "deck/deckfixture.h"

namespace packwise {
namespace {

TEST_F(DeckBuilder, LaysOutTheGroupsThatHaveCards) {
    deal({{0, "Night|Night|"}, {7, "Cave|"}});
    EXPECT_EQ(window.lstSB->texts(), QStringList({u"---BLACK---"_s, u"Night"_s, u"Night"_s, u" "_s,
                                                  u"---LAND---"_s, u"Cave"_s, u" "_s, u" "_s}));
    FrmDeckBuild empty(shell, save, link);
    for (int group = 0; group < 8; ++group) {
        std::string list;
        empty.setCards(group, list);
    }
    EXPECT_EQ(empty.lstSB->texts(), QStringList({u" "_s}));
    empty.cmdLand_Click(1);
    empty.lstDeck->setCurrentRow(0);
    empty.cmdTake_Click();
    EXPECT_EQ(empty.lstSB->texts(), QStringList({u"Island"_s, u" "_s}));
}

TEST_F(DeckBuilder, MovesAllSelectedCardsAndNothingElse) {
    deal({{0, "A|B|C|"}, {1, "D|E|"}, {5, "F|"}});
    window.cmdAdd->click();
    EXPECT_EQ(window.lstDeck->count(), 0) << "nothing was selected";
    window.lstSB->selectAll();
    window.lstSB->setCurrentItem(window.lstSB->item(3), QItemSelectionModel::NoUpdate);
    window.cmdAdd->click();
    EXPECT_EQ(window.lstDeck->texts().join(u""_s), u"ABCDEF"_s);
    EXPECT_EQ(window.lstSB->texts(), QStringList({u"---BLACK---"_s, u" "_s, u"---BLUE---"_s, u" "_s,
                                                  u"---ARTIFACT---"_s, u" "_s, u" "_s}));
    EXPECT_EQ(window.lblSBCount->text(), u"0"_s);
    EXPECT_EQ(window.lblDeckCount->text(), u"6"_s);
    EXPECT_GE(window.lstSB->currentRow(), 0) << "the keyboard has lost its place";
    window.cmdAdd->click();
    EXPECT_EQ(window.lstDeck->count(), 6) << "headings and separators stay";

    select(window.lstDeck, {1, 4, 2});
    QTest::keyClick(window.lstDeck, Qt::Key_Return);
    EXPECT_EQ(window.lstDeck->texts().join(u""_s), u"ADF"_s);
    EXPECT_TRUE(window.lstDeck->selectedItems().isEmpty());
    EXPECT_EQ(window.lblSBCount->text(), u"3"_s);
    EXPECT_EQ(window.lblDeckCount->text(), u"3"_s);
    const int row = rowOf(window.lstSB, u"B"_s);
    doubleClickRow(window.lstSB, row, Qt::RightButton);
    EXPECT_EQ(window.lstDeck->count(), 3) << "only the left button moves";
    doubleClickRow(window.lstSB, row);
    EXPECT_EQ(window.lstDeck->texts().join(u""_s), u"ADFB"_s);
}

TEST_F(DeckBuilder, KeysAloneMoveCards) {
    deal({{0, "A|B|C|"}});
    window.cmdSave->setFocus();
    window.lstSB->setFocus(Qt::TabFocusReason);
    QTest::keyClick(window.lstSB, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(window.lstSB, Qt::Key_Return);
    EXPECT_EQ(window.lstDeck->texts().join(u""_s), u"ABC"_s);
    QTest::keyClick(window.lstDeck, Qt::Key_A, Qt::ControlModifier);
    window.cmdTake->click();
    EXPECT_EQ(window.lstDeck->count(), 0);
    window.lstSB->setCurrentRow(0);
    for (const auto key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Space, Qt::Key_Return}) {
        QTest::keyClick(window.lstSB, key);
    }
    EXPECT_EQ(window.lstDeck->texts().join(u""_s), u"AB"_s);
}

TEST_F(DeckBuilder, AReturnedCardEndsItsGroup) {
    struct Case {
        std::map<int, std::string> picks;
        QString card;     // moved to the deck and back, or a land of the buttons
        QString before;   // the line in front of it afterwards
        QString heading;  // of the group that it is then in
    };
    const Case cases[] = {
        {{{0, "A|B|"}, {2, "C|"}}, u"A"_s, u"B"_s, u"---BLACK---"_s},
        {{{0, "A|"}, {2, "C|D|"}, {5, "E|"}}, u"C"_s, u"D"_s, u"---GREEN---"_s},
        {{{0, "A|"}, {5, "E|F|"}}, u"E"_s, u"F"_s, u"---ARTIFACT---"_s},
        {{{1, "A|"}}, u"A"_s, u"---BLUE---"_s, u"---BLUE---"_s},
        {{{0, "Night|"}, {3, "Night Watch|"}}, u"Night"_s, u"Night Watch"_s, u"---RED---"_s},
        {{{0, "A|"}, {7, "Swamp|Cave|"}}, u"Swamp"_s, u"Cave"_s, u"---LAND---"_s},
        {{{0, "A|"}, {7, "Cave|"}}, u"Plains"_s, u"Cave"_s, u"---LAND---"_s},
        {{{1, "A|"}, {4, "B|"}}, u"Snow-Covered Plains"_s, u"A"_s, u"---BLUE---"_s}};
    for (const Case& one : cases) {
        FrmDeckBuild own(shell, save, link);
        for (int group = 0; group < 8; ++group) {
            std::string list = one.picks.contains(group) ? one.picks.at(group) : "";
            own.setCards(group, list);
        }
        if (const int row = rowOf(own.lstSB, one.card); row >= 0) {
            own.lstSB->setCurrentRow(row);
            own.cmdAdd_Click();
        } else {
            own.chkSnow->setChecked(one.card.startsWith(u"Snow"_s));
            own.cmdLand_Click(4);
        }
        ASSERT_EQ(own.lstDeck->texts(), QStringList{one.card}) << qPrintable(one.card);
        own.lstDeck->setCurrentRow(0);
        own.cmdTake_Click();
        const int row = rowOf(own.lstSB, one.card);
        ASSERT_GT(row, 0) << qPrintable(one.card);
        EXPECT_EQ(own.lstSB->text(row - 1), one.before) << qPrintable(one.card);
        EXPECT_EQ(own.lstSB->text(row + 1), u" "_s) << qPrintable(one.card);
        int heading = row;
        while (heading > 0 && !own.lstSB->text(heading).startsWith(u"---"_s)) {
            --heading;
        }
        EXPECT_EQ(own.lstSB->text(heading), one.heading) << qPrintable(one.card);
    }
}

TEST_F(DeckBuilder, SavesFromFortyCardsOn) {
    deal({{0, "A|B|"}});
    addLands(39);
    EXPECT_FALSE(window.cmdSave->isEnabled());
    select(window.lstSB, {1, 2});
    window.cmdAdd->click();
    EXPECT_EQ(window.lblDeckCount->text(), u"41"_s);
    EXPECT_TRUE(window.cmdSave->isEnabled());
    for (const bool enabled : {true, false, false}) {
        select(window.lstDeck, {0});
        window.cmdTake->click();
        EXPECT_EQ(window.cmdSave->isEnabled(), enabled) << window.lstDeck->count();
    }
    addLands(2);
    EXPECT_TRUE(window.cmdSave->isEnabled());
}

TEST_F(DeckBuilder, DrawsTheLineAtAHundredLands) {
    deal({});
    EXPECT_FALSE(window.chkSnow->isEnabled());
    addLands(50);
    select(window.lstDeck, {0, 1, 2});
    window.cmdTake->click();
    window.chkSnow->setEnabled(true);
    window.chkSnow->click();
    addLands(50);
    EXPECT_EQ(window.lstDeck->count(), 97);
    EXPECT_EQ(window.lstDeck->text(0), u"Mountain"_s);
    EXPECT_EQ(window.lstDeck->text(96), u"Snow-Covered Plains"_s);
    EXPECT_TRUE(window.cmdLand[0]->isEnabled());
    shell.script.expect(u"I have to draw the line somewhere! No more land!"_s);
    window.cmdLand[2]->click();
    expectWarning(shell.script.last(), u"Packwise 1.41"_s, BoxButtons::Ok);
    EXPECT_EQ(window.lstDeck->count(), 97);
    for (const QPushButton* button : window.cmdLand) {
        EXPECT_FALSE(button->isEnabled());
    }
}

TEST_F(DeckBuilder, TextButtonsShowTheCurrentCard) {
    deal({{0, "Night|Watch|"}, {7, "Swamp|Snow-Covered Swamp|"}});
    window.setPack(0, "Ice Age");
    window.setPack(2, "Caf\xE9");
    window.setPack(6, "none");
    window.cmdTextSB->click();
    for (const int row : {0, 3, 5}) {  // heading, separator, basic land
        select(window.lstSB, {row});
        window.cmdTextSB->click();
    }
    addLands(5);
    for (int row = 0; row < 5; ++row) {
        select(window.lstDeck, {row});
        window.cmdTextDeck->click();
    }
    EXPECT_EQ(link.shown, QStringList());
    select(window.lstSB, {2, 6, 1});
    window.cmdTextSB->click();
    select(window.lstSB, {6});
    window.cmdTextSB->click();
    window.cmdAdd->click();
    select(window.lstDeck, {5});
    window.cmdTextDeck->click();
    EXPECT_EQ(link.shown,
              QStringList({u"Night"_s, u"Snow-Covered Swamp"_s, u"Snow-Covered Swamp"_s}));
    QTest::keyClick(window.lstDeck, Qt::Key_Escape);
    EXPECT_EQ(link.hidden, 1);
    EXPECT_EQ(link.lastSets, QStringList({u"Ice Age"_s, u""_s, u"Café"_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(link.place,
              std::pair(window.leftTwips() + window.widthTwips() + 240, window.topTwips()));
}

TEST_F(DeckBuilder, AsksBeforeItCloses) {
    struct Case {
        bool answer;
        std::set<FormId> others;
        bool closes, ends;
    };
    const Case cases[] = {{false, {}, false, false},
                          {false, {FormId::Server}, false, false},
                          {true, {FormId::Server}, true, false},
                          {true, {FormId::Security, FormId::Message}, true, false},
                          {true, {FormId::Message}, true, true}};
    for (const Case& one : cases) {
        window.show();
        shell.visible = one.others;
        shell.script.expect(u"Quit without saving?"_s, one.answer);
        EXPECT_EQ(window.closeByUser(), one.closes);
        EXPECT_EQ(window.isVisible(), !one.closes);
        EXPECT_EQ(shell.ended(), one.ends);
        expectWarning(shell.script.last(), u"Packwise 1.41"_s, BoxButtons::YesNo);
        EXPECT_EQ(shell.savedForms, 0);
    }
    EXPECT_TRUE(link.sent.empty());
}

}  // namespace
}  // namespace packwise
