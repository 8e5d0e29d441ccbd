#include "bot/deckplan.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace packwise {

namespace {

using Rows = std::vector<std::size_t>;  // rows of the picks

// How many of the spells of a sound deck cost up to 1, 2, 3, 4, 5, and 6 or more.
constexpr std::array<int, 6> kCurve = {2, 6, 6, 4, 3, 2};
constexpr int kCreatures = 15;
// What a card loses for each one that its cost, or its kind, is already over.
constexpr double kOverCurve = 0.35;
constexpr double kOverKind = 0.25;

class Curve {
public:
    double fit(const CardFacts& card) const {
        double loss = 0;
        if (card.cost) {
            const std::size_t at = bucket(card);
            loss += kOverCurve * std::max(0, byCost_[at] + 1 - kCurve[at]);
        }
        if (card.kind == CardKind::Creature) {
            loss += kOverKind * std::max(0, creatures_ + 1 - kCreatures);
        } else if (card.kind == CardKind::Other) {
            loss += kOverKind * std::max(0, others_ + 1 - (kSpells - kCreatures));
        }
        return worthOf(card) - loss;
    }

    void add(const CardFacts& card) {
        if (card.cost) {
            ++byCost_[bucket(card)];
        }
        creatures_ += card.kind == CardKind::Creature;
        others_ += card.kind == CardKind::Other;
    }

private:
    static std::size_t bucket(const CardFacts& card) {
        return static_cast<std::size_t>(std::clamp(*card.cost, 1, 6) - 1);
    }

    std::array<int, kCurve.size()> byCost_{};
    int creatures_ = 0;
    int others_ = 0;
};

Rows playable(const std::vector<CardFacts>& picks, ColorSet colors) {
    Rows rows;
    for (std::size_t row = 0; row < picks.size(); ++row) {
        if (isWithin(picks[row].colors, colors)) {
            rows.push_back(row);
        }
    }
    return rows;
}

// Moves cards from `from` to `spells`, the one that fits best each time. Gives what they are
// worth together.
double fill(const std::vector<CardFacts>& picks, Rows& from, Curve& curve, Rows& spells) {
    double worth = 0;
    while (!from.empty() && spells.size() < static_cast<std::size_t>(kSpells)) {
        const auto best =
            std::max_element(from.begin(), from.end(), [&](std::size_t a, std::size_t b) {
                return curve.fit(picks[a]) < curve.fit(picks[b]);
            });
        worth += curve.fit(picks[*best]);
        curve.add(picks[*best]);
        spells.push_back(*best);
        from.erase(best);
    }
    return worth;
}

// How much of a deck two colours give: how many spells, then what they are worth together.
std::pair<std::size_t, double> yieldOf(const std::vector<CardFacts>& picks, ColorSet colors) {
    Curve curve;
    Rows spells;
    Rows own = playable(picks, colors);
    const double worth = fill(picks, own, curve, spells);
    return {spells.size(), worth};
}

ColorSet bestColors(const std::vector<CardFacts>& picks) {
    ColorSet best = 0;
    std::pair<std::size_t, double> bestYield{0, -1.0};
    for (std::size_t one = 0; one < kManaColors; ++one) {
        for (std::size_t two = one + 1; two < kManaColors; ++two) {
            const ColorSet colors = colorBit(one) | colorBit(two);
            if (const auto yield = yieldOf(picks, colors); yield > bestYield) {
                best = colors;
                bestYield = yield;
            }
        }
    }
    return best;
}

// How many of `count` lands each colour gets by its weight, at least one where there is a weight.
std::array<int, kManaColors> share(const std::array<int, kManaColors>& weights, int count) {
    const int sum = std::accumulate(weights.begin(), weights.end(), 0);
    std::array<int, kManaColors> lands{};
    for (int given = 0; given < count; ++given) {
        // The colour that is furthest behind its due of the lands given with this one.
        const auto behind = [&](std::size_t color) {
            return weights[color] && lands[color] == 0
                       ? 1e6 + weights[color]
                       : static_cast<double>(weights[color]) * count / sum - lands[color];
        };
        std::size_t next = 0;
        for (std::size_t color = 1; color < kManaColors; ++color) {
            if (behind(color) > behind(next)) {
                next = color;
            }
        }
        ++lands[next];
    }
    return lands;
}

std::array<int, kManaColors> landWeights(const std::vector<CardFacts>& picks, const Rows& spells,
                                         ColorSet colors) {
    std::array<int, kManaColors> weights{};
    for (const std::size_t row : spells) {
        // A card that takes all five colours is there for want of better; land will not play it.
        if (picks[row].colors != kAllColors) {
            for (std::size_t color = 0; color < kManaColors; ++color) {
                weights[color] += picks[row].pips[color];
            }
        }
    }
    if (std::all_of(weights.begin(), weights.end(), [](int weight) { return weight == 0; })) {
        for (std::size_t color = 0; color < kManaColors; ++color) {
            weights[color] = colors & colorBit(color) ? 1 : 0;
        }
    }
    return weights;
}

}  // namespace

DeckPlan planDeck(const std::vector<CardFacts>& picks) {
    DeckPlan plan;
    plan.colors = bestColors(picks);

    Curve curve;
    Rows spells;
    Rows own = playable(picks, plan.colors);
    fill(picks, own, curve, spells);
    Rows others;
    for (std::size_t row = 0; row < picks.size(); ++row) {
        if (!isWithin(picks[row].colors, plan.colors)) {
            others.push_back(row);
        }
    }
    fill(picks, others, curve, spells);

    std::stable_sort(spells.begin(), spells.end(), [&](std::size_t a, std::size_t b) {
        return picks[a].cost.value_or(0) < picks[b].cost.value_or(0);
    });
    for (const std::size_t row : spells) {
        plan.deck.push_back(picks[row].name);
    }
    const std::array<int, kManaColors> lands =
        share(landWeights(picks, spells, plan.colors), kDeckSize - static_cast<int>(spells.size()));
    for (std::size_t color = 0; color < kManaColors; ++color) {
        plan.deck.insert(plan.deck.end(), static_cast<std::size_t>(lands[color]),
                         kBasicLands[color]);
    }
    std::sort(spells.begin(), spells.end());
    for (std::size_t row = 0; row < picks.size(); ++row) {
        if (!std::binary_search(spells.begin(), spells.end(), row)) {
            plan.sideboard.push_back(picks[row].name);
        }
    }
    return plan;
}

}  // namespace packwise
