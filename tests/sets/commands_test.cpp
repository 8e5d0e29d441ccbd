// Building sets from text, and looking at them.
#include "sets/cardfile.h"
#include "sets/programfixture.h"

namespace packwise::sets {
namespace {

TEST_F(Program, RegistersASetOnceBehindTheUsersOwn) {
    store().write(u"Sets"_s, u"009"_s, u"My Own, First"_s);
    store().write(u"Client"_s, u"Name"_s, u"Ann"_s);
    put(u"one.set"_s, setNamed("Reed, Two"));
    put(u"two.set"_s, setNamed("Ash Set"));
    run({u"build"_s, u"one.set"_s, u"--into"_s, u"cards"_s, u"--no-register"_s});
    EXPECT_EQ(1, registered().size());
    EXPECT_THAT(run({u"list"_s, u"cards"_s}).out, HasSubstr("(not registered)"));
    EXPECT_EQ("Reed, Two: written\n", run({u"build"_s, u"one.set"_s, u"--into"_s, u"."_s}).out);
    EXPECT_EQ("Reed, Two: up to date\nAsh Set: written\n",
              run({u"build"_s, u"one.set"_s, u"two.set"_s, u"--register"_s}).out);
    EXPECT_EQ(QStringList({u"My Own, First"_s, u"Reed, Two"_s, u"Ash Set"_s}), registered());
    EXPECT_EQ(u"Ann"_s, store().read(u"Client"_s, u"Name"_s));

    const Ending list = run({u"list"_s});
    EXPECT_EQ(0, list.status);
    EXPECT_THAT(list.out, HasSubstr("Reed, Two"));
    EXPECT_THAT(list.out, HasSubstr("1 common, 0 uncommon, 0 rare, 0 undealt; pack of 1 + 0 + 0"));
    EXPECT_EQ(0, run({u"check"_s}).status);
}

TEST_F(Program, TakesTheFolderItIsInOrTheUsersOwnWhichIsMadeOnce) {
    const std::string users = dir_.filePath(u"data/Packwise/cards"_s).toStdString();
    const std::string samples = ", made with the sample sets Cinder Orchard and Saltmarsh Bells\n";
    struct Case {
        QStringList arguments;
        std::string folder;
        int sets;  // that "list" shows in the end
    };
    put(u"data"_s, "in the way");
    EXPECT_THAT(run({u"list"_s}).err, HasSubstr("the folder " + users + " cannot be made"));
    ASSERT_TRUE(QFile::remove(dir_.filePath(u"data"_s)));
    for (const Case& c : {
             Case{{u"list"_s}, users + samples, 2},
             Case{{u"remove"_s, u"Cinder Orchard"_s}, users + "\n", 1},
             Case{{u"remove"_s, u"Saltmarsh Bells"_s}, users + "\n", 0},
             Case{{u"build"_s, u"one.set"_s}, users + "\n", 1},
             Case{{u"build"_s, u"one.set"_s, u"two.set"_s, u"--into"_s, u"."_s}, "", 2},
             Case{{u"check"_s}, dir_.path().toStdString() + "\n", 2},
         }) {
        put(u"one.set"_s, setNamed("Reed, Two"));
        put(u"two.set"_s, setNamed("Ash Set"));
        EXPECT_EQ(run(c.arguments).err, c.folder.empty() ? "" : "Card sets: " + c.folder);
        const std::string list = run({u"list"_s}).out;
        EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), c.sets) << list;
        EXPECT_EQ(registered().size(), c.sets);
    }
}

TEST_F(Program, WritesNothingUnlessEverySourceIsSound) {
    put(u"good.set"_s, setNamed("Good Set"));
    put(u"bad.set"_s, setNamed("Other Set") + "No Fields\n");
    const Ending ending = run({u"build"_s, u"good.set"_s, u"bad.set"_s});
    EXPECT_EQ(1, ending.status);
    EXPECT_THAT(ending.err, HasSubstr("bad.set: a card is"));
    EXPECT_THAT(ending.err, HasSubstr(", line 5\n"));
    EXPECT_EQ(QStringList({u"bad.set"_s, u"good.set"_s}), files());
    EXPECT_TRUE(registered().isEmpty());
}

