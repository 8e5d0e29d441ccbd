#include "console/consoleworld.h"
#include "support/ring.h"

namespace packwise {
namespace {

using testing::UnorderedElementsAre;

// What a start stores.
QString stored(ConsoleWorld& world) {
    QString all;
    for (const char* key : {"DraftType", "Timed", "Time", "FixSeats", "PackCount", "Pack1", "Pack2",
                            "Pack3", "Pack4", "Pack5", "Pack6"}) {
        const QString name = QString::fromLatin1(key);
        all += name + u'=' + world.shell.settings().read(u"Server"_s, name, u"-"_s) + u' ';
    }
    return all;
}

TEST(DraftStart, TellsEverythingInOrderBeforeTheFirstPack) {
    ConsoleWorld world;
    auto peers = world.table(2);
    auto nameless = world.connected(3);
    nameless->rest();
    world.chooseSets();
    world.console().optPack[3]->click();
    world.console().chkReal->setChecked(true);
    world.draw = [value = 0.5]() mutable { return value += 0.0001; };
    world.console().cmdStart->click();
    const std::string opening =
        "STATDraft in progress~SEAT10~SEAT01~PAKSSample|Other|Sample|Sample|||~"
        "MESGDraft is Sample - Other - Sample - Sample~INFOB~ROUN1~";
    EXPECT_TRUE(nameless->hears(opening));
    EXPECT_EQ(nameless->rest(), "");  // no pack without a place
    for (auto& peer : peers) {
        EXPECT_TRUE(peer->hears(opening + "BOOS"));
        const std::string pack = peer->rest();
        EXPECT_EQ(countFields(pack), 15);
        EXPECT_EQ(pack.back(), '~');
    }
    FrmServer& console = world.console();
    EXPECT_FALSE(console.chkReal->isChecked());  // there is no order file
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Reality"_s), u"0"_s);
    EXPECT_EQ(stored(world),
              u"DraftType=B Timed=1 Time=25 FixSeats=0 PackCount=4 Pack1=Sample "
              "Pack2=Other Pack3=Sample Pack4=Sample Pack5=Sample Pack6=Sample "_s);
    // The key that comes next must not change what lies beside the button.
    EXPECT_EQ(console.focusWidget(), console.lstNames);
    EXPECT_EQ(console.wskServer[0]->state(), Socket::Closed);
    QTcpSocket late;
    late.connectToHost(u"127.0.0.1"_s, console.wskServer[0]->localPort());
    EXPECT_FALSE(late.waitForConnected(1000));

    // A pick goes round; a name that comes now finds no place at the table.
    nameless->say("NAMELate~BPCK~");
    EXPECT_TRUE(nameless->hearsSometime("~NAME7"));
    EXPECT_EQ(console.server().table().playerCount, 2);
    EXPECT_EQ(peers[0]->transcript().find("BSTA"), std::string::npos);
}

TEST(DraftStart, RochesterTellsAndStoresItsClockAndLeavesFourChoices) {
    for (const bool timed : {true, false}) {
        ConsoleWorld world;
        auto peers = world.table(1);
        world.chooseSets();
        FrmServer& console = world.console();
        console.optRochester->click();
        console.chkTimed->setChecked(timed);
        console.vsbSecs->setValue(18);
        console.cboPack[5]->setCurrentIndex(-1);
        console.cmdStart->click();
        const std::string clock = std::string(timed ? "1" : "0") + "12";
        EXPECT_TRUE(
            peers[0]->hears("STATDraft in progress~SEAT00~PAKSSample|Other|Sample||||~"
                            "MESGDraft is Sample - Other - Sample~INFOR" +
                            clock + "~ROUN1:1~BOOS"));
        EXPECT_TRUE(peers[0]->hearsSometime("REVW~"));
        EXPECT_EQ(stored(world),
                  u"DraftType=R Timed=%1 Time=18 FixSeats=0 PackCount=3 "
                  "Pack1=Sample Pack2=Other Pack3=Sample Pack4=Sample Pack5=Sample "
                  "Pack6= "_s.arg(timed ? 1 : 0));
        QStringList free;
        for (const QWidget* choice : console.findChildren<QWidget*>()) {
            if (choice->isEnabled() && (qobject_cast<const QAbstractButton*>(choice) ||
                                        qobject_cast<const QComboBox*>(choice) ||
                                        choice == console.lblSecs || choice == console.vsbSecs)) {
                free += choice->objectName();
            }
        }
        free.sort();
        EXPECT_EQ(free.join(u' '), u"chkHalt chkReal chkSilence optPack(2)"_s);
    }
}

TEST(DraftStart, AHoleMakesTheSeatingRandomAndLeavesNoHoleAtTheTable) {
    ConsoleWorld world;
    auto peers = world.table(4);
    world.chooseSets();
    world.console().chkFixSeats->setChecked(true);
    peers[2]->close();
    ASSERT_TRUE(world.seatIsFree(3));
    // One more is lost while the box is open: that place is kept.
    world.shell.script.expect(u"Can't fix seat with connection hole."_s, true, [&] {
        peers[1]->close();
        EXPECT_TRUE(world.seatIsFree(2));
    });
    world.console().cmdStart->click();
    EXPECT_EQ(world.shell.script.last().title, u"Packwise 1.41"_s);
    EXPECT_EQ(world.shell.script.last().icon, BoxIcon::None);
    EXPECT_FALSE(world.console().chkFixSeats->isChecked());
    EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"FixSeats"_s), u"1"_s);
    const DraftTable& table = world.console().server().table();
    EXPECT_EQ(table.playerCount, 3);
    EXPECT_THAT(std::vector<int>(table.socketAt.begin(), table.socketAt.begin() + 3),
                UnorderedElementsAre(1, 2, 4));
    EXPECT_EQ(table.tableOf[2], -1);
    EXPECT_TRUE(peers[3]->hearsSometime("ROUN1~BOOS"));
    world.console().tmrRandoms_Timer();
    EXPECT_TRUE(peers[3]->hearsSometime("~BSTA" + std::to_string(table.tableOf[1]) + "~"));
}

