// Dealing one pack from a set's files.
#pragma once

#include "engine/cardset.h"
#include "protocol/pack.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace packwise {

// A uniform draw u, 0 <= u < 1.
using Draw = std::function<double()>;

// A pack of the set, dealt from its pools: rares, uncommons, commons, no token inside what stands
// there already. Nothing when the .pw file is unusable.
std::optional<Pack> randomPack(const std::filesystem::path& folder, std::string_view setName,
                               const Draw& draw);

// A pack dealt along the lists of the set's order file: third, second, first list. Nothing when
// there is no usable order file.
std::optional<Pack> realPack(const std::filesystem::path& folder, std::string_view setName,
                             const Draw& draw);

struct DealtRound {
    std::vector<Pack> packs;  // none when the set cannot be dealt
    bool alongLists = false;  // how they were dealt
};

// Deals `count` packs of the set, all in the same way and so of the same size: along the lists if
// that is wanted and can be done, else from the pools.
DealtRound dealRound(const std::filesystem::path& folder, std::string_view setName, bool alongLists,
                     int count, const Draw& draw);

enum class SetFault { None, CardsMissing, CardsUnusable, OrderUnusable };

// Whether packs of the set can be dealt, found out by dealing one; with `alongLists` along the
// lists of its order file too. An order file that is missing or empty is no fault: the set is then
// dealt from its pools.
SetFault trySet(const std::filesystem::path& folder, std::string_view setName, bool alongLists,
                const Draw& draw);

// The longest step along a list.
inline constexpr int kMostSheetStep = 21;

// The position after one random step along a list, 1-based: 1 to kMostSheetStep further, round its
// end, and now and then its beginning.
int nextSheetPos(int position, int length, const Draw& draw);

}  // namespace packwise