TEST_F(Program, RefusesTwoNamesThatLeadToTheSameFiles) {
    put(u"one.set"_s, setNamed("Reed Marsh One"));
    put(u"two.set"_s, setNamed("reedmarsh two"));
    EXPECT_THAT(run({u"build"_s, u"one.set"_s, u"two.set"_s}).err, HasSubstr("\"Reed Marsh One\""));
    EXPECT_EQ(0, run({u"build"_s, u"one.set"_s, u"--into"_s, u"."_s}).status);
    const Ending second = run({u"build"_s, u"two.set"_s});
    EXPECT_EQ(1, second.status);
    EXPECT_THAT(second.err, HasSubstr("the same files as the set \"Reed Marsh One\""));
    EXPECT_EQ(QStringList(u"Reed Marsh One"_s), registered());
}

TEST_F(Program, TellsAFaultInOneLineAndFails) {
    put(u"Broken.pw"_s, QByteArray("\1\0\1\0\1\0", 6));
    const Ending ending = run({u"check"_s});
    EXPECT_EQ(1, ending.status);
    EXPECT_EQ("Broken.pw: the END record is missing, record 1 at byte 6\n", ending.out);
    EXPECT_THAT(run({u"list"_s}).out, HasSubstr("damaged"));
}

TEST_F(Program, LetsNoNameOrTextActOnTheTerminal) {
    SetSource odd;
    odd.cards = {{"Fish\x1b[2J\x9d", "-", "U", "\r", "", "Swim.\r\nDive\b\x7f.", ""},
                 {"Newt", "-", "U", "", "", "", ""}};
    put(u"Odd.pw"_s, QByteArray::fromStdString(cardFileBytes(odd)));
    put(u"\x1b[7m.set"_s, "set \x1b[7m\n\x1b\n");
    std::string told;
    for (const QStringList& arguments :
         {QStringList{u"check"_s}, QStringList{u"show"_s, u"Odd"_s},
          QStringList{u"show"_s, u"Odd"_s, u"2J"_s}, QStringList{u"show"_s, u"Odd"_s, u"\u202e"_s},
          QStringList{u"build"_s, u"\x1b[7m.set"_s}, QStringList{u"import"_s, u"\x1b[7m.set"_s},
          QStringList{u"\u009b"_s}}) {
        const Ending ending = run(arguments);
        told += ending.out + ending.err;
    }
    for (const QChar c : QString::fromStdString(told)) {
        EXPECT_TRUE(c.isPrint() || c == u'\n') << int{c.unicode()} << " in\n" << told;
    }
    EXPECT_THAT(told, HasSubstr("?[7m.set: "));
    EXPECT_THAT(told, HasSubstr("Fish?[2J?"));
}

TEST_F(Program, HelpsAndRefusesAWrongCommandLine) {
    EXPECT_THAT(run({u"--help"_s}).out, HasSubstr("build SOURCE"));
    EXPECT_THAT(run({u"build"_s, u"--help"_s}).out, HasSubstr("--into <FOLDER>"));
    for (const QStringList& wrong :
         {QStringList(), QStringList{u"brew"_s}, QStringList{u"build"_s},
          QStringList{u"build"_s, u"--bogus"_s, u"x.set"_s},
          QStringList{u"build"_s, u"x.set"_s, u"--register"_s, u"--no-register"_s}}) {
        const Ending ending = run(wrong);
        EXPECT_EQ(2, ending.status) << wrong.join(u' ').toStdString();
        EXPECT_THAT(ending.err, HasSubstr("packwise-sets: "));
    }
    for (const QStringList& missing :
         {QStringList{u"build"_s, u"none.set"_s}, QStringList{u"check"_s, u"none"_s}}) {
        EXPECT_EQ(1, run(missing).status);
        EXPECT_THAT(run(missing).err, HasSubstr("none"));
    }
}

}  // namespace
}  // namespace packwise::sets
