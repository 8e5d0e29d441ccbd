#include "app/program.h"

#include "app/draftparty.h"

namespace packwise {
namespace {

TEST(Program, TheStartWindowLeadsToAnotherAndIsGone) {
    PlayerProgram joins(1);
    joins.program.start();
    FrmMain& main = joins.program.frmMain();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&main));
    EXPECT_TRUE(main.cmdDummy->hasFocus());
    EXPECT_FALSE(main.rect().intersects(main.cmdDummy->geometry()));
    EXPECT_EQ(main.cmdClient->geometry().bottom() + 1, main.cmdServer->y());
    EXPECT_EQ(main.cmdServer->geometry().bottom() + 1, main.cmdAbout->y());
    EXPECT_EQ(main.cmdAbout->geometry().bottom() + 1, main.height());
    QTest::keyClick(main.windowHandle(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(spinUntil([&] { return joins.program.isVisible(FormId::Connect); }));
    EXPECT_FALSE(joins.program.isVisible(FormId::Main));
}

TEST(Program, AboutReturnsToAUsableStartWindow) {
    PlayerProgram player(1);
    player.program.start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&player.program.frmMain()));
    QTest::keyClick(player.program.frmMain->windowHandle(), Qt::Key_A, Qt::AltModifier);
    bool shown = false;
    QTimer closer;  // runs inside the modal wait
    closer.callOnTimeout([&] {
        if (player.program.isVisible(FormId::Info)) {
            shown = true;
            QTest::mousePress(&player.program.frmInfo(), Qt::RightButton, {}, QPoint(3, 3));
        }
    });
    closer.start(5);
    EXPECT_TRUE(spinUntil([&] { return shown && !player.program.isVisible(FormId::Info); }));
    EXPECT_TRUE(player.program.isVisible(FormId::Main));
    QTest::mouseClick(player.program.frmMain->cmdClient, Qt::LeftButton);
    EXPECT_TRUE(player.program.isVisible(FormId::Connect));
}

TEST(Program, SavingKeepsThePlacesOfWindowsThatWereNotShown) {
    PlayerProgram player(1);
    SettingsStore& settings = player.program.settings();
    const std::map<QString, QString> places = {{u"Server"_s, u"1507.5 2251"_s},
                                               {u"Client"_s, u"30 45"_s},
                                               {u"Message"_s, u"60 75"_s},
                                               {u"MessageSize"_s, u"9001 4502"_s},
                                               {u"Security"_s, u"90 105"_s}};
    for (const auto& [window, place] : places) {
        settings.write(u"Forms"_s, window, place);
    }
    player.program.saveForms();
    std::map<QString, QString> saved;
    for (const auto& [window, place] : settings.readAll(u"Forms"_s)) {
        saved[window] = place;
    }
    EXPECT_EQ(saved, places);
}

TEST(Program, TheEndLeavesNothingOnTheScreenAndNoSocketOpen) {
    const CardFolder cards;
    DraftParty party(2, cards.setNames(), 3);
    ASSERT_TRUE(party.join());
    party.host().program.end();
    for (int form = 0; form < 11; ++form) {
        EXPECT_FALSE(party.host().program.isVisible(static_cast<FormId>(form))) << form;
    }
    EXPECT_EQ(party.console().wskServer[1]->state(), Socket::Closed);
    EXPECT_EQ(party.console().wskServer[0]->state(), Socket::Closed);
    EXPECT_FALSE(party.console().tmrPoke->isActive());
    EXPECT_TRUE(spinUntil(
        [&] { return party.player(1).client().wskClient->state() != Socket::Connected; }));
}

}  // namespace
}  // namespace packwise
