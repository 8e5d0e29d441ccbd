// Both card set files as bytes: written from a set, and read back with the place of every fault.
#pragma once

#include "sets/setsource.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace packwise::sets {

// The .pw file of a set, END record included. No field is longer than 32767 bytes.
std::string cardFileBytes(const SetSource& source);

// An order file.
std::string orderFileBytes(const OrderFile& order);

struct ReadCardFile {
    std::array<int, 3> counts{};    // by Pool
    std::vector<CardRecord> cards;  // up to the END record, or to where the file breaks off
    std::vector<Fault> faults;      // of the format alone
};
ReadCardFile parseCardFile(std::string_view bytes);

struct ReadOrderFile {
    OrderFile order;
    std::array<int, 3> firstLines{};  // 1-based line of the file at which each list begins
    std::vector<Fault> faults;
};
ReadOrderFile parseOrderFile(std::string_view bytes);

}  // namespace packwise::sets
