// Importing sets, and the commands for what was imported.
#include "sets/mtgsample.h"
#include "sets/programfixture.h"

namespace packwise::sets {
namespace {

class Importing : public Program {
protected:
    static QByteArray reedMarsh(const std::string& more = {}) {
        return QByteArray::fromStdString(mtgSet(joined(usualCards()), more));
    }
    QByteArray bytes(const QString& file) const {
        QFile in(dir_.filePath(file));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
};

TEST_F(Importing, TakesASetOnceAndAgainWhenItHasChanged) {
    put(u"RMS.json"_s, reedMarsh());
    const Ending first = run({u"import"_s, u"RMS.json"_s, u"--into"_s, u"."_s});
    EXPECT_EQ("Reed Marsh: written\n", first.out);
    EXPECT_EQ("", first.err) << "no bar in a pipe";
    EXPECT_EQ("Reed Marsh: up to date\n", run({u"import"_s, u"RMS.json"_s}).out);
    EXPECT_EQ(QStringList(u"Reed Marsh"_s), registered());
    EXPECT_EQ("", run({u"check"_s}).out);
    const QByteArray before = bytes(u"ReedMars.pw"_s);

    QByteArray changed = reedMarsh();
    put(u"RMS.json"_s, changed.replace("Pike King", "Pike|King"));
    const Ending refused = run({u"import"_s, u"RMS.json"_s});
    EXPECT_EQ(1, refused.status);
    EXPECT_THAT(refused.err, HasSubstr("RMS.json: \"Pike|King\" holds a reserved character"));
    EXPECT_EQ(before, bytes(u"ReedMars.pw"_s)) << "the older pair is kept";
    put(u"RMS.json"_s, changed.replace("Pike|King", "Pike Queen"));
    EXPECT_EQ("Reed Marsh: written\n", run({u"import"_s, u"RMS.json"_s}).out);
    EXPECT_NE(before, bytes(u"ReedMars.pw"_s));
}

TEST_F(Importing, TakesTheWantedOfAllSets) {
    const QByteArray other = reedMarsh().replace("Reed Marsh", "Ash Tarn");
    put(u"all.json"_s, "{\"data\":{\"RMS\":" + reedMarsh() + ",\"ASH\":" + other + "}}");
    EXPECT_THAT(run({u"import"_s, u"all.json"_s}).err, HasSubstr("--code RMS"));
    EXPECT_THAT(run({u"import"_s, u"all.json"_s, u"--code"_s, u"ASH"_s, u"NON"_s}).err,
                HasSubstr("no file holds the set NON"));
    EXPECT_THAT(
        run({u"import"_s, u"all.json"_s, u"--name"_s, u"One"_s, u"--code"_s, u"ASH,RMS"_s}).err,
        HasSubstr("--name names one set, and the files hold 2"));
    EXPECT_EQ(QStringList(u"all.json"_s), files());
    EXPECT_EQ("Ash Tarn: written\n", run({u"import"_s, u"all.json"_s, u"--code"_s, u"ash"_s}).out);
    EXPECT_EQ("Reed Marsh: written\nAsh Tarn: up to date\n",
              run({u"import"_s, u"all.json"_s, u"--code"_s, u"RMS"_s, u"ASH"_s}).out);
}

TEST_F(Importing, MakesACubeAndASetFromATable) {
    put(u"RMS.json"_s, reedMarsh());
    QByteArray list;
    QByteArray table = "name\trarity\tcolour\n";
    for (const std::string name :
         {"Pike King", "Fish aa", "Fish bb", "Fish cc", "Fish dd", "Fish ee", "Fish ff", "Fish gg",
          "Fish hh", "Fish ii", "Fish jj", "Fish kk", "Fish ll", "Fish mm", "Fish nn"}) {
        list += "1x " + QByteArray::fromStdString(name) + "\n";
        table += QByteArray::fromStdString(name) + (name == "Pike King" ? "\tR\tU\n"
                                                    : name < "Fish d"   ? "\tU\tU\n"
                                                                        : "\tC\tU\n");
    }
    put(u"pond.txt"_s, list);
    put(u"Tarn.tsv"_s, table);
    const Ending ending =
        run({u"import"_s, u"pond.txt"_s, u"Tarn.tsv"_s, u"--cards"_s, u"RMS.json"_s});
    EXPECT_EQ("pond: written\nTarn: written\n", ending.out) << ending.err;
    EXPECT_EQ("", run({u"check"_s}).out);
    EXPECT_THAT(run({u"show"_s, u"pond"_s, u"fish AA"_s}).out,
                HasSubstr("Fish aa\nuncommon, colour U\nCreature \xE2\x80\x94 Fish\n"));
    EXPECT_THAT(run({u"show"_s, u"Tarn"_s}).out, HasSubstr("rare     U Pike King"));
    EXPECT_EQ("Pike King\nrare, colour U\n", run({u"show"_s, u"Tarn"_s, u"pike"_s}).out);
    const std::string fish = run({u"show"_s, u"Tarn"_s, u"FISH"_s}).out;
    EXPECT_EQ(14, std::count(fish.begin(), fish.end(), '\n'));

    put(u"pond.txt"_s, list + "Newt\n");
    const Ending unknown = run({u"import"_s, u"pond.txt"_s, u"--cards"_s, u"RMS.json"_s});
    EXPECT_EQ(1, unknown.status);
    EXPECT_THAT(unknown.err, HasSubstr("hold no card \"Newt\"; mend the name or add its set, "
                                       "line 16\n"));
}

TEST_F(Importing, LeavesNothingOfDamagedFiles) {
    put(u"cut.json"_s, reedMarsh().chopped(1));
    put(u"wrong.json"_s, "{\"data\":[1,2}");
    put(u"empty.json"_s, "");
    put(u"none.json"_s, "{}");
    const std::pair<QString, const char*> cases[] = {
        {u"cut.json"_s, "cut.json: the file breaks off; fetch it again, byte "},
        {u"wrong.json"_s, "wrong.json: this is no JSON ("},
        {u"empty.json"_s, "empty.json: the file breaks off; fetch it again, byte 0\n"},
        {u"none.json"_s, "none.json: holds no set with cards\n"},
        {u"gone.json"_s, "gone.json: cannot be read"},
        {u"."_s, ".: cannot be read: it is a folder"},
    };
    const QStringList before = files();
    for (const auto& [file, line] : cases) {
        const Ending ending = run({u"import"_s, file});
        EXPECT_EQ(1, ending.status) << line;
        EXPECT_THAT(ending.err, HasSubstr(line));
        EXPECT_THAT(ending.err, HasSubstr("\npackwise-sets: nothing was written\n"));
    }
    EXPECT_EQ(before, files());
    EXPECT_TRUE(registered().isEmpty());
}

TEST_F(Importing, DealsShowsAndRemovesASet) {
    put(u"RMS.json"_s, reedMarsh());
    run({u"import"_s, u"RMS.json"_s, u"--into"_s, u"."_s});
    const QStringList deal = {u"deal"_s, u"reed marsh"_s, u"-n"_s, u"3"_s, u"--seed"_s, u"5"_s};
    const Ending packs = run(deal);
    EXPECT_EQ(45U, std::count(packs.out.begin(), packs.out.end(), 'U'));
    EXPECT_THAT(packs.out, HasSubstr("\nPack 3\n  U Pike King\n"));
    EXPECT_EQ(packs.out, run(deal).out);
    EXPECT_NE(packs.out, run(deal + QStringList(u"--real"_s)).out);
    EXPECT_EQ(1, run({u"show"_s, u"Reed Marsh"_s, u"Newt"_s}).status);
    EXPECT_EQ(1, run({u"deal"_s, u"Ash Tarn"_s}).status);
    EXPECT_EQ(2, run({u"deal"_s, u"Reed Marsh"_s, u"-n"_s, u"0"_s}).status);

    EXPECT_EQ("Reed Marsh: removed\n", run({u"remove"_s, u"Reed Marsh"_s}).out);
    EXPECT_EQ(QStringList(u"RMS.json"_s), files());
    EXPECT_TRUE(registered().isEmpty());
    EXPECT_THAT(run({u"remove"_s, u"Reed Marsh"_s}).err, HasSubstr("there is no such set"));
}

TEST_F(Importing, MakesTheFolderAndTellsHowASetIsNamed) {
    put(u"RMS.json"_s, reedMarsh().replace("Reed Marsh", "Reeds: A Marsh"));
    const QStringList import = {u"import"_s, u"RMS.json"_s, u"--into"_s, u"new/cards"_s};
    const Ending refused = run(import + QStringList{u"--name"_s, u"\u00C6lks"_s});
    EXPECT_THAT(refused.err, HasSubstr("\nRMS.json: give the set another name with --name\n"));
    EXPECT_FALSE(QFile::exists(dir_.filePath(u"new"_s)));
    const Ending first = run(import + QStringList(u"--no-register"_s));
    EXPECT_EQ("new/cards: a new folder\nReeds A Marsh: written\n", first.out);
    EXPECT_TRUE(registered().isEmpty());
    EXPECT_THAT(first.err, HasSubstr("called \"Reeds A Marsh\", or as --name says"));
    EXPECT_EQ("Reeds A Marsh: up to date\n", run(import).out);
    EXPECT_THAT(run(import + QStringList{u"--name"_s, u"ReedsA Marsh"_s}).err,
                HasSubstr("give another name with --name\n"));
    const Ending inTheWay = run({u"import"_s, u"RMS.json"_s, u"--into"_s, u"RMS.json/x"_s});
    EXPECT_EQ(1, inTheWay.status);
    EXPECT_THAT(inTheWay.err, HasSubstr("RMS.json/x: this folder cannot be made\n"));
}

}  // namespace
}  // namespace packwise::sets