TEST(FixSeats, TheHostsOrderCountsAlsoForALostPlayer) {
    for (const bool byCloseBox : {false, true}) {
        ConsoleWorld world;
        auto peers = world.table(3);
        world.chooseSets();
        world.console().chkFixSeats->setChecked(true);
        world.console().show();
        world.console().cmdStart->click();
        EXPECT_TRUE(peers[0]->hears("STATDraft in progress~MESG*Server is fixing seat order.*~"));
        FrmFixSeats& dialog = world.fixSeats();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(world.console().isEnabled());
        EXPECT_FALSE(world.console().closeByUser());
        EXPECT_FALSE(dialog.lblSeat[3]->isEnabled());
        EXPECT_EQ(dialog.lblSeat[3]->caption(), u"-"_s);

        EXPECT_EQ(dialog.lblSeat[3]->backColor(), QColor(128, 128, 128));
        EXPECT_EQ(dialog.lblSeat[0]->backColor(), QColor(255, 255, 255));

        QTest::mouseClick(dialog.lblSeat[0], Qt::LeftButton);
        QTest::mouseDClick(dialog.lblSeat[0], Qt::LeftButton);
        QTest::mouseRelease(dialog.lblSeat[0], Qt::LeftButton);
        EXPECT_EQ(dialog.lblSeat[0]->backColor(), QColor(255, 0, 0)) << "the second press counted";
        EXPECT_EQ(dialog.lblSeat[0]->accessibleDescription(), u"position 1, selected"_s);
        QTest::keyClick(dialog.lblSeat[2], Qt::Key_Space);
        EXPECT_EQ(dialog.lblSeat[0]->backColor(), QColor(255, 255, 255));
        peers[0]->say("RROK~RPOK~BPCKUa|~");
        peers[1]->close();
        EXPECT_TRUE(peers[0]->hears("MESGP2 disconnected~"));
        world.console().tmrRandoms_Timer();
        QTest::keyClick(dialog.lblSeat[1], Qt::Key_Return);
        QTest::keyClick(dialog.lblSeat[2], Qt::Key_Return);
        EXPECT_EQ(dialog.lblSeat[1]->caption(), u"P1"_s);
        for (const SeatLabel* label : dialog.lblSeat) {
            const bool lost = label == dialog.lblSeat[2];  // P2, moved since
            EXPECT_EQ(label->isLost(), lost);
            EXPECT_EQ(label->accessibleDescription().contains(u"lost"_s), lost);
            EXPECT_EQ(label->toolTip().contains(u"lost"_s), lost);
        }
        EXPECT_EQ(dialog.lblSeat[2]->caption(), u"P2"_s);
        dialog.lblSeat[0]->click();  // stays selected, without effect
        EXPECT_EQ(peers[0]->rest(), "");
        if (byCloseBox) {
            EXPECT_TRUE(dialog.closeByUser());
        } else {
            dialog.cmdOK->click();
        }
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_TRUE(world.console().isEnabled());
        EXPECT_TRUE(peers[0]->hears("SEAT20~SEAT01~SEAT12~PAKS"));
        EXPECT_TRUE(peers[0]->hearsSometime("ROUN1~BOOS"));
        world.console().tmrRandoms_Timer();
        EXPECT_TRUE(peers[0]->hearsSometime("BSTA2~"));
    }
}

