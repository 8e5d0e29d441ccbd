// From an MTGJSON set to a card set: which of its cards are dealt, and how many to a pack.
#pragma once

#include "sets/mtgjson.h"
#include "sets/textsource.h"

namespace packwise::sets {

// A set of the given display name (UTF-8; empty: the set's own). Sheets that hold cards of other
// sets are dealt from what they hold of this one. The faults' places name card and number.
ReadSource setFromMtgJson(const MtgSet& set, const std::string& displayName);

// Cards by rarity in a pack for which no source tells them. By Pool.
inline constexpr std::array<int, 3> kUsualPack = {1, 3, 11};

}  // namespace packwise::sets
