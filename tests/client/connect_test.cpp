#include "client/clientworld.h"
#include "platform/settings.h"

#include <QToolTip>

namespace packwise {
namespace {

TEST(FrmConnect, RestoresNameAndPortAndOffersTheClipboardAsAddress) {
    ClientWorld world;
    setting::clientName.write(world.shell.settings(), u"Fox"_s);
    setting::clientPort.write(world.shell.settings(), u"6001"_s);
    QGuiApplication::clipboard()->setText(u" 192.168.100.1009"_s);
    FrmConnect& dialog = world.frmConnect();
    EXPECT_EQ(dialog.txtName->text(), u"Fox"_s);
    EXPECT_EQ(dialog.txtPort->text(), u"6001"_s);
    EXPECT_EQ(dialog.txtIP->selectedText(), u"192.168.100.100"_s);
    for (const auto& [copied, filled] : {std::pair{u"203.0.113.7:5253\n"_s, u"203.0.113.7 5253"_s},
                                         {u"203.0.113.7 Port 5253"_s, u"203.0.113.7 5253"_s},
                                         {u"host.example : 5253"_s, u"host.example 5253"_s},
                                         {u"203.0.113.7:0"_s, u"203.0.113.7:0 6001"_s},
                                         {u"2001:db8::7:5253"_s, u"2001:db8::7:525 6001"_s},
                                         {u"20:30"_s, u"20:30 6001"_s}}) {
        QGuiApplication::clipboard()->setText(copied);
        FrmConnect again(world.shell, world.frmClient, world.frmSecurity);
        EXPECT_EQ(again.txtIP->text() + u' ' + again.txtPort->text(), filled);
    }
    QTest::keyClicks(dialog.txtName, u"es"_s);
    QTest::sendKeyEvent(QTest::Click, dialog.txtName, Qt::Key_unknown, u"\u0142"_s, {});
    EXPECT_TRUE(QToolTip::text().contains(u"can be sent"_s));
    QTest::keyClicks(dialog.txtName, u" and many more"_s);
    EXPECT_EQ(dialog.txtName->text(), u"Foxes and ma"_s);
}

TEST(FrmConnect, RefusesWhatCannotBeConnectedWith) {
    struct Case {
        QString name, address, port, box;
    };
    std::vector<Case> cases{{u""_s, u""_s, u"x"_s, u"Name required"_s},
                            {u"A~b"_s, u""_s, u"x"_s, u"Character ~ reserved"_s},
                            {u"Ann"_s, u"  "_s, u"x"_s, u"Server IP address required"_s}};
    for (const char16_t* port : {u"abc", u"", u"0", u"-5", u"65536", u"1e99", u"nan"}) {
        cases.push_back({u"Ann"_s, u"127.0.0.1"_s, QString::fromUtf16(port), u"Bad port"_s});
    }
    ClientWorld world;
    FrmConnect& dialog = world.frmConnect();
    dialog.show();
    for (const Case& c : cases) {
        dialog.txtName->setText(c.name);
        dialog.txtIP->setText(c.address);
        dialog.txtPort->setText(c.port);
        world.shell.script.expect(c.box);
        QTest::mouseClick(dialog.cmdConnect, Qt::LeftButton);
        EXPECT_EQ(world.shell.script.last().title, u"Error"_s);
        EXPECT_EQ(world.shell.script.last().icon, BoxIcon::Exclamation);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(world.frmClient.isVisible());
    }
    EXPECT_EQ(setting::clientName.read(world.shell.settings()), u""_s);
    EXPECT_EQ(world.frmClient->wskClient->state(), Socket::Closed);
    EXPECT_EQ(world.frmSecurity->lstIP->text(0), u"127.0.0.1"_s);
    for (const auto& [text, port] : {std::pair{u" 5252.4 "_s, 5252}, {u"65535"_s, 65535}}) {
        EXPECT_EQ(readPort(text), port);
    }
    dialog.closeByUser();
    EXPECT_TRUE(world.shell.ended());
    EXPECT_EQ(world.shell.savedForms, 0);
}

TEST(FrmConnect, ConnectsAndRemembers) {
    ClientWorld world;
    FrmConnect& dialog = world.frmConnect();
    dialog.show();
    dialog.txtName->setText(u"Zo\u00eb"_s);
    dialog.txtIP->setText(u"127.0.0.1"_s);
    dialog.txtPort->setText(QString::number(world.listener.serverPort()));
    QTest::keyClick(dialog.txtPort, Qt::Key_Return);
    ASSERT_TRUE(world.server.acceptFrom(world.listener));
    world.server.say("HELO3~");
    EXPECT_TRUE(world.server.hearsSometime("VERS1.41~NAMEZo\xEB~"));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(world.frmClient.isVisible());
    EXPECT_EQ(world.frmClient->lblStatus->text(), u"Connected as 3"_s);
    EXPECT_EQ(setting::clientName.read(world.shell.settings()), u"Zo\u00eb"_s);
    EXPECT_EQ(setting::clientPort.read(world.shell.settings()), dialog.txtPort->text());
}

}  // namespace
}  // namespace packwise
