#include "sets/textsource.h"

#include "sets/setstest.h"

namespace packwise::sets {
namespace {

constexpr const char* kHead = "set Small Set\npack 1 common\n== common blue\n";

TEST(TextSource, BecomesCardsInWindows1252) {
    const ReadSource read = readTextSource(
        "# a comment\r\nset Small Set\r\npack 0 rare, 1 uncommon,1 common\r\n\r\n== common blue\r\n"
        "L\xC3\xB6ss Heron :: 1U :: Creature - Bird :: 1/2\r\n    Flying\r\n    \xC5\x92uvre.\r\n"
        "== uncommon land\r\nGate of Ysk ::  :: Land\r\n");
    EXPECT_TRUE(read.faults.empty());
    EXPECT_EQ("Small Set", read.source.displayName);
    EXPECT_THAT(read.source.counts, ElementsAre(0, 1, 1));
    ASSERT_EQ(2U, read.source.cards.size());
    const CardRecord& bird = read.source.cards[0];
    EXPECT_EQ("L\xF6ss Heron", bird.name);
    EXPECT_EQ("-U", bird.rarity + bird.color);
    EXPECT_EQ("1U", bird.cost);
    EXPECT_EQ("Creature - Bird", bird.type);
    EXPECT_EQ("Flying\n\x8Cuvre.", bird.text);
    EXPECT_EQ("1/2", bird.pt);
    const CardRecord& gate = read.source.cards[1];
    EXPECT_EQ("Gate of Ysk=L", gate.name + gate.rarity + gate.color + gate.cost + gate.pt);
}

TEST(TextSource, IsRefusedWithTheLineOfTheFault) {
    const std::string head = kHead;
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {head + "A :: U :: Instant\nB | C :: U :: Instant\n", "reserved character", "line 5"},
        {head + " :: U :: Instant\n", "under no card", "line 4"},
        {head + "A :: Instant\n", "a card is", "line 4"},
        {head + "    Flying\n", "under no card", "line 4"},
        {head + "A :: U :: Instant\n    \xE2\x88\x9E\n", "U+221E at column 5", "line 5"},
        {head + "A :: U :: Instant\nBad\xFFutf :: U :: Instant\n", "not UTF-8", "line 5"},
        {head + "== mythic blue\n", "no heading", "line 4"},
        {"set Small Set\npack 1 common\nA :: U :: Instant\n", "before the first", "line 3"},
        {"set Small Set\npack one common\n", "is no count", "line 2"},
        {head + "set Again\nA :: U :: Instant\n", "a name already", "line 4"},
        {"pack 1 common\n== common blue\nA :: U :: Instant\n", "\"set NAME\" is missing", ""},
        {"set Small Set\n== common blue\nA :: U :: Instant\n", "is missing", ""},
        {"set Small Set\npack 2 common\n== common blue\nA :: U :: Instant\n", "asks for 2", ""},
    };
    for (const auto& [text, what, where] : cases) {
        const ReadSource read = readTextSource(QByteArray::fromStdString(text));
        EXPECT_TRUE(holdsFault(read.faults, what, where, false)) << text;
    }
}

}  // namespace
}  // namespace packwise::sets
