#include "console/consoleworld.h"
#include "record/replay.h"

#include <QMouseEvent>

namespace packwise {
namespace {

TEST(Losses, KickTellsTheOthersAndKeepsTheSelection) {
    ConsoleWorld world;
    auto peers = world.table(2);
    FrmServer& console = world.console();
    console.cmdKick->click();  // nothing selected
    console.lstNames->setCurrentRow(5);
    console.cmdKick->click();  // an empty row
    EXPECT_EQ(peers[0]->rest(), "");
    console.lstNames->setCurrentRow(1);
    console.cmdKick->click();
    EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~DROP1~MESGKicked P2~"));
    EXPECT_TRUE(peers[1]->waitClosed());
    EXPECT_EQ(peers[1]->rest(), "");
    EXPECT_EQ(console.lstNames->currentRow(), 1);
    console.cmdPing->click();  // looks enabled, but nobody is there
    EXPECT_FALSE(console.tmrPing->isActive());
}

TEST(Losses, PingCountsSecondsAndFindsPoorConnections) {
    ConsoleWorld world;
    auto peers = world.table(2);
    FrmServer& console = world.console();
    console.show();
    struct Row {
        int ticks;
        const char* shown;
        const char* told;
    };
    for (const Row& row :
         {Row{0, "0", ""}, Row{10, "10", ""}, Row{11, "11", "STATDetected poor connection~"},
          Row{99, "99", "STATDetected poor connection~"}}) {
        clickRow(console.lstNames, 1);
        ASSERT_EQ(console.focusWidget(), console.cmdPing);
        QTest::keyClick(console.focusWidget(), Qt::Key_Space);
        EXPECT_FALSE(console.cmdPing->isEnabled());
        QTest::keyClick(console.focusWidget(), Qt::Key_Space);
        EXPECT_FALSE(console.chkHalt->isChecked()) << "the neighbour took the key";
        QWidget* const expected = row.ticks == 10 ? console.chkSilence : nullptr;
        if (expected) {
            expected->setFocus();
        }
        EXPECT_TRUE(peers[1]->hears("PING~"));
        EXPECT_EQ(console.txtPing->text(), QString());
        for (int i = 0; i < row.ticks && row.ticks < 99; ++i) {
            console.tmrPing_Timer();
        }
        if (row.ticks == 99) {  // by itself, and no further
            console.tmrPing->setInterval(0);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !console.tmrPing->isActive(); }));
        }
        peers[1]->say("PONG~");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !console.txtPing->text().isEmpty(); }, 3000));
        EXPECT_EQ(console.txtPing->text(), QLatin1String(row.shown));
        EXPECT_EQ(peers[1]->rest(), row.told);
        EXPECT_TRUE(console.cmdPing->isEnabled());
        EXPECT_FALSE(console.tmrPing->isActive());
        EXPECT_EQ(console.focusWidget(), expected ? expected : console.cmdPing);
    }
    EXPECT_EQ(peers[0]->rest(), "");
    console.lstNames->setCurrentRow(4);
    EXPECT_FALSE(console.cmdPing->isEnabled());

    // A press on the empty row that is released on the player's.
    QWidget& rows = *console.lstNames->viewport();
    const auto middle = [&console](int row) { return middleOf(console.lstNames, row); };
    QTest::mousePress(&rows, Qt::LeftButton, {}, middle(4));
    for (int row = 3; row >= 1; --row) {
        QMouseEvent move(QEvent::MouseMove, middle(row), rows.mapToGlobal(middle(row)),
                         Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&rows, &move);
    }
    QTest::mouseRelease(&rows, Qt::LeftButton, {}, middle(1));
    EXPECT_TRUE(console.lstNames->item(1)->isSelected());
    EXPECT_TRUE(console.cmdPing->isEnabled());
}