TEST(FixSeats, TheSeatsStandInARingClockwiseFromTheUpperLeft) {
    ConsoleWorld world;
    const auto& seats = world.fixSeats().lblSeat;
    expectClockwise(seats);
    for (const SeatLabel* seat : seats) {
        const auto covers = [seat](const SeatLabel* other) {
            return seat->geometry().intersects(other->geometry());
        };
        EXPECT_EQ(std::count_if(seats.begin(), seats.end(), covers), 1);
        EXPECT_GE(seat->y(), seats[0]->y());
    }
    EXPECT_LT(seats[0]->x(), seats[1]->x());
}

TEST(DraftStart, ARoundIsDealtInOneWaySoThatItsPacksAreOfOneSize) {
    // A pack along these lists is one card of each, which fails behind "UAB".
    std::string order = "1,0,1\n21,0,21\n";
    for (int i = 0; i < 42; ++i) {
        order += i < 21 ? "UA\n" : i % 2 == 0 ? "UAB\n" : "UC\n";
    }
    struct Row {
        bool real;
        int goodDraws;  // behind these, the lists yield no pack
        int cards;
    };
    for (const Row& row : {Row{false, 1000, 15}, Row{true, 1000, 2}, Row{true, 5, 15}}) {
        ConsoleWorld world;
        world.folder.write("Sample.ord", order);
        auto peers = world.table(2);
        world.chooseSets();
        world.console().chkReal->setChecked(row.real);
        world.draw = [draws = 0, &row]() mutable { return ++draws <= row.goodDraws ? 0.0 : 0.5; };
        world.console().cmdStart->click();
        for (auto& peer : peers) {
            EXPECT_TRUE(peer->hearsSometime("ROUN1~BOOS"));
            EXPECT_EQ(countFields(peer->rest()), row.cards) << row.goodDraws;
        }
        EXPECT_EQ(world.console().chkReal->isChecked(), row.cards == 2);
    }
}

