#include "client/clientworld.h"
#include "platform/settings.h"

#include <QAccessible>

#include <random>

namespace packwise {
namespace {

constexpr const char* kLetters = "BUGRWAML";
constexpr QRgb kDotColors[] = {0x000000, 0x0000FF, 0x00FF00, 0xFF0000,
                               0xFFFFFF, 0xAA6C00, 0xFFFF00, 0xD0C0C0};

// What a screen reader does with a check box.
void toggle(QCheckBox* box) {
    QAccessible::queryAccessibleInterface(box)->actionInterface()->doAction(
        QAccessibleActionInterface::toggleAction());
}

void pressBar(FrmClient& client, int color, Qt::MouseButton button = Qt::LeftButton) {
    client.fraColors_MouseDown(button, color * 240 + 100, 60);
}

// Gives the client a pack of one card and lets it take it.
void takeCard(ClientWorld& world, const std::string& token) {
    world.tell("BOOS" + token + "|~");
    world.frmClient->lstPack->setCurrentRow(0);
    world.frmClient->cmdDraft->click();
    ASSERT_TRUE(world.server.hears("CARD" + token + "~BPCK~"));
}

TEST(ClientPicks, HandsBackWhatIsLeftOfABoosterPack) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    world.tell("BOOSUFirst|BSecond|?Odd|~");
    EXPECT_EQ(client.lstPack->textColor(), shade::black);
    EXPECT_EQ(client.shaDot[2]->toolTip(), u"Unknown colour"_s);
    client.cmdDraft->click();  // nothing is chosen
    EXPECT_TRUE(client.cmdDraft->isEnabled());

    doubleClickRow(client.lstPack, 1);
    EXPECT_TRUE(world.server.hears("CARDBSecond~BPCKUFirst|?Odd|~"));
    EXPECT_EQ(client.lstPack->texts(), (QStringList{u"First"_s, u"Odd"_s}));
    EXPECT_EQ(client.lstPack->textColor(), shade::grey);
    EXPECT_FALSE(client.cmdDraft->isEnabled());
    // An unknown letter has the dot of the card before it.
    EXPECT_EQ(client.shaDot[1]->fillColor(), shade::black);
    EXPECT_FALSE(client.shaDot[2]->isFilled());
    EXPECT_FALSE(client.shaDot[2]->hasBorder());
    EXPECT_EQ(world.frmDeckBuild->lblSBCount->text(), u"1"_s);

