#include "client/clientworld.h"
#include "common/settings.h"

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(ClientLink, JoinsByteForByteAndAnswers) {
    ClientWorld world;
    setting::clientPlace.write(world.shell.settings(), u"0 -7500"_s);  // nothing of it is in view
    world.join(5);
    FrmClient& client = world.frmClient();
    EXPECT_GE(client.leftTwips(), 0);
    EXPECT_EQ(client.lblStatus->text(), u"Connected as 5"_s);
    EXPECT_EQ(client.shaLight->fillColor(), shade::green);
    EXPECT_EQ(client.widthTwips(), 3450);
    EXPECT_EQ(client.heightTwips(), 975);
    client.tmrMisc_Timer();
    EXPECT_TRUE(world.server.hears("PING~"));
    world.server.say("PING~PONG~TEST~");
    EXPECT_TRUE(world.server.hears("PONG~TEST~"));
    world.tell("STATDraft in progress~MESGAnn has joined~");
    EXPECT_EQ(client.lblStatus->text(), u"Draft in progress"_s);
    EXPECT_TRUE(world.frmMessage.isVisible());
    EXPECT_EQ(world.frmMessage->lstMessage->texts(), QStringList{u"Ann has joined"_s});
}

TEST(ClientLink, ReadsAStreamHoweverItIsCut) {
    const std::string stream = "~~NAME1B\r\no\nb~NA~STATtwo\xE9~ADDR110.0.0.7~";
    ClientWorld world;
    world.join();
    for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
        world.tell("NAME1~ADDR1~STAT~");
        world.server.say(std::string_view(stream).substr(0, cut));
        QCoreApplication::processEvents();
        world.server.say(std::string_view(stream).substr(cut));
        world.tell("");
        EXPECT_EQ(world.frmSecurity->lstNames->text(1), u"Bob"_s) << cut;
        EXPECT_EQ(world.frmSecurity->lstIP->text(1), u"10.0.0.7"_s) << cut;
        EXPECT_EQ(world.frmClient->lblStatus->text(), u"two\u00e9"_s) << cut;
    }
}

TEST(ClientLink, BlinksWithEveryCommandKnownOrNot) {
    ClientWorld world;
    world.join();
    const Shape& light = *world.frmClient->shaLight;
    struct Case {
        const char* messages;
        QColor light;
    };
    // Each is followed by one more message, which makes it blink again.
    const Case cases[] = {{"", shade::darkGreen},
                          {"ABC~~A~", shade::green},
                          {"WHAT~", shade::green},
                          {"helo1~PONG~", shade::darkGreen},
                          {"PONG~HELOx~", shade::green}};
    QColor expected = light.fillColor();
    EXPECT_EQ(expected, shade::green);
    for (const Case& c : cases) {
        world.tell(c.messages);
        EXPECT_EQ(light.fillColor(), c.light) << c.messages;
    }
}

TEST(ClientLink, IsClosedByTheServersWord) {
    ClientWorld world;
    world.join();
    FrmClient& client = world.frmClient();
    world.tell("MESGhello~");
    world.server.say("STATlast~CLOS~MESGgoodbye~HELO1~MESGcut");
    EXPECT_TRUE(world.server.waitClosed());
    EXPECT_EQ(client.wskClient->state(), Socket::Closed);
    EXPECT_EQ(client.lblStatus->text(), u"Connected as 1"_s) << "the arrival is read to its end";
    EXPECT_EQ(client.shaLight->fillColor(), shade::red);
    EXPECT_FALSE(client.tmrMisc->isActive());
    EXPECT_FALSE(world.frmMessage->txtSend->isEnabled());
    EXPECT_EQ(world.frmMessage->lstMessage->texts(), (QStringList{u"hello"_s, u"goodbye"_s}));
    EXPECT_FALSE(world.shell.ended());
}

