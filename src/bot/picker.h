// Choosing a card from a pack: the best one at first, and more and more the best one of two
// colours.
#pragma once

#include "bot/cardfacts.h"

#include <array>
#include <cstdint>
#include <random>
#include <vector>

namespace packwise {

class Picker {
public:
    // Two pickers of one seed choose alike.
    explicit Picker(std::uint64_t seed) : random_(seed) {}

    // How many cards a player takes in the whole draft, as far as that is known.
    void setDraftLength(int picks) { draftLength_ = picks > 0 ? picks : 1; }

    // The row of the card to take, 0-based. `pack` is not empty.
    std::size_t choose(const std::vector<CardFacts>& pack);

    // The card is the player's now.
    void take(const CardFacts& card);

    // The two colours that the picks favour, so far.
    ColorSet favored() const;

private:
    double rate(const CardFacts& card);

    std::mt19937_64 random_;
    int draftLength_ = 45;
    int taken_ = 0;
    std::array<double, kManaColors> strength_{};  // worth of the picks in each colour
};

}  // namespace packwise
