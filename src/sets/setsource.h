// A card set in memory, between whatever it was read from and the files it becomes. Text is bytes
// in Windows-1252.
#pragma once

#include "engine/cardset.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace packwise::sets {

struct SetSource {
    std::string displayName;
    std::array<int, 3> counts{};  // by Pool: cards in one pack
    std::vector<CardRecord> cards;
    std::vector<double> weights;  // by card: its share of its sheet; empty: all the same
    std::optional<OrderFile> order;
};

// Something wrong with a set or a file, for one line "file: what, where".
struct Fault {
    std::string what;
    std::string where;  // "line 12" or "record 3 (First Card)"; may be empty
    bool warning = false;
};

}  // namespace packwise::sets
