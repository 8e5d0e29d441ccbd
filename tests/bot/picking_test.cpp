#include "bot/deckplan.h"
#include "bot/picker.h"
#include "support/test.h"

namespace packwise {
namespace {

CardFacts card(char letter, const std::string& name, const char* rarity = "-",
               const char* cost = "", const char* type = "Creature") {
    const CardRecord record{name, rarity, std::string(1, letter), cost, type, "", ""};
    return factsOf(letter + name, &record);
}

TEST(CardFacts, ReadCostsAsTheyAreWritten) {
    struct Case {
        char letter;
        const char* cost;
        int total;
        ColorSet colors;
        std::array<int, kManaColors> pips;  // B U G R W
    };
    for (const Case& c :
         {Case{'U', "2UU", 4, 0b00010, {0, 2, 0, 0, 0}},
          Case{'U', "{10}{U}", 11, 0b00010, {0, 1, 0, 0, 0}},
          Case{'R', "XR", 1, 0b01000, {0, 0, 0, 1, 0}},
          Case{'R', "{X}{X}{R}", 1, 0b01000, {0, 0, 0, 1, 0}},
          Case{'M', "1GW", 3, 0b10100, {0, 0, 1, 0, 1}},
          Case{'M', "{B/R}{B/R}", 2, 0b01001, {2, 0, 0, 2, 0}},
          Case{'W', "{1}{W} // {3}{W}{W}", 2, 0b10000, {0, 0, 0, 0, 1}}, Case{'A', "3", 3, 0, {}},
          Case{'M', "{{{", 0, kAllColors, {1, 1, 1, 1, 1}}}) {
        const CardFacts facts = card(c.letter, "Some Card", "-", c.cost);
        EXPECT_EQ(facts.cost, c.total) << c.cost;
        EXPECT_EQ(facts.colors, c.colors) << c.cost;
        EXPECT_EQ(facts.pips, c.pips) << c.cost;
    }
    const CardFacts unknown = factsOf("MTwo Colours", nullptr);
    EXPECT_EQ(unknown.colors, kAllColors);
    EXPECT_EQ(factsOf("LSome Land", nullptr).colors, 0U);
}

TEST(Picker, TakesTheRareFirstAndItsOwnColoursOnceTheyAreSettled) {
    Picker picker(7);
    const std::vector<CardFacts> pack = {card('B', "Common"), card('G', "Rare", "+"),
                                         card('W', "Uncommon", "=")};
    EXPECT_EQ(picker.choose(pack), 1U);
    for (int i = 0; i < 10; ++i) {
        picker.take(card('B', "Black"));
        picker.take(card('W', "White"));
    }
    EXPECT_EQ(picker.favored(), 0b10001U);
    EXPECT_EQ(picker.choose(pack), 2U);
    const std::vector<CardFacts> late = {card('G', "Rare", "+"), card('M', "Gold", "+", "1GU"),
                                         card('B', "Common"), card('L', "Land", "-", "", "Land")};
    EXPECT_EQ(picker.choose(late), 2U);
}

int count(const std::vector<std::string>& deck, const std::string& name) {
    return static_cast<int>(std::count(deck.begin(), deck.end(), name));
}

TEST(DeckPlan, HoldsFortyCardsWhateverWasPicked) {
    struct Case {
        const char* what;
        std::vector<std::pair<char, int>> picks;  // letter and number of cards
        int spells;
        std::array<int, kManaColors> lands;  // B U G R W
    };
    for (const Case& c : {
             Case{"two colours", {{'B', 12}, {'U', 12}, {'R', 21}}, 23, {9, 8, 0, 0, 0}},
             Case{"one colour", {{'G', 45}}, 23, {0, 0, 17, 0, 0}},
             Case{"too few", {{'G', 10}, {'W', 8}, {'R', 2}, {'U', 1}}, 21, {0, 1, 9, 2, 7}},
             Case{"colourless alone", {{'A', 30}}, 23, {9, 8, 0, 0, 0}},
             Case{"nothing", {}, 0, {20, 20, 0, 0, 0}},
             Case{"strange letters", {{'?', 30}}, 23, {9, 8, 0, 0, 0}},
         }) {
        std::vector<CardFacts> picks;
        for (const auto& [letter, number] : c.picks) {
            for (int i = 0; i < number; ++i) {
                picks.push_back(
                    factsOf(letter + std::string("Card ") + letter + std::to_string(i), nullptr));
            }
        }
        const DeckPlan plan = planDeck(picks);
        EXPECT_EQ(plan.deck.size(), 40U) << c.what;
        std::multiset<std::string> placed(plan.sideboard.begin(), plan.sideboard.end());
        placed.insert(plan.deck.begin(), plan.deck.begin() + c.spells);
        std::multiset<std::string> picked;
        for (const CardFacts& pick : picks) {
            picked.insert(pick.name);
        }
        EXPECT_EQ(placed, picked) << c.what;
        for (std::size_t color = 0; color < kManaColors; ++color) {
            EXPECT_EQ(count(plan.deck, kBasicLands[color]), c.lands[color])
                << c.what << ' ' << kBasicLands[color];
        }
    }
}

TEST(DeckPlan, PrefersItsColoursTheCurveAndTheLandThatTheCostsAskFor) {
    std::vector<CardFacts> picks;
    for (int i = 0; i < 14; ++i) {
        picks.push_back(card('B', "Cheap " + std::to_string(i), "-", "1B"));
        picks.push_back(card('W', "Dear " + std::to_string(i), "-", "5WW"));
    }
    for (int i = 0; i < 6; ++i) {
        picks.push_back(card('W', "Middle " + std::to_string(i), "-", "2W"));
        if (i < 3) {
            picks.push_back(card('R', "Red Rare " + std::to_string(i), "+", "R"));
        }
    }
    picks.push_back(card('M', "Own Gold", "+", "BW"));
    picks.push_back(card('M', "Other Gold", "+", "GU"));
    picks.push_back(card('B', "Spell", "=", "2B", "Sorcery"));
    const DeckPlan plan = planDeck(picks);

    EXPECT_EQ(plan.colors, 0b10001U);
    EXPECT_EQ(count(plan.deck, "Own Gold"), 1);
    EXPECT_EQ(count(plan.deck, "Spell"), 1);
    EXPECT_EQ(count(plan.deck, "Other Gold"), 0);
    std::map<std::string, int> byKind;
    for (const std::string& name : plan.deck) {
        ++byKind[name.substr(0, name.find(' '))];
    }
    EXPECT_EQ(byKind["Red"], 0);
    EXPECT_EQ(byKind["Middle"], 6);  // all of them, though each costs as much as is worth
    EXPECT_LT(byKind["Dear"], 6);    // the dear ones stay few
    EXPECT_GE(count(plan.deck, "Plains"), 5);
    EXPECT_EQ(count(plan.deck, "Swamp") + count(plan.deck, "Plains"), 17);
}

}  // namespace
}  // namespace packwise