TEST(DraftStart, ASetThatCannotBeDealtIsToldBeforeAnythingChanges) {
    const QString folder = u" in the folder "_s;
    const QString pack = u"Pack 2, \"Other\", cannot be dealt.\n\n"_s;
    const QString damaged = u" is damaged or cannot be read.\n\nReplace it, or "_s;
    const auto write = [](const char* file, const std::string& bytes) {
        return [=](ConsoleWorld& world) { world.folder.write(file, bytes); };
    };
    const auto chooseNone = [](std::size_t box) {
        return [=](ConsoleWorld& world) { world.console().cboPack.at(box)->setCurrentIndex(-1); };
    };
    struct Row {
        const char* fault;
        bool real;
        std::function<void(ConsoleWorld&)> make;
        QString before;  // the box's text up to the folder; empty where the draft starts
        QString behind;
    };
    const Row rows[] = {
        {"no choice", false, chooseNone(2), u"Pack 3 has no set.\n\nChoose one in its list."_s, {}},
        {"no card file", false,
         [](ConsoleWorld& world) { remove(world.folder.path() / "Other.pw"); },
         pack + u"There is no card file Other.pw"_s + folder,
         u".\n\nPut it there, or choose another set."_s},
        {"a cut card file", false, write("Other.pw", sample::wholeSet().substr(0, 4000)),
         pack + u"The card file Other.pw"_s + folder, damaged + u"choose another set."_s},
        {"a bad order file", true, write("Other.ord", "1,1,1\n"),
         pack + u"The order file Other.ord"_s + folder, damaged + u"clear \"Try real packs\"."_s},
        {"a bad order file that is not used", false, write("Other.ord", "1,1,1\n"), {}, {}},
        {"an empty order file", true, write("Other.ord", ""), {}, {}},
        {"a pack that is not used", false, chooseNone(3), {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.fault);
        ConsoleWorld world;
        auto peers = world.table(2);
        world.chooseSets();
        row.make(world);
        world.console().chkReal->setChecked(row.real);
        int draws = 0;
        world.draw = [&draws] { return ++draws % 100 / 100.0; };
        FrmServer& console = world.console();
        const bool starts = row.before.isEmpty();
        if (!starts) {
            const QString here = QDir::toNativeSeparators(QDir::currentPath());
            world.shell.script.expect(row.behind.isEmpty() ? row.before
                                                           : row.before + here + row.behind);
        }
        console.cmdStart->click();
        EXPECT_EQ(console.server().state(),
                  starts ? DraftServer::State::Drafting : DraftServer::State::Lobby);
        EXPECT_EQ(draws > 0, starts);
        EXPECT_EQ(console.cmdStart->isEnabled(), !starts);
        EXPECT_EQ(console.wskServer[0]->state() == Socket::Listening, !starts);
        EXPECT_EQ(world.shell.settings().read(u"Server"_s, u"Pack1"_s, u"-"_s),
                  starts ? u"Sample"_s : u"-"_s);
        if (starts) {
            EXPECT_TRUE(peers[0]->hearsSometime("BOOS"));
            continue;
        }
        EXPECT_EQ(peers[0]->rest(), "");
        EXPECT_EQ(world.shell.script.last().title, u"Error"_s);
        EXPECT_EQ(world.shell.script.last().icon, BoxIcon::Exclamation);
    }
}

TEST(DraftStart, CardDataThatGoBadLaterEndTheProgramOnce) {
    for (const bool booster : {true, false}) {
        ConsoleWorld world;
        auto peers = world.table(2);
        world.chooseSets();
        world.console().chkFixSeats->setChecked(true);
        (booster ? world.console().optBooster : world.console().optRochester)->setChecked(true);
        world.console().cmdStart->click();
        remove(world.folder.path() / "Sample.pw");
        world.shell.script.expect(u"Error reading file"_s, true, [&] {
            // What arrives while the box is open must not deal again.
            peers[0]->say("BPCK~RROK~RPOK~RPCK0~PING~");
            EXPECT_TRUE(peers[0]->hearsSometime("PONG~"));
            peers[1]->close();
            EXPECT_TRUE(world.seatIsFree(2));
            world.console().tmrRandoms_Timer();
        });
        world.fixSeats().cmdOK->click();
        EXPECT_EQ(world.shell.script.seen().size(), 1U);
        EXPECT_EQ(world.shell.script.last().icon, BoxIcon::Exclamation);
        EXPECT_EQ(world.shell.script.last().title, u"Error"_s);
        EXPECT_TRUE(world.shell.ended());
        EXPECT_EQ(peers[0]->transcript().find("BOOS"), std::string::npos);
    }
}

}  // namespace
}  // namespace packwise
