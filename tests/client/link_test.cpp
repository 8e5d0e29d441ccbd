#include "client/clientworld.h"
#include "platform/settings.h"

namespace packwise {
namespace {

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
    world.server.say("PING~PONG~TE");
    EXPECT_TRUE(world.server.hears("PONG~"));
    world.server.say("ST~");
    EXPECT_TRUE(world.server.hears("TEST~"));
    client.move(100, 0);  // no room for the chat at the right
    world.tell("STATDraft in progress~MESGAnn has joined~");
    EXPECT_EQ(client.lblStatus->text(), u"Draft in progress"_s);
    EXPECT_TRUE(world.frmMessage.isVisible());
    EXPECT_EQ(world.frmMessage->lstMessage->texts(), QStringList{u"Ann has joined"_s});
    world.tell("INFOR~");
    EXPECT_FALSE(world.frmMessage->geometry().intersects(client.geometry()))
        << "chat over the ring";
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

void fallSilent(ClientWorld& world) {
    FrmClient& client = world.frmClient();
    const auto tick = [&] {
        for (int second = 0; second < 34; ++second) {
            client.tmrSilence_Timer();
        }
        EXPECT_EQ(client.wskClient->state(), Socket::Connected);
    };
    tick();
    world.tell("~");
    tick();
    client.tmrSilence_Timer();
}

TEST(ClientLink, IsLostWhenTheServerLeavesOrFloodsOrFallsSilent) {
    struct Case {
        const char* how;
        bool over;  // the deck builder is open
        std::function<void(ClientWorld&)> lose;
    };
    const auto close = [](ClientWorld& world) { world.server.close(); };
    const Case cases[] = {
        {"closes", false, close},
        {"floods", false, [](ClientWorld& world) { world.server.say(std::string(70000, 'x')); }},
        {"falls silent", false, fallSilent},
        {"closes after the draft", true, close},
        {"falls silent after the draft", true, fallSilent},
        {"fails after the draft", true,
         [](ClientWorld& world) { world.frmClient->wskClient_Error(); }},
    };
    for (const Case& c : cases) {
        ClientWorld world;
        world.join();
        world.tell("MESGhello~MESG<Bob> hi~NAME0Ann~STATServer is full~");
        world.tell(c.over ? "OVER~" : "");
        c.lose(world);
        FrmClient& client = world.frmClient();
        EXPECT_TRUE(QTest::qWaitFor([&] { return client.wskClient->state() == Socket::Closed; }))
            << c.how;
        EXPECT_EQ(client.lblStatus->text(), u"Server disconnect."_s) << c.how;
        EXPECT_EQ(client.shaLight->fillColor(), shade::red) << c.how;
        EXPECT_FALSE(world.frmMessage.isVisible()) << c.how;
        EXPECT_EQ(client.isVisible(), !c.over) << c.how;
        EXPECT_EQ(world.frmDeckBuild.isVisible(), c.over) << c.how;
        EXPECT_FALSE(world.shell.ended()) << c.how;
        EXPECT_EQ(client.lblStatus->toolTip(), u"The server said last: Server is full / hello"_s);
    }
}

TEST(ClientLink, EndsTheProgramOnASocketError) {
    for (const auto& [host, why] :
         {std::pair{u"127.0.0.1"_s, u"It refuses: nobody listens there, or the draft has begun."_s},
          {u"no..host"_s, u"Unknown host: no machine has that name."_s}}) {
        ClientWorld world;
        const quint16 port = world.listener.serverPort();
        world.listener.close();
        const QString place = u"%1, port %2"_s.arg(host).arg(port);
        world.shell.script.expect(u"Connection error!\n\nServer: "_s + place + u'\n' + why);
        world.frmClient->show();
        world.frmClient->wskClient->setRemoteHost(host);
        world.frmClient->wskClient->setRemotePort(port);
        world.frmClient->Connect();
        for (int second = 0; second < 5; ++second) {
            EXPECT_EQ(world.frmClient->lblStatus->toolTip(), u"Connecting to "_s + place);
            world.frmClient->tmrSilence_Timer();
        }
        EXPECT_TRUE(world.frmClient->lblStatus->toolTip().contains(u"No answer: the address"_s));
        EXPECT_TRUE(QTest::qWaitFor([&] { return world.shell.ended(); }));
        EXPECT_EQ(world.shell.script.last().title, u"Packwise 1.41"_s);
        EXPECT_EQ(world.shell.script.last().icon, BoxIcon::None);
        EXPECT_EQ(world.shell.savedForms, 0);
    }
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

TEST(ClientLink, StaysInTheDeckBuilderWhenTheDraftEndsWhileOneLeaves) {
    for (const bool behindTheQuestion : {true, false}) {
        ClientWorld world;
        world.start("B");
        world.shell.script.expect(u"Are you sure?"_s, true, [&] {
            if (behindTheQuestion) {
                world.tell("OVER~");
            }
        });
        world.frmClient->closeByUser();
        if (!behindTheQuestion) {
            EXPECT_TRUE(world.server.hears("DROP~"));
            world.tell("OVER~");
        }
        EXPECT_FALSE(world.frmClient->tmrClose->isActive());
        EXPECT_TRUE(world.frmDeckBuild.isVisible());
        EXPECT_EQ(world.server.rest(), "");
    }
}

TEST(ClientLink, TellsWhyTheDraftWasStoppedAndWhatToDoAfterIt) {
    const std::tuple<const char*, const char*, QString> cases[] = {
        {"MESGDraft is A~INFOB~", "CLOS~", u"Draft is A* The host has stopped the draft."_s},
        {"MESGBob disconnected~", "CLOS~",
         u"Bob disconnected* The draft was stopped. Last word of the server: Bob disconnected"_s},
        {"", "OVER~",
         u"* The draft is over. Build a deck of at least 40 cards, then press Save As."_s}};
    for (const auto& [word, end, lines] : cases) {
        ClientWorld world;
        world.start("B");
        world.tell(word);
        world.server.say(end);
        const ListBox& chat = *world.frmMessage->lstMessage;
        EXPECT_TRUE(QTest::qWaitFor([&, &wanted = lines] {
            return chat.texts().join(QString()) == wanted;
        })) << chat.texts().join(u'|').toStdString();
    }
}

TEST(ClientLink, EveryClockTicksByItself) {
    const auto begin = [](ClientWorld& world) {
        const FrmClient& client = world.frmClient();
        const std::tuple<QTimer*, int, bool> clocks[] = {{client.tmrMisc, 1000, true},
                                                         {client.tmrSilence, 1000, true},
                                                         {client.tmrClose, 500, false},
                                                         {client.tmrRoch, 1000, false},
                                                         {client.tmrReview, 1000, false}};
        for (const auto& [clock, interval, running] : clocks) {
            EXPECT_EQ(clock->interval(), interval) << clock->objectName().toStdString();
            EXPECT_EQ(clock->isActive(), running) << clock->objectName().toStdString();
        }
        world.start("R12");
    };
    ClientWorld world;
    begin(world);
    FrmClient& client = world.frmClient();
    client.tmrReview->setInterval(1);
    world.server.say("BOOSUOne|~REVW~");
    EXPECT_TRUE(world.server.hears("RROK~"));
    client.tmrRoch->setInterval(1);
    world.server.say("TURN3~");
    EXPECT_TRUE(world.server.hears("CARDUOne~RAND~RPCK0~"));
    client.tmrMisc->setInterval(1);
    EXPECT_TRUE(world.server.hears("PING~"));
    client.tmrClose->setInterval(1);
    world.shell.script.expect(u"Are you sure?"_s);
    client.closeByUser();
    EXPECT_TRUE(QTest::qWaitFor([&] { return world.shell.ended(); }));

    ClientWorld silent;
    begin(silent);
    silent.frmClient->tmrSilence->setInterval(1);
    EXPECT_TRUE(silent.server.waitClosed());
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
