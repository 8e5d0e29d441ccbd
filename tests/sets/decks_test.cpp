#include "engine/deckfile.h"
#include "sets/programfixture.h"

namespace packwise::sets {
namespace {

class Decks : public Program {
protected:
    void putDeck(const QString& file, const std::string& card) const {
        QDir(dir_.path()).mkpath(QFileInfo(file).path());
        put(file, QByteArray::fromStdString(makeDeckFile("now", {card, card}, {}).text));
    }
    QByteArray held(const QString& file) const {
        QFile there(dir_.filePath(file));
        return there.open(QIODevice::ReadOnly) ? there.readAll() : QByteArray("no file");
    }
};

TEST_F(Decks, WorksOutTheCodeOfADeckFile) {
    const DeckFile deck = makeDeckFile("1/2/2026 3:04:05 PM", {"Pike King", "Fish aa"}, {"Newt"});
    put(u"mine.dec"_s, QByteArray::fromStdString(deck.text));
    EXPECT_EQ("mine.dec: " + std::to_string(deck.code) + "\n", run({u"code"_s, u"mine.dec"_s}).out);
    put(u"zero.dec"_s, "//NAME: x\r\nSB: 1 x\r\n");
    EXPECT_EQ("zero.dec: 0\n", run({u"code"_s, u"zero.dec"_s}).out);
    put(u"none.dec"_s, "no deck\n");
    EXPECT_EQ(1, run({u"code"_s, u"none.dec"_s}).status);
}

TEST_F(Decks, ExportsEachAndReplacesNothingUnasked) {
    putDeck(u"a/mine.dec"_s, "Lim-D\xFBl's Cohort");
    putDeck(u"b/Mine.DEC"_s, "Fire/Ice");
    put(u"none.dec"_s, "no deck\n");
    put(u"torn.dec"_s, "//NAME: x\r\n    1 Swamp\r\n  ");
    put(u"odd.dec"_s, "//NAME: x\r\n    1 Swamp\r\nIsland\r\n");
    const QStringList decks{u"a/mine.dec"_s, u"none.dec"_s,   u"odd.dec"_s,
                            u"gone.dec"_s,   u"b/Mine.DEC"_s, u"torn.dec"_s};
    const Ending all = run(QStringList{u"export"_s} + decks +
                           QStringList{u"--to"_s, u"txt"_s, u"--into"_s, u"out"_s});
    EXPECT_EQ(1, all.status);
    EXPECT_EQ("out: a new folder\nout/mine.txt: written\nout/torn.txt: written\n", all.out);
    EXPECT_EQ(
        "none.dec: holds no deck\n"
        "odd.dec: no card of a deck, line 3\n"
        "gone.dec: cannot be read\n"
        "b/Mine.DEC: would take the place of what a/mine.dec became; export it into another "
        "folder\n",
        all.err);
    EXPECT_EQ("2 Lim-D\xC3\xBBl's Cohort\n", held(u"out/mine.txt"_s));

    const QStringList again{u"export"_s, u"b/Mine.DEC"_s, u"--to"_s, u"cod"_s};
    EXPECT_EQ("b/Mine.cod: written\n", run(again).out);
    EXPECT_EQ("b/Mine.cod: up to date\n", run(again).out);
    put(u"b/Mine.cod"_s, "changed by hand");
    const Ending refused = run(again);
    EXPECT_EQ(1, refused.status);
    EXPECT_EQ("b/Mine.cod: is there already; --force replaces it\n", refused.err);
    EXPECT_EQ("changed by hand", held(u"b/Mine.cod"_s));
    EXPECT_EQ(0, run(again + QStringList(u"--force"_s)).status);
    EXPECT_TRUE(held(u"b/Mine.cod"_s).contains("<card number=\"2\" name=\"Fire // Ice\"/>"));
    EXPECT_EQ(2, run({u"export"_s, u"b/Mine.DEC"_s, u"--to"_s, u"Cod"_s}).status);
}

}  // namespace
}  // namespace packwise::sets
