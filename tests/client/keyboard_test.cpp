#include "client/clientworld.h"

namespace packwise {
namespace {

TEST(ClientKeyboard, DraftsWithoutAMouse) {
    ClientWorld world;
    world.start("B");
    FrmClient& client = world.frmClient();
    client.present();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&client));
    world.tell("BOOSUOne|BTwo|GThree|~");
    ASSERT_TRUE(client.lstPack->hasFocus());
    QTest::keyClick(client.lstPack, Qt::Key_Return);  // nothing is chosen yet
    EXPECT_EQ(world.server.rest(), "");
    QTest::keyClick(client.lstPack, Qt::Key_Down);
    EXPECT_EQ(client.lstPack->selectedRow(), 0);
    QTest::keyClick(client.lstPack, Qt::Key_Space);
    EXPECT_EQ(world.frmCard->lblName->text(), u"One"_s);
    client.activateWindow();  // this platform gives the popup the focus
    ASSERT_TRUE(QTest::qWaitForWindowActive(&client));
    QTest::keyClick(client.lstPack, Qt::Key_Escape);
    EXPECT_FALSE(world.frmCard.isVisible());
    QTest::keyClick(client.lstPack, Qt::Key_Down);
    QTest::keyClick(client.lstPack, Qt::Key_Return);
    EXPECT_TRUE(world.server.hears("CARDBTwo~BPCKUOne|GThree|~"));
    world.tell("BOOSRFour|~");
    EXPECT_EQ(client.lstPack->selectedRow(), -1);
    QTest::keyClick(client.lstPack, Qt::Key_Down);
    QTest::keyClick(&client, Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(world.server.hears("CARDRFour~BPCK~"));

    // The focus of what goes away is not left to a control that the next key would change.
    world.tell("BOOSRFive|~");
    client.lstPack->setCurrentRow(0);
    client.cmdDraft->setFocus();
    QTest::keyClick(client.cmdDraft, Qt::Key_Space);
    EXPECT_TRUE(world.server.hears("CARDRFive~BPCK~"));
    EXPECT_TRUE(client.lstPack->hasFocus());
    world.tell("RPAU~");
    EXPECT_EQ(client.lstPickedNS->focusPolicy(), Qt::NoFocus) << "it is covered";
    client.cmdOK->setFocus();
    QTest::keyClick(client.cmdOK, Qt::Key_Space);
    EXPECT_TRUE(world.server.hears("RPOK~"));
    EXPECT_TRUE(client.lstPack->hasFocus());
    EXPECT_EQ(client.lstPickedNS->focusPolicy(), Qt::StrongFocus);
    client.lstPicked->show();

    client.fraColors->setFocus();
    QTest::keyClick(client.fraColors, Qt::Key_Space);
    EXPECT_EQ(client.lstPicked->text(0), u"---RED---"_s);
    QTest::keyClick(client.fraColors, Qt::Key_Left);
    QTest::keyClick(client.fraColors, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(client.lstPicked->texts(), (QStringList{u"---BLACK---"_s, u"Two"_s, u" "_s}));
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(client.fraColors, Qt::Key_Right);
    }
    QTest::keyClick(client.fraColors, Qt::Key_Space);
    EXPECT_EQ(client.lstPicked->count(), 7);

    const QWidget* order[] = {client.chkInfo, client.lstPack, client.lstPicked, client.chkSort};
    for (const QWidget* next : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), next) << next->objectName().toStdString();
    }
}

}  // namespace
}  // namespace packwise
