#include "console/consoleworld.h"
#include "platform/reachwords.h"

#include <QCheckBox>
#include <QProgressBar>

namespace packwise {
namespace {

TEST(ReachPanel, TellsTheAddressesAndAsksTheRouterOnAPressAlone) {
    FakeShell shell;
    ReachPanel panel(shell, nullptr);
    int wanted = 0;
    int unwanted = 0;
    QObject::connect(&panel, &ReachPanel::routerWanted, [&] { ++wanted; });
    QObject::connect(&panel, &ReachPanel::routerUnwanted, [&] { ++unwanted; });
    const auto copied = [](QPushButton* button) {
        QGuiApplication::clipboard()->clear();
        button->click();
        return QGuiApplication::clipboard()->text().toStdString();
    };

    panel.present(5252, {});
    EXPECT_EQ(panel.lblAddress->text(), u"No network here"_s);
    EXPECT_FALSE(panel.cmdLetIn->isEnabled());
    panel.present(5252, {{u"192.168.100.200"_s, u"wlan0"_s}, {u"10.0.0.7"_s, u"tun0"_s}});
    EXPECT_EQ(panel.lblAddress->text(), u"192.168.100.200 port 5252"_s);
    EXPECT_TRUE(panel.lblAddress->toolTip().contains(u"10.0.0.7 port 5252 (tun0)"_s));
    EXPECT_EQ(copied(panel.cmdCopyAddress), "192.168.100.200");
    EXPECT_EQ(wanted, 0);

    panel.cmdLetIn->click();
    EXPECT_EQ(wanted, 1);
    EXPECT_TRUE(panel.barAsking->isVisible() && !panel.cmdLetIn->isVisible());
    panel.cmdCancel->click();
    EXPECT_EQ(unwanted, 1);
    EXPECT_TRUE(panel.cmdLetIn->isVisible() && !panel.barAsking->isVisible());
    panel.dismiss();
    EXPECT_EQ(unwanted, 1) << "the draft has begun, and what is open stays open";
    panel.present(5252, {{u"192.168.100.200"_s, u"wlan0"_s}});
    panel.cmdLetIn->click();
    panel.dismiss();
    EXPECT_EQ(unwanted, 2) << "nobody needs the answer any more";
    panel.present(5252, {{u"192.168.100.200"_s, u"wlan0"_s}});

    struct Case {
        RouterAnswer answer;
        QString shown;
        QString copied;  // of an open port
        QString sentence;
    };
    for (const Case& c : {
             Case{{RouterAnswer::Open, u"11.22.133.144"_s, 5252},
                  u"11.22.133.144 port 5252"_s,
                  u"11.22.133.144"_s,
                  u"Friends on the Internet join"_s},
             Case{{RouterAnswer::Open, u"211.122.133.144"_s, 55253},
                  u"211.122.133.144 port 55253"_s,
                  u"211.122.133.144:55253"_s,
                  u"the router's port 5252 is another's"_s},
             Case{{RouterAnswer::NoRouter, {}, 0},
                  u"No router answers"_s,
                  {},
                  u"forward TCP port 5252 to 192.168.100.200"_s},
             Case{{RouterAnswer::Refused, {}, 0},
                  u"The router refuses"_s,
                  {},
                  u"forward TCP port 5252 to 192.168.100.200"_s},
             Case{{RouterAnswer::BehindAnother, u"100.64.0.9"_s, 0},
                  u"Behind another router"_s,
                  {},
                  u"outside address 100.64.0.9 is not a public one"_s},
         }) {
        panel.showAnswer(c.answer);
        EXPECT_EQ(panel.lblOutside->text(), c.shown);
        EXPECT_TRUE(panel.lblOutside->toolTip().contains(c.sentence)) << c.shown.toStdString();
        EXPECT_EQ(panel.cmdCopyOutside->isVisible(), !c.copied.isEmpty());
        EXPECT_EQ(panel.cmdWhy->isVisible(), c.copied.isEmpty());
        if (!c.copied.isEmpty()) {
            EXPECT_EQ(copied(panel.cmdCopyOutside), c.copied.toStdString());
            continue;
        }
        shell.script.expect(wordsFor(c.answer, u"192.168.100.200"_s, 5252));
        panel.cmdWhy->click();
        EXPECT_TRUE(panel.cmdLetIn->isVisible()) << "to try again";
    }
}

TEST(ReachPanel, StandsWhileThePortIsOpen) {
    ConsoleWorld world;
    FrmServer& console = world.console();
    console.show();
    EXPECT_FALSE(console.reach->isVisible());
    const auto peers = world.table(1);
    EXPECT_TRUE(console.reach->isVisible());
    console.chkSilence->setFocus();
    QTest::keyClick(&console, Qt::Key_Tab);
    EXPECT_TRUE(console.reach->lblAddress->hasFocus()) << "a line is heard where the keys lead";
    world.chooseSets();
    console.cmdStart->click();
    EXPECT_FALSE(console.reach->isVisible());
}

}  // namespace
}  // namespace packwise
