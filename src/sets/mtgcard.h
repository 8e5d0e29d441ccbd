// From the faces of a card to its record.
#pragma once

#include "sets/mtgjson.h"
#include "sets/nearest.h"

#include <string>
#include <string_view>
#include <vector>

namespace packwise::sets {

// The faces of a card, side "a" first.
using MtgCard = std::vector<const MtgFace*>;

// The cards among the faces, in their order: one for each face without a side or of side "a",
// with the faces linked to it behind in the order of their sides.
std::vector<MtgCard> cardsOf(const std::vector<MtgFace>& faces);

// The name under which a card is dealt: "A // B" for cards whose halves are played alike, the name
// of the front for all others. UTF-8.
const std::string& nameOf(const MtgFace& front);

CardRecord recordOf(const MtgCard& card, Nearest& nearest);

// The mark of a rarity, in lower case; empty when the word is none.
std::string markOfRarity(std::string_view rarity);

// The colour letter of a card of these colours ("W", "U" and so on).
std::string colorOf(const std::vector<std::string>& colors, bool isLand);

}  // namespace packwise::sets