TEST(Losses, WhoLeavesADraftStaysListedAndWhoLeavesTheLobbyDoesNot) {
    for (const bool inDraft : {false, true}) {
        ConsoleWorld world;
        auto peers = world.table(2);
        world.chooseSets();
        FrmServer& console = world.console();
        if (inDraft) {
            console.cmdStart->click();
            EXPECT_TRUE(peers[0]->hearsSometime("BOOS"));
        }
        peers[1]->close();
        EXPECT_TRUE(peers[0]->hearsSometime("MESGP2 disconnected~"));
        EXPECT_EQ(console.lstNames->text(1), u" "_s);
        EXPECT_EQ(world.security().lstNames->text(1), inDraft ? u"P2"_s : u" "_s);
        EXPECT_EQ(console.tmrRandoms->isActive(), inDraft);
    }
}

TEST(Losses, AnOnlookerWhoLeavesHaltsNoDraft) {
    ConsoleWorld world;
    auto peers = world.table(2);
    auto onlooker = world.connected(3);
    world.chooseSets();
    FrmServer& console = world.console();
    console.chkHalt->setChecked(true);
    console.cmdStart->click();
    EXPECT_TRUE(peers[0]->hearsSometime("BOOS"));
    onlooker->say("NAMELate~");
    EXPECT_TRUE(peers[0]->hearsSometime("ADDR2127.0.0.1~"));
    onlooker->close();
    EXPECT_TRUE(peers[0]->hears("MESGLate disconnected~"));
    EXPECT_FALSE(console.tmrRandoms->isActive());
    peers[1]->close();
    EXPECT_TRUE(peers[0]->hearsSometime("CLOS~"));
}

TEST(Losses, LeaveARecordThatNobodyCouldReadBefore) {
    const sample::TempFolder folder;
    folder.write("file", "");
    const QDir parent(QString::fromStdString(folder.path().string()));
    enum class End { Halt, Exit, NoFolder };
    for (const End end : {End::Halt, End::Exit, End::NoFolder}) {
        auto world = std::make_unique<ConsoleWorld>();
        const QDir records(parent.filePath(end == End::NoFolder ? u"file"_s : u"records"_s));
        world->records = records.path();
        auto peers = world->table(2);
        world->chooseSets();
        world->console().chkHalt->setChecked(true);
        world->console().cmdStart->click();
        EXPECT_TRUE(peers[0]->hearsSometime("BOOS"));
        EXPECT_EQ(records.entryList(QDir::Files).size(), end == End::Exit ? 1 : 0);
        if (end == End::Exit) {
            world.reset();
        } else {
            const QStringList& notes = world->localClient.notes;
            peers[0]->say("BPCKx~BPCKx~");
            EXPECT_TRUE(peers[0]->hearsSometime("BSTA"));
            peers[1]->vanish();
            ASSERT_TRUE(QTest::qWaitFor([&] { return notes.size() == 3; }));
            EXPECT_TRUE(notes[0].startsWith(u"P1 has sent back something else"_s));
            EXPECT_EQ(notes[1], u"P1 has sent a pick out of turn."_s);
            EXPECT_TRUE(notes[2].startsWith(
                end == End::Halt ? u"The record of this draft is "_s
                                 : u"The record of this draft could not be written to "_s));
            EXPECT_TRUE(notes[2].contains(QDir::toNativeSeparators(records.path())));
        }
    }
    std::set<DraftEnd> ends;
    const QDir records(parent.filePath(u"records"_s));
    for (const QString& name : records.entryList(QDir::Files)) {
        RecordFault fault;
        const auto record =
            readRecord(bytesOf(records.filePath(name)).toStdString(), fault).value();
        EXPECT_TRUE(replay(record, {}).isFollowed);
        ends.insert(std::get<DraftEnded>(record.events.back()).how);
    }
    EXPECT_EQ(ends, (std::set<DraftEnd>{DraftEnd::Halted, DraftEnd::GivenUp}));
}

}  // namespace
}  // namespace packwise
