#include "engine/cardset.h"

#include "engine/samplefiles.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using namespace sample;
using testing::ElementsAre;

TEST(SetFiles, TheNameLosesItsBlanksAndIsCutToEight) {
    EXPECT_EQ(setFileBase("Ice Age"), "IceAge");
    EXPECT_EQ(setFileBase("Alliances"), "Alliance");
    EXPECT_EQ(setFileBase(" A B C D E F G H I"), "ABCDEFGH");
    EXPECT_EQ(setFileBase(""), "");
}

TEST(SetFiles, AreFoundAsSpelledThenByTheOnlyNameThatDiffersInCase) {
    const TempFolder folder;
    const auto found = [&folder](std::string_view set) {
        return setFilePath(folder.path(), set, kCardFileExtension).filename().string();
    };
    folder.write("iceage.PW", "lower");
    EXPECT_EQ(found("Ice Age"), "iceage.PW");
    folder.write("ICEAGE.pw", "upper");
    EXPECT_EQ(found("Ice Age"), "IceAge.pw") << "two candidates are none";
    folder.write("IceAge.pw", "as spelled");
    EXPECT_EQ(found("Ice Age"), "IceAge.pw");
    EXPECT_EQ(found("Iceland"), "Iceland.pw");
    create_directory(folder.path() / "ICELAND.pw");
    EXPECT_EQ(found("Iceland"), "Iceland.pw") << "a folder is no candidate";
    folder.write("iceLand.pw", "the only file");
    folder.write("\xFF.pw", "a name that is no text");
    EXPECT_EQ(found("Iceland"), "iceLand.pw");

    folder.write(std::filesystem::path(u8"\u00C6ther\u20AC.pw"), "beyond ASCII");
    EXPECT_TRUE(exists(setFilePath(folder.path(), "\xC6ther\x80", kCardFileExtension)));
    EXPECT_TRUE(exists(setFilePath(folder.path(), "\xE6THER\x80", kCardFileExtension)));
    EXPECT_FALSE(readCardPools(setFilePath(folder.path() / "x", "../Ice", kCardFileExtension)));
}

TEST(CardPools, HoldTheTokensByMarkInFileOrder) {
    const TempFolder folder;
    const auto pools = readCardPools(folder.write(
        "a.pw", header(1, 0, 2) + record("Fox", "-", "G") + record("Hill", ".", "L") +
                    record("Sun", "+", "W") + record("Owl", "-", "U") + end() + "rest"));
    ASSERT_TRUE(pools);
    EXPECT_THAT(pools->counts, ElementsAre(1, 0, 2));
    EXPECT_THAT(pools->tokens,
                ElementsAre(ElementsAre("WSun"), ElementsAre(), ElementsAre("GFox", "UOwl")));

    const auto withEnd =
        readCardPools(folder.write("b.pw", header(0, 0, 1) + record("END", "-", "B")));
    ASSERT_TRUE(withEnd);
    EXPECT_THAT(withEnd->tokens[2], ElementsAre("BEND"));
}

