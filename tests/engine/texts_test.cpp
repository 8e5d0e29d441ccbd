#include "companions/chatfold.h"
#include "deck/deckfile.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace packwise {
namespace {

using testing::ElementsAre;

constexpr std::string_view kStamp = "11/18/2026 6:25:38 AM";

TEST(DeckFile, CountsDeckDoubleSideboardOnceAndTheHeaderAgainst) {
    std::vector<std::string> deck(17, "Swamp");
    deck.insert(deck.end(), 23, "Island");
    const DeckFile file = makeDeckFile(kStamp, deck, {"Forest", "Plains"});
    EXPECT_EQ(file.code, 44281);
    EXPECT_EQ(codeOfDeckFile(file.text), 44281);
    EXPECT_EQ(std::count(file.text.begin(), file.text.end(), '\n'), 43);

    EXPECT_EQ(makeDeckFile(kStamp, {"Snow-Covered Swamp"}, {"\xC6ther Fox"}).text,
              "//NAME: Packwise deck 11/18/2026 6:25:38 AM\r\n"
              "    1 Snow-Covered Swamp\r\n"
              "SB: 1 \xC6ther Fox\r\n");
    EXPECT_EQ(makeDeckFile(kStamp, {}, {"\xFF"}).code, 255 - 2379);
    EXPECT_EQ(codeOfDeckFile("no deck"), std::nullopt);
}

TEST(ChatFold, CutsBehindTheLastBlankElseAtTheWidth) {
    const std::string word(40, 'x');
    EXPECT_THAT(foldChat(word.substr(0, 31), 32), ElementsAre(word.substr(0, 31)));
    EXPECT_THAT(foldChat(word.substr(0, 32), 32), ElementsAre(word.substr(0, 32), ""));
    EXPECT_THAT(foldChat("abcd " + word.substr(0, 35), 32),
                ElementsAre("abcd ", word.substr(0, 32), "xxx"));
    EXPECT_THAT(foldChat("one two three", 8), ElementsAre("one two ", "three"));
    EXPECT_THAT(foldChat("one two  three", 8), ElementsAre("one two ", " three"));
    EXPECT_THAT(foldChat("", 32), ElementsAre(""));
    EXPECT_THAT(foldChat("ab", 0), ElementsAre("a", "b", ""));
}

}  // namespace
}  // namespace packwise
