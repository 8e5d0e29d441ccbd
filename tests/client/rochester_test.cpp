#include "client/clientworld.h"
#include "platform/settings.h"

namespace packwise {
namespace {

std::string enabledNames(const FrmClient& client) {
    std::string names;
    for (const QLabel* label : client.lblNameR) {
        names += label->isEnabled() ? 'x' : '.';
    }
    return names;
}

struct Clock {
    QString text;
    bool running;
    bool visible;
    bool operator==(const Clock&) const = default;
};

Clock clockOf(const FrmClient& client) {
    return {client.lblTick->text(), client.lblTick->isEnabled(), client.lblTick->isVisible()};
}

// Ticks until the client writes something; gives the number of ticks.
int ticksUntil(ClientWorld& world, void (FrmClient::*tick)(), QTimer* clock) {
    int ticks = 0;
    while (clock->isActive() && ticks < 100) {
        (world.frmClient().*tick)();
        ++ticks;
    }
    return ticks;
}

TEST(ClientRochester, ReviewsByItsOwnClock) {
    struct Case {
        const char* info;
        int ticks;
        const char16_t* history;
        Clock before, during, after;
    };
    const Clock off{u":00"_s, false, true};
    const Clock hidden{u":00"_s, false, false};
    const Clock five{u":05"_s, true, true};
    const char16_t* const longer = u"20 seconds for pack review...";
    const char16_t* const shorter = u"5 seconds for pack review (untimed draft)";
    const Case cases[] = {{"R19", 21, longer, off, {u":20"_s, true, true}, off},
                          {"R030", 6, shorter, hidden, five, hidden},
                          {"R", 6, shorter, hidden, five, hidden}};
    for (const Case& c : cases) {
        ClientWorld world;
        setting::clientPlace.write(world.shell.settings(), u"10500 10500"_s);
        world.start(c.info);
        FrmClient& client = world.frmClient();
        EXPECT_EQ(client.heightTwips(), 7200);
        EXPECT_TRUE(client.screen()->availableGeometry().contains(client.frameGeometry()));
        EXPECT_TRUE(client.fraRoch->isVisible() && client.lstPicked->isHidden());
        EXPECT_FALSE(client.fraBooster->isVisible());
        EXPECT_TRUE(clockOf(client) == c.before) << c.info;
        world.tell("ROUN1:1~BOOSUOne|GTwo|~");
        EXPECT_FALSE(client.cmdDraft->isEnabled());
        world.tell("REVW~");
        EXPECT_TRUE(clockOf(client) == c.during) << c.info;
        EXPECT_EQ(client.lstHistory->texts(), (QStringList{u" "_s, QString::fromUtf16(c.history)}));
        EXPECT_EQ(client.lstPack->textColor(), shade::grey);
        EXPECT_EQ(ticksUntil(world, &FrmClient::tmrReview_Timer, client.tmrReview), c.ticks);
        EXPECT_TRUE(world.server.hears("RROK~"));
        EXPECT_TRUE(clockOf(client) == c.after) << c.info;
        EXPECT_EQ(enabledNames(client), "........");
        world.tell("RSTA1~");
        EXPECT_EQ(enabledNames(client), ".x......");
        EXPECT_EQ(client.lblNameR[1]->accessibleDescription(), u"has finished the review"_s);
        EXPECT_EQ(client.lblNameR[0]->accessibleDescription(), u"waiting"_s);
    }
}

TEST(ClientRochester, PicksOnItsTurnAndStrikesOnTheEcho) {
    ClientWorld world;
    world.start("R19");
    FrmClient& client = world.frmClient();
    world.tell("BOOSUOne|GTwo|RThree|~TURN1~");
    EXPECT_EQ(enabledNames(client), "x.......");
    EXPECT_FALSE(client.cmdDraft->isEnabled());
    EXPECT_FALSE(client.tmrRoch->isActive());
    world.tell("RPCK01~");
    EXPECT_EQ(client.lstPack->texts(), (QStringList{u"One"_s, u"Three"_s}));
    EXPECT_EQ(client.txtLastPick[0]->text(), u"Two"_s);
    EXPECT_EQ(client.shaDot[1]->fillColor(), shade::red);
    EXPECT_FALSE(client.shaDot[2]->isFilled());

    world.tell("TURN3~");
    EXPECT_EQ(enabledNames(client), "..x.....");
    EXPECT_TRUE(client.cmdDraft->isEnabled() && client.tmrRoch->isActive());
    EXPECT_TRUE(clockOf(client) == (Clock{u":09"_s, true, true}));
    for (int second = 0; second < 9; ++second) {
        client.tmrRoch_Timer();
    }
    EXPECT_EQ(client.lblTick->text(), u":00"_s);
    world.frmCard->show();
    client.lstPack->setCurrentRow(1);
    client.cmdDraft->click();  // in the last second: the player's own
    EXPECT_TRUE(world.server.hears("CARDRThree~RPCK1~"));
    EXPECT_FALSE(client.tmrRoch->isActive());
    EXPECT_FALSE(world.frmCard.isVisible());
    EXPECT_EQ(client.lstPack->count(), 2);  // until the echo
    EXPECT_EQ(client.lstPack->textColor(), shade::grey);
    world.tell("RPCK21~TURN3~");
    EXPECT_EQ(client.lstHistory->texts(),
              (QStringList{u"Bob picked Two"_s, u"Ann picked Three"_s}));
    EXPECT_EQ(client.lstPack->textColor(), shade::black);
    EXPECT_EQ(client.lblTick->text(), u":09"_s);
}

TEST(ClientRochester, TakesARandomCardWhenTheTimeIsUp) {
    ClientWorld world;
    world.start("R130");
    FrmClient& client = world.frmClient();
    world.tell("BOOSUOne|GTwo|RThree|~TURN3~");
    client.lstPack->setCurrentRow(0);
    world.nextDraw = 0.99;
    EXPECT_EQ(ticksUntil(world, &FrmClient::tmrRoch_Timer, client.tmrRoch), 31);
    EXPECT_TRUE(world.server.hears("CARDRThree~RAND~RPCK2~"));
    EXPECT_TRUE(clockOf(client) == (Clock{u":00"_s, false, true}));
    world.tell("RPCK22!~");
    EXPECT_EQ(client.lstHistory->text(1), u"Ann goofgrabbed Three"_s);
    EXPECT_EQ(world.frmDeckBuild->lblSBCount->text(), u"1"_s);
}

TEST(ClientRochester, ShowsThePicksInThePause) {
    for (const bool sorted : {true, false}) {
        ClientWorld world;
        world.start("R0");
        FrmClient& client = world.frmClient();
        world.tell("BOOSUOne|~TURN3~");
        EXPECT_FALSE(client.tmrRoch->isActive());
        if (!sorted) {
            client.chkSort->click();
            client.lstPickedNS->hide();
        }
        client.lstPack->setCurrentRow(0);
        QTest::keyClick(client.lstPack, Qt::Key_Return);
        EXPECT_TRUE(world.server.hears("CARDUOne~RPCK0~"));
        world.tell("RPCK20~RPAU~");
        EXPECT_EQ(client.lstHistory->text(1), u"Pack finished. Review drafted cards..."_s);
        EXPECT_TRUE(client.cmdOK->isVisible() && client.lstPicked->isVisible() &&
                    client.lstPickedNS->isVisible());
        const QPoint place = client.lstPicked->geometry().center();
        const QWidget* top = client.lstPicked->parentWidget()->childAt(place)->parentWidget();
        EXPECT_EQ(top, sorted ? client.lstPicked : client.lstPickedNS);
        world.frmCard->show();
        QTest::mouseClick(client.cmdOK, Qt::LeftButton);
        EXPECT_TRUE(world.server.hears("RPOK~"));
        EXPECT_TRUE(client.cmdOK->isHidden() && client.lstPicked->isHidden() &&
                    client.lstPickedNS->isHidden());
        EXPECT_FALSE(world.frmCard.isVisible());
    }
}

}  // namespace
}  // namespace packwise
