// The card files of a draft's sets, as far as they are at hand.
#pragma once

#include "engine/cardset.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace packwise {

class CardBook {
public:
    // Looks for card files in that folder.
    explicit CardBook(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // The display names of the draft's sets.
    void setSets(const std::vector<std::string>& sets);

    // How many of the draft's sets have a file that can be read.
    int setsAtHand() const { return static_cast<int>(files_.size()); }

    // The record of the card of that name, without colour letter, in the first set that has it;
    // null when none has. Holds until the next call.
    const CardRecord* find(const std::string& name);

private:
    std::filesystem::path folder_;
    std::vector<std::string> sets_;
    std::vector<std::filesystem::path> files_;
    std::unordered_map<std::string, std::optional<CardRecord>> known_;
};

}  // namespace packwise