    doubleClickRow(client.lstPack, 0);  // not this client's pick
    EXPECT_EQ(world.server.rest(), "");
    world.tell("BOOS?Odd|~");
    doubleClickRow(client.lstPack, 0);
    EXPECT_TRUE(world.server.hears("CARD?Odd~BPCK~"));
    EXPECT_EQ(client.lstPicked->texts(),
              (QStringList{u"---BLACK---"_s, u"Second"_s, u"Odd"_s, u" "_s}));
    world.tell("OVER~");
    EXPECT_EQ(world.frmDeckBuild->lstSB->texts(),
              (QStringList{u"---BLACK---"_s, u"Second"_s, u"Odd"_s, u" "_s, u" "_s}));
}

TEST(ClientPicks, KeepsWhatItSawOfEachPack) {
    ClientWorld booster;
    booster.start("B");
    booster.tell("BOOSUEarly|~ROUN1~BOOSUFirst|BSecond|UFirst|~");
    doubleClickRow(booster.frmClient->lstPack, 2);
    EXPECT_TRUE(booster.server.hears("CARDUFirst~BPCKUFirst|BSecond|~"));
    takeCard(booster, "GLim-D\xFBl");
    booster.tell("ROUN3~BOOS~BOOSRRat|~BPCK~RPCK00~OVER~");
    PickLog log = booster.frmClient->pickLog();
    EXPECT_EQ(log.players, (std::vector<std::string>{"Bob", "Cid", "Ann"}));
    EXPECT_EQ(log.self, 2);
    const QDateTime begun = QDateTime::fromString(QString::fromStdString(log.time), Qt::ISODate);
    EXPECT_EQ(begun.toString(u"yyyyMMddHHmm"_s).toStdString(), log.event);
    EXPECT_TRUE(begun.isValid()) << log.time;
    const std::vector<SeenPack> passed = {{1, 1, "Fens", "", {"First", "Second", "First"}, 0},
                                          {1, 2, "Fens", "", {"Lim-D\xFBl"}, 0},
                                          {2, 1, "Bells", "", {"Rat"}, -1}};
    EXPECT_EQ(log.packs, passed);

    // The server's word counts, not what the player clicked.
    ClientWorld rochester;
    rochester.start("R");
    rochester.tell("ROUN1:1~BOOSUOne|GTwo|RThree|~REVW~TURN3~");
    doubleClickRow(rochester.frmClient->lstPack, 0);
    EXPECT_TRUE(rochester.server.hears("CARDUOne~RPCK0~"));
    rochester.tell("RPCK21!~RPCK72~RPCK71~RPCK00~RPCK00~RPAU~ROUN2:1~BOOSWTop|~RPCK10~");
    const std::vector<SeenPack> turns = {{1, 1, "Fens", "Ann", {"One", "Two", "Three"}, 1},
                                         {1, 2, "Fens", "?", {"One", "Three"}, 1},
                                         {1, 3, "Fens", "Bob", {"One"}, 0},
                                         {2, 1, "Fens", "Cid", {"Top"}, 0}};
    EXPECT_EQ(rochester.frmClient->pickLog().packs, turns);

    // However long a server goes on, what is kept is what a draft can hold.
    rochester.tell("INFOB~BOOSWTop|~INFOR~RPCK00~");
    EXPECT_EQ(rochester.frmClient->pickLog().packs.size(), turns.size() + 1);
    const std::pair<ClientWorld*, const char*> floods[] = {{&booster, "INFOR~BOOSWTop|~RPCK00~"},
                                                           {&rochester, "INFOB~BOOSWTop|~"},
                                                           {&rochester, "ROUN1~BOOSWTop|~"}};
    for (const auto& [world, flood] : floods) {
        std::string messages;
        for (std::size_t turn = 0; turn <= kMostTurns; ++turn) {
            messages += flood;
        }
        world->tell(messages);
        log = world->frmClient->pickLog();
        PickTextFault fault;
        EXPECT_EQ(readPicks(writePicks(log), fault), log) << flood << fault.line << fault.what;
    }
}

TEST(ClientPicks, SpoilsNoPickWithTheRightButtonOrAHeldKey) {
    ClientWorld world;
    world.start("B");
    CardList& list = *world.frmClient->lstPack;
    world.tell("BOOSUFirst|BSecond|~");
    doubleClickRow(&list, 0, Qt::RightButton);
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent held(type, Qt::Key_Return, Qt::NoModifier);
        held.setTimestamp(2501);
        QCoreApplication::sendEvent(&list, &held);
    }
    // The first press of a double click on the last pack, the second on the next.
    clickRow(&list, 0);
    world.tell("BOOSGNew|~");
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, middleOf(&list, 0));
    EXPECT_EQ(world.server.rest(), "");
}

TEST(ClientPicks, FilesInOrderWhateverTheBarsShow) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    takeCard(world, "RRat");
    takeCard(world, "UUrn");
    takeCard(world, "RRug");
    EXPECT_EQ(client.lstPicked->texts(), (QStringList{u"---BLUE---"_s, u"Urn"_s, u" "_s,
                                                      u"---RED---"_s, u"Rat"_s, u"Rug"_s, u" "_s}));
    EXPECT_EQ(client.lstPickedNS->texts(), (QStringList{u"Rug"_s, u"Urn"_s, u"Rat"_s}));

    std::minstd_rand random(7);
    const auto upTo = [&](int most) { return static_cast<int>(random() % (most + 1U)); };
    for (int pick = 0; pick < 60; ++pick) {
        const auto color = static_cast<std::size_t>(upTo(7));
        takeCard(world, kLetters[color] + std::string("Card ") + std::to_string(pick));
        const QStringList filed = client.lstPicked->texts();
        pressBar(client, static_cast<int>(color));
        pressBar(client, static_cast<int>(color));
        ASSERT_EQ(client.lstPicked->texts(), filed) << pick;
        const bool shown = client.shaBar[color]->borderColor() == shade::white;
        ASSERT_EQ(filed.contains(u"Card %1"_s.arg(pick)), shown);
        pressBar(client, upTo(7), upTo(3) == 0 ? Qt::RightButton : Qt::LeftButton);
    }
    EXPECT_EQ(client.lstPickedNS->count(), 63);
    world.tell("OVER~");
    const QStringList sideboard = world.frmDeckBuild->lstSB->texts();
    for (const QString& name : client.lstPickedNS->texts()) {
        EXPECT_TRUE(sideboard.contains(name));
    }
    EXPECT_EQ(world.frmDeckBuild->lblSBCount->text(), u"63"_s);
}

