#include "client/clientworld.h"
#include "support/ring.h"

#include <QSignalSpy>

namespace packwise {
namespace {

TEST(ClientDispatch, KeepsTheRoster) {
    ClientWorld world;
    world.join();
    world.tell("NAME0Ann~NAME3B|b~ADDR0127.0.0.1~ADDR3127.0.0.1~ADDR410.0.0.9~");
    const FrmSecurity& info = world.frmSecurity();
    EXPECT_EQ(info.lstNames->text(3), u"B|b"_s);
    EXPECT_EQ(world.frmMessage->lstNames->text(3), u"B|b"_s);
    EXPECT_EQ(info.lstIP->text(3), world.frmClient->wskClient->remoteHostIp());
    EXPECT_EQ(info.lstIP->text(4), u"10.0.0.9"_s);
    world.tell("CODE3-17~CODE02147483647~DROP3~");
    EXPECT_EQ(info.lstNames->text(3), u" "_s);
    EXPECT_EQ(info.lstIP->text(3), u" "_s);
    EXPECT_EQ(world.frmMessage->lstNames->text(3), u" "_s);
    EXPECT_EQ(info.lstCode->text(3), u"-17"_s);
    EXPECT_EQ(info.lstCode->text(0), u"2147483647"_s);

    // A DROP for a place that held no player changes nothing.
    const auto redSeats = [&] {
        FrmClient& client = world.frmClient();
        for (Shape* seat : client.shaSeat) {
            seat->setFillColor(shade::green);
        }
        world.tell("BOOS~");
        return std::ranges::count(client.shaSeat, shade::red, &Shape::fillColor);
    };
    EXPECT_EQ(redSeats(), 1);
    world.tell("DROP3~DROP3~");
    EXPECT_EQ(redSeats(), 1);
    world.tell("NAME5Eve~");
    EXPECT_EQ(redSeats(), 2);
}

TEST(ClientDispatch, SeatsTheTableAndTakesItsDraftSize) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    const char16_t* names[] = {u"Bob", u"Cid", u"Ann", u""};
    for (std::size_t place = 0; place < 4; ++place) {
        EXPECT_EQ(client.lblNameB[place]->text(), QString::fromUtf16(names[place]));
        EXPECT_EQ(client.lblNameR[place]->text(), QString::fromUtf16(names[place]));
        EXPECT_EQ(client.shaSeat[place]->fillColor(), place < 3 ? shade::red : shade::emptySeat);
        EXPECT_EQ(client.shaSeat[place]->borderColor(), place == 2 ? shade::white : shade::black);
    }
    EXPECT_EQ(world.frmDeckBuild->Packs[2], u"Bells"_s);
    EXPECT_EQ(client.widthTwips(), 5865);
    EXPECT_EQ(client.heightTwips(), 5145);
    EXPECT_TRUE(client.fraBooster->isVisible() && client.lstPicked->isVisible());
    EXPECT_FALSE(client.fraRoch->isVisible());
    EXPECT_NEAR(client.lstPickedNS->height() * 15, 4100, 15);

    EXPECT_TRUE(client.imgCCW->isVisible());
    world.tell("ROUN1~");
    EXPECT_EQ(client.lblRound->text(), u"1"_s);
    EXPECT_TRUE(client.imgCW->isVisible() && !client.imgCCW->isVisible());
    world.tell("ROUN2~");
    EXPECT_TRUE(client.imgCCW->isVisible() && !client.imgCW->isVisible());

    world.tell("BOOSUOne|GTwo|~BSTA0~BSTA2~");
    EXPECT_EQ(client.shaSeat[0]->fillColor(), shade::green);
    EXPECT_EQ(client.shaSeat[1]->fillColor(), shade::red);
    EXPECT_EQ(client.shaSeat[2]->toolTip(), u"Ann (you): has picked"_s);
    EXPECT_EQ(client.shaSeat[1]->toolTip(), u"Cid: has yet to pick"_s);
    world.tell("BOOS~");
    EXPECT_EQ(client.lstPack->count(), 0);
    EXPECT_EQ(client.shaSeat[0]->fillColor(), shade::red);

    EXPECT_FALSE(world.frmDeckBuild->chkSnow->isEnabled());
    world.frmClient->move(100, 60);
    world.tell("SNOW~OVER~");
    EXPECT_TRUE(world.frmDeckBuild->chkSnow->isEnabled());
    EXPECT_TRUE(world.frmDeckBuild.isVisible() && world.frmSecurity.isVisible());
    EXPECT_EQ(world.frmDeckBuild->pos(), client.pos());
    EXPECT_FALSE(client.isVisible());
    EXPECT_EQ(client.wskClient->state(), Socket::Connected);
}

TEST(ClientDispatch, RunsBothRingsClockwise) {
    ClientWorld world;
    const FrmClient& client = world.frmClient();
    expectClockwise(client.shaSeat);
    expectClockwise(client.lblNameB);
    expectClockwise(client.lblNameR);
    expectClockwise(client.txtLastPick);
}

TEST(ClientDispatch, CallsAPlayerWhoLooksElsewhere) {
    ClientWorld world;
    world.start("R05");
    const QSignalSpy called(&world.frmClient(), &FrmClient::playerCalled);
    const std::pair<const char*, int> cases[] = {{"BOOSUOne|~", 1}, {"TURN1~", 0}, {"TURN3~", 1}};
    for (const auto& [message, calls] : cases) {
        world.frmClient->Form_GotFocus();
        const auto before = called.size();
        world.tell(message);
        EXPECT_EQ(called.size(), before) << message;
        world.frmClient->Form_LostFocus();
        world.tell(message);
        EXPECT_EQ(called.size() - before, calls) << message;
    }
}

}  // namespace
}  // namespace packwise
