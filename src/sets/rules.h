// What every card set must keep to, wherever it comes from.
#pragma once

#include "sets/setsource.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace packwise::sets {

// Where the card of that index stands in its source.
using PlaceOf = std::function<std::string(std::size_t card)>;

// Bad or double names, bad marks and colours.
std::vector<Fault> cardFaults(const std::vector<CardRecord>& cards, const PlaceOf& placeOf);

// One warning, or none, about cards whose colour and name stand inside another's, so that the
// dealer takes the one for the other.
std::vector<Fault> shadowWarning(const std::vector<CardRecord>& cards, const PlaceOf& placeOf);

// Pools that are too large, or that cannot fill a pack of these counts (by Pool), and packs of no
// or of too many cards.
std::vector<Fault> packFaults(const std::array<int, 3>& counts,
                              const std::vector<CardRecord>& cards);

// A display name that names no file on every system.
std::vector<Fault> displayNameFaults(std::string_view displayName);

// Takes out of a display name those characters that keep the files from being named after it: of
// the ones that no file name may have, all in its first eight letters. A warning if there were any.
std::vector<Fault> mendDisplayName(std::string& displayName);

// All of the above but what is wrong with its packs.
std::vector<Fault> setFaults(const SetSource& set, const PlaceOf& placeOf);

// "common", "uncommon" or "rare".
std::string_view poolName(Pool pool);

// The mark of a pool: "-", "=" or "+".
std::string_view poolMark(Pool pool);

inline constexpr std::array<Pool, 3> kPools = {Pool::Rare, Pool::Uncommon, Pool::Common};

}  // namespace packwise::sets