TEST(ClientPicks, SwitchesColoursByTheirBars) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    takeCard(world, "BBat");
    takeCard(world, "LLake");
    const QStringList bat{u"---BLACK---"_s, u"Bat"_s, u" "_s};
    const QStringList lake{u"---LAND---"_s, u"Lake"_s, u" "_s};
    struct Press {
        Qt::MouseButton button;
        int x, y;
        QStringList rows;
    };
    const Press presses[] = {
        {Qt::LeftButton, 100, 121, bat + lake},  // the lowest strip
        {Qt::LeftButton, 1920, 60, bat + lake},  // beside the last bar
        {Qt::LeftButton, -1, 60, bat + lake},
        {Qt::RightButton, 240, 60, bat + lake},  // no blue cards
        {Qt::LeftButton, 239, 120, lake},
        {Qt::RightButton, 0, 0, bat},
        {Qt::LeftButton, 1919, 0, bat + lake},
        {Qt::RightButton, 1680, 60, lake},
        {Qt::LeftButton, 1680, 60, {}},
        {Qt::RightButton, 1680, 60, lake},
    };
    for (const Press& press : presses) {
        client.fraColors_MouseDown(press.button, press.x, press.y);
        EXPECT_EQ(client.lstPicked->texts(), press.rows) << press.x << ' ' << press.y;
    }
    EXPECT_TRUE(client.fraColors->accessibleDescription().contains(u"Hidden: Black"_s));
    QTest::mouseClick(client.fraColors, Qt::LeftButton, {}, {3, 4});
    EXPECT_EQ(client.lstPicked->texts(), bat + lake);

    toggle(client.chkSort);
    EXPECT_TRUE(client.lstPicked->isHidden() && client.fraColors->isHidden());
    EXPECT_TRUE(client.lstPickedNS->isVisible());
    QTest::mouseClick(client.chkSort, Qt::LeftButton);
    EXPECT_TRUE(client.lstPicked->isVisible() && client.fraColors->isVisible());
    EXPECT_TRUE(client.lstPickedNS->isHidden());
}

TEST(ClientPicks, ShowsCardsBesideTheWindowWhileInfoIsChecked) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    takeCard(world, "UUrn");
    world.tell("BOOSGNewt|~");
    clickRow(client.lstPack, 0);
    EXPECT_EQ(world.frmCard->lblName->text(), u"Newt"_s);
    EXPECT_EQ(world.frmCard->pos(), client.pos() + QPoint((5865 + 240) / 15, 0));
    world.frmCard->hide();
    // Where it would cover the window it goes to the other side.
    client.move(400, 40);
    clickRow(client.lstPack, 0);
    EXPECT_TRUE(world.frmCard.isVisible());
    EXPECT_LT(world.frmCard->geometry().right(), client.x());
    EXPECT_EQ(world.frmCard->y(), client.y());
    world.frmCard->hide();
    clickRow(client.lstPicked, 0);  // a heading
    clickRow(client.lstPicked, 2);  // a blank row
    EXPECT_FALSE(world.frmCard.isVisible());
    clickRow(client.lstPicked, 1);
    EXPECT_EQ(world.frmCard->lblName->text(), u"Urn"_s);
    EXPECT_TRUE(world.frmCard.isVisible());

    EXPECT_TRUE(world.shell.settings().readAll(u"Client"_s).isEmpty());
    toggle(client.chkInfo);
    EXPECT_FALSE(world.frmCard.isVisible());
    EXPECT_EQ(setting::showInfo.read(world.shell.settings()), u"0"_s);
    clickRow(client.lstPack, 0);
    clickRow(client.lstPicked, 1);
    EXPECT_FALSE(world.frmCard.isVisible());
}

TEST(ClientPicks, KeepsEveryRowOfAFullPackBesideItsDot) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    std::string cards;
    for (int card = 0; card < 15; ++card) {
        cards += kLetters[card % 8] + std::string("Card|");
    }
    world.tell("BOOS" + cards + "~");
    const CardList& list = *client.lstPack;
    for (int row = 0; row < 15; ++row) {
        const QRect shown = list.visualItemRect(list.item(row));
        EXPECT_TRUE(list.viewport()->rect().contains(shown.center())) << row;
        EXPECT_LE(shown.bottom(), list.viewport()->height()) << row;
        const int middle = list.viewport()->mapTo(list.parentWidget(), shown.center()).y();
        const Shape& dot = *client.shaDot[static_cast<std::size_t>(row)];
        EXPECT_NEAR(dot.geometry().center().y(), middle, 1) << row;
        EXPECT_EQ(dot.fillColor(), QColor(kDotColors[row % 8])) << row;
        const QColor bar = client.shaBar[static_cast<std::size_t>(row % 8)]->fillColor();
        EXPECT_EQ(bar, row % 8 == 7 ? QColor(192, 192, 208) : dot.fillColor()) << row;
    }
}

}  // namespace
}  // namespace packwise
