// What a player who drafts by himself knows of a card, and how much it is worth to him.
#pragma once

#include "engine/cardset.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace packwise {

// The five colours, in the order in which land is named: black, blue, green, red, white.
inline constexpr std::string_view kColorLetters = "BUGRW";
inline constexpr std::size_t kManaColors = kColorLetters.size();

// A set of colours; bit i stands for kColorLetters[i].
using ColorSet = unsigned;
inline constexpr ColorSet kAllColors = (1U << kManaColors) - 1;

constexpr ColorSet colorBit(std::size_t color) {
    return 1U << color;
}
constexpr bool isWithin(ColorSet colors, ColorSet others) {
    return (colors & ~others) == 0;
}

enum class CardKind { Unknown, Creature, Land, Other };
enum class Rarity { Unknown, Common, Uncommon, Rare };

struct CardFacts {
    std::string name;     // without the colour letter
    ColorSet colors = 0;  // what it takes to play it; none for what anybody can play, all five
                          // for a card of several colours whose cost is not known
    std::array<int, kManaColors> pips{};  // symbols of each colour in the cost; 1 where unknown
    Rarity rarity = Rarity::Unknown;
    CardKind kind = CardKind::Unknown;
    std::optional<int> cost;  // total mana, an X counted as nothing
};

// The facts of a card token. `record` is its record in the set's card file, or null when that is
// not at hand; the token's letter is then all that is known.
CardFacts factsOf(std::string_view token, const CardRecord* record);

// What the card is worth in a deck that can play it, above 0, about 1 for a common, 3 for a rare.
double worthOf(const CardFacts& card);

}  // namespace packwise
