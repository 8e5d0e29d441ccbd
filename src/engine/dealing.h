// Dealing one pack from a set's files.
#pragma once

#include "engine/cardset.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace packwise {

// A uniform draw u, 0 <= u < 1.
using Draw = std::function<double()>;

// A pack of the set, dealt from its pools: rares, uncommons, commons, no token inside what stands
// there already. Nothing when the .pw file is unusable.
std::optional<std::string> randomPack(const std::filesystem::path& folder, std::string_view setName,
                                      const Draw& draw);

// A pack dealt along the lists of the set's order file: third, second, first list. Nothing when
// there is no usable order file.
std::optional<std::string> realPack(const std::filesystem::path& folder, std::string_view setName,
                                    const Draw& draw);

enum class SetFault { None, CardsMissing, CardsUnusable, OrderUnusable };

// Whether packs of the set can be dealt, found out by dealing one; with `alongLists` along the
// lists of its order file too. An order file that is missing or empty is no fault: the set is then
// dealt from its pools.
SetFault trySet(const std::filesystem::path& folder, std::string_view setName, bool alongLists,
                const Draw& draw);

// The position after one random step along a list, 1-based.
int nextSheetPos(int position, int length, const Draw& draw);

}  // namespace packwise