TEST(CardPools, RefuseEveryDamage) {
    const TempFolder folder;
    const std::string fox = record("Fox", "-");
    const auto many = [](int cards) {
        std::string bytes = header(0, 0, 1);
        for (int i = 0; i < cards; ++i) {
            bytes += record("Card " + std::to_string(i), "-");
        }
        return bytes + end();
    };
    EXPECT_TRUE(readCardPools(folder.write("a.pw", many(256))));
    for (const auto& [fault, bytes] : std::vector<std::pair<const char*, std::string>>{
             {"empty", ""},
             {"no END", header(0, 0, 1) + fox},
             {"mark of two", header(0, 0, 1) + fox + record("Owl", "--") + end()},
             {"empty mark", header(0, 0, 1) + fox + record("Owl", "") + end()},
             {"unknown mark", header(0, 0, 1) + fox + record("Owl", "*") + end()},
             {"bad mark of END", header(0, 0, 1) + fox + end("x")},
             {"negative count", header(-1, 0, 1) + fox + end()},
             {"counts over 15", header(8, 0, 8) + fox + end()},
             {"no cards asked", header(0, 0, 0) + fox + end()},
             {"empty pool", header(1, 0, 1) + fox + end()},
             {"too few different", header(0, 0, 2) + fox + fox + end()},
             {"257 of a mark", many(257)},
             {"separator in a name", header(0, 0, 1) + fox + record("A|B", "-") + end()},
             {"no colour", header(0, 0, 1) + fox + record("Owl", "-", "") + end()},
             {"unknown colour", header(0, 0, 1) + fox + record("Owl", "-", "u") + end()},
             {"colour of two", header(0, 0, 1) + fox + record("Owl", "-", "UB") + end()},
             {"no name", header(0, 0, 1) + fox + record("", "-") + end()},
             {"name too long", header(0, 0, 1) + fox + record(std::string(4000, 'x'), "-") + end()},
             {"terminator in a name", header(0, 0, 1) + fox + record("A~B", "-") + end()},
         }) {
        EXPECT_FALSE(readCardPools(folder.write("a.pw", bytes))) << fault;
    }
    const auto huge = folder.write("a.pw", many(20));
    resize_file(huge, std::uintmax_t{65} * 1024 * 1024);
    EXPECT_FALSE(readCardPools(huge));
    EXPECT_EQ(scanForCard(huge, "Card 1")->rarity, "");
    EXPECT_FALSE(readCardPools(folder.path() / "none.pw"));
    EXPECT_FALSE(readCardPools(folder.path()));
}

TEST(CardFile, CutAtEveryByteIsNeverReadPastAndDamagedWithoutTheMarkOfItsEnd) {
    const TempFolder folder;
    const std::string whole =
        header(0, 0, 1) + record("Fox", "-") + record("Owl", ".", "U", "A \xE9") + end();
    ASSERT_TRUE(readCardPools(folder.write("a.pw", whole)));
    const std::size_t afterMark = whole.size() - end().size() + number16(3).size() + 3 + 3;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto file = folder.write("a.pw", whole.substr(0, length));
        EXPECT_EQ(readCardPools(file).has_value(), length >= afterMark) << length;
        const auto card = scanForCard(file, "None");
        ASSERT_TRUE(card) << length;
        EXPECT_EQ(card->rarity, length >= afterMark ? "." : "") << length;
    }
    const auto cut =
        scanForCard(folder.write("a.pw", whole.substr(0, 6 + 5 + 3 + 3 + 4 + 3)), "Fox");
    EXPECT_EQ(cut->name + cut->rarity + cut->color + cut->cost + cut->type, "Fox-U1U");
}

TEST(CardFile, LengthsOfFieldsHaveTwoBytesWithoutASign) {
    const TempFolder folder;
    const std::string longest(3999, 'N');
    for (const std::size_t length : {255U, 256U, 600U, 32767U, 32768U, 65535U}) {
        const std::string text(length, 't');
        const auto file =
            folder.write("a.pw", header(0, 0, 2) + record("Fox", "-", "G", text) +
                                     record(longest, "-") + record("Hill", ".", "L", text) + end());
        EXPECT_THAT(readCardPools(file).value_or(CardPools()).tokens[2],
                    ElementsAre("GFox", "U" + longest))
            << length;
        const auto hill = scanForCard(file, "Hill");
        ASSERT_TRUE(hill);
        EXPECT_EQ(hill->text.size(), length);
        EXPECT_EQ(hill->pt, "1/1");
    }
}

