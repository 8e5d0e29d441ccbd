#include "bot/picker.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace packwise {

namespace {

// Among cards of one rarity the taste of the day decides.
constexpr double kTaste = 0.3;
// What a colour that is already strong adds to a card before the colours are settled.
constexpr double kLean = 0.8;
// What a card of a strange colour loses once the colours are settled: more than any rare is worth.
constexpr double kStrange = 5.0;
// The part of the draft after which the colours are settled.
constexpr double kSettledAfter = 1.0 / 3;

}  // namespace

std::size_t Picker::choose(const std::vector<CardFacts>& pack) {
    std::size_t best = 0;
    double bestRate = rate(pack.front());
    for (std::size_t row = 1; row < pack.size(); ++row) {
        if (const double its = rate(pack[row]); its > bestRate) {
            best = row;
            bestRate = its;
        }
    }
    return best;
}

void Picker::take(const CardFacts& card) {
    ++taken_;
    const int colors = std::popcount(card.colors);
    for (std::size_t color = 0; color < kManaColors; ++color) {
        if (card.colors & colorBit(color)) {
            strength_[color] += worthOf(card) / colors;
        }
    }
}

ColorSet Picker::favored() const {
    std::array<std::size_t, kManaColors> order;
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return strength_[a] > strength_[b]; });
    return colorBit(order[0]) | colorBit(order[1]);
}

double Picker::rate(const CardFacts& card) {
    const double taste =
        kTaste * static_cast<double>(random_()) / static_cast<double>(std::mt19937_64::max());
    const double settled = std::min(1.0, taken_ / (kSettledAfter * draftLength_));
    double rated = worthOf(card) + taste;
    if (card.colors == 0) {
        return rated;
    }
    if (!isWithin(card.colors, favored())) {
        rated -= kStrange * settled * settled;
    }
    const double strongest = *std::max_element(strength_.begin(), strength_.end());
    if (strongest > 0) {
        double weakest = strongest;  // of the card's colours
        for (std::size_t color = 0; color < kManaColors; ++color) {
            if (card.colors & colorBit(color)) {
                weakest = std::min(weakest, strength_[color]);
            }
        }
        rated += kLean * weakest / strongest * std::min(1.0, taken_ / 4.0);
    }
    return rated;
}

}  // namespace packwise