TEST(ClientLink, IsLostWhenTheServerLeavesOrFloods) {
    struct Case {
        const char* how;
        std::function<void(ClientWorld&)> lose;
    };
    const Case cases[] = {
        {"closes", [](ClientWorld& world) { world.server.close(); }},
        {"floods", [](ClientWorld& world) { world.server.say(std::string(70000, 'x')); }},
    };
    for (const Case& c : cases) {
        ClientWorld world;
        world.join();
        world.tell("MESGhello~NAME0Ann~");
        c.lose(world);
        FrmClient& client = world.frmClient();
        EXPECT_TRUE(QTest::qWaitFor([&] { return client.wskClient->state() == Socket::Closed; }))
            << c.how;
        EXPECT_EQ(client.lblStatus->text(), u"Server disconnect."_s) << c.how;
        EXPECT_EQ(client.shaLight->fillColor(), shade::red) << c.how;
        EXPECT_FALSE(world.frmMessage.isVisible()) << c.how;
        EXPECT_TRUE(client.isVisible()) << c.how;
        EXPECT_FALSE(world.shell.ended()) << c.how;
    }
}

TEST(ClientLink, EndsTheProgramOnASocketError) {
    ClientWorld world;
    const quint16 port = world.listener.serverPort();
    world.listener.close();
    world.shell.script.expect(u"Connection error!"_s);
    world.frmClient->show();
    world.frmClient->wskClient->setRemoteHost(u"127.0.0.1"_s);
    world.frmClient->wskClient->setRemotePort(port);
    world.frmClient->wskClient->connectToHost();
    EXPECT_TRUE(QTest::qWaitFor([&] { return world.shell.ended(); }));
    EXPECT_EQ(world.shell.script.last().title, u"Packwise 1.41"_s);
    EXPECT_EQ(world.shell.script.last().icon, BoxIcon::None);
    EXPECT_EQ(world.shell.savedForms, 0);
}

TEST(ClientLink, AsksBeforeTheUserLeavesALink) {
    for (const bool withConsole : {false, true}) {
        ClientWorld world;
        if (withConsole) {
            world.shell.visible.insert(FormId::Server);
        }
        world.join();
        world.tell("MESGhello~");
        FrmClient& client = world.frmClient();
        world.frmCard->show();
        world.shell.script.expect(u"Are you sure?"_s, false);
        EXPECT_FALSE(client.closeByUser());
        EXPECT_FALSE(world.frmCard.isVisible());
        EXPECT_EQ(world.shell.script.last().title, u"Packwise 1.41"_s);
        EXPECT_FALSE(client.tmrClose->isActive());

        world.shell.script.expect(u"Are you sure?"_s, true);
        EXPECT_FALSE(client.closeByUser());
        EXPECT_TRUE(world.server.hears("DROP~"));
        EXPECT_TRUE(client.isVisible());
        EXPECT_TRUE(client.tmrClose->isActive());
        client.tmrClose_Timer();
        EXPECT_TRUE(world.server.waitClosed());
        EXPECT_FALSE(client.isVisible());
        EXPECT_FALSE(world.frmMessage.isVisible());
        EXPECT_EQ(world.shell.ended(), !withConsole);
        EXPECT_EQ(world.shell.savedForms, 0);
    }
}

TEST(ClientLink, StaysInTheDeckBuilderWhenTheDraftEndsBehindTheQuestion) {
    ClientWorld world;
    world.start("B");
    world.shell.script.expect(u"Are you sure?"_s, true, [&] { world.tell("OVER~"); });
    world.frmClient->closeByUser();
    EXPECT_FALSE(world.frmClient->tmrClose->isActive());
    EXPECT_TRUE(world.frmDeckBuild.isVisible());
    EXPECT_EQ(world.server.rest(), "");
}

TEST(ClientLink, ClosesAtOnceWithoutALink) {
    for (const bool withConsole : {false, true}) {
        ClientWorld world;
        if (withConsole) {
            world.shell.visible.insert(FormId::Server);
        }
        world.frmClient->show();
        world.frmMessage->show();
        EXPECT_TRUE(world.frmClient->closeByUser());
        EXPECT_FALSE(world.frmMessage.isVisible());
        EXPECT_EQ(world.shell.ended(), !withConsole);
        EXPECT_EQ(world.shell.savedForms, withConsole ? 0 : 1);
    }
}

}  // namespace
}  // namespace packwise