TEST(CardScan, FindsTheCardElseTheEndElseTheDamage) {
    const TempFolder folder;
    const auto file = folder.write("a.pw", header(-5, 99, 0) + record("Fox Lord", "-") +
                                               record("Fox", ".", "G", "Bites.") +
                                               record("Owl", "=") + end() + record("Late", "-"));
    const auto fox = scanForCard(file, "Fox");
    ASSERT_TRUE(fox);
    EXPECT_EQ(fox->name + fox->rarity + fox->color + fox->cost + fox->type + fox->text + fox->pt,
              "Fox.G1UCreatureBites.1/1");
    EXPECT_EQ(scanForCard(file, "fox")->name, "END");
    EXPECT_EQ(scanForCard(file, "Late")->name, "END");
    const auto bad =
        folder.write("b.pw", header(0, 0, 0) + record("Fox", "?") + record("Owl", "-"));
    EXPECT_EQ(scanForCard(bad, "Owl")->rarity, "?");
    EXPECT_FALSE(scanForCard(folder.path() / "none.pw", "Fox"));
}

std::string list(char letter, int lines, int different) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        text += letter + std::string("Card ") + std::to_string(i % different) + "\n";
    }
    return text;
}

TEST(OrderFile, IsReadLineByLineWhateverItsLineEnds) {
    const TempFolder folder;
    const std::string body = list('U', 21, 7) + list('R', 22, 7) + "GLast  one";
    for (const std::string& text :
         {"1,3,0\n21,22,1\n" + body, "01 3  0 \n 21, 22 ,1\n" + body + "\nBehind\n",
          "1\n3\n0\n21\n22\n1\n" + body + "\n"}) {
        const auto order = readOrderFile(folder.write("a.ord", text));
        ASSERT_TRUE(order) << text.substr(0, 20);
        EXPECT_THAT(order->counts, ElementsAre(1, 3, 0));
        EXPECT_EQ(order->lists[0].size(), 21U);
        EXPECT_EQ(order->lists[1].at(21), "RCard 0");
        EXPECT_THAT(order->lists[2], ElementsAre("GLast  one"));
    }
    EXPECT_EQ(readOrderFile(folder.write("a.ord", wholeOrder("\r\n")))->lists,
              readOrderFile(folder.write("b.ord", wholeOrder("\n")))->lists);
}

TEST(OrderFile, RefusesWhatCannotBeDealtFrom) {
    const TempFolder folder;
    const std::string full = list('U', 21, 21);
    for (const auto& [fault, text] : std::vector<std::pair<const char*, std::string>>{
             {"empty", ""},
             {"no lengths", "1,0,0\n"},
             {"two counts", "1,0\n21,0,0\n" + full},
             {"four counts", "1,0,0,0\n21,0,0\n" + full},
             {"text for a number", "1,x,0\n21,0,0\n" + full},
             {"negative count", "2,-1,0\n21,0,0\n" + full},
             {"negative length", "1,0,0\n21,-1,0\n" + full},
             {"counts over 15", "16,0,0\n21,0,0\n" + full},
             {"nothing asked", "0,0,0\n21,0,0\n" + full},
             {"short list", "1,0,0\n20,0,0\n" + full},
             {"too few lines", "1,0,0\n22,0,0\n" + full},
             {"length beyond all", "1,0,0\n2000000000,0,0\n" + full},
             {"too few different", "8,0,0\n21,0,0\n" + list('U', 21, 7)},
             {"card of one character", "1,0,0\n22,0,0\n" + full + "U\n"},
             {"separator in a card", "1,0,0\n22,0,0\n" + full + "UA|B\n"},
             {"card too long", "1,0,0\n22,0,0\n" + full + std::string(4001, 'U') + "\n"},
         }) {
        EXPECT_FALSE(readOrderFile(folder.write("a.ord", text))) << fault;
    }
    EXPECT_FALSE(readOrderFile(folder.path() / "none.ord"));

    const std::string whole = "1,0,0\n21,0,0\n" + full;
    for (std::size_t length = 0; length < whole.size() - std::string("UCard 20\n").size() + 1;
         ++length) {
        EXPECT_FALSE(readOrderFile(folder.write("a.ord", whole.substr(0, length)))) << length;
    }
}

}  // namespace
}  // namespace packwise
