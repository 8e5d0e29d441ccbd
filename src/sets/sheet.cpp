#include "sets/sheet.h"

#include "sets/rules.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>

namespace packwise::sets {

namespace {

constexpr int kImprovingPasses = 20;
constexpr double kLeastWeight = 1e-9;

// A fixed number from 0 to 1 for a token and a count, so that rows do not repeat in the order of
// the file.
double noise(const std::string& token, int count) {
    std::uint32_t hash = 2166136261U + static_cast<std::uint32_t>(count) * 40503U;
    for (const char c : token) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    hash ^= hash >> 15;
    hash *= 2246822519U;
    return static_cast<double>(hash >> 8) / static_cast<double>(1U << 24);
}

class Layout {
public:
    Layout(const std::vector<SheetCard>& cards, int lines)
        : cards_(cards),
          lines_(lines),
          copies_(cards.size(), 1),
          last_(cards.size(), -lines),
          placed_(cards.size(), 0) {
        shareOut();
        place();
        improve();
    }

    std::vector<std::string> tokens() const {
        std::vector<std::string> result;
        for (const std::size_t card : sheet_) {
            result.push_back(cards_[card].token);
        }
        return result;
    }

private:
    char color(std::size_t card) const { return cards_[card].token.front(); }

    // Copies by weight; at equal claims the first card of every colour comes before the second.
    void shareOut() {
        std::map<char, int> seen;
        std::vector<int> rank;
        for (std::size_t card = 0; card < cards_.size(); ++card) {
            rank.push_back(seen[color(card)]++);
        }
        for (int left = lines_ - static_cast<int>(cards_.size()); left > 0; --left) {
            std::size_t best = 0;
            const auto claim = [&](std::size_t card) {
                return cards_[card].weight / (2.0 * copies_[card] + 1);
            };
            for (std::size_t card = 1; card < cards_.size(); ++card) {
                if (claim(card) > claim(best) ||
                    (claim(card) >= claim(best) && rank[card] < rank[best])) {
                    best = card;
                }
            }
            ++copies_[best];
        }
        for (std::size_t card = 0; card < cards_.size(); ++card) {
            colorCopies_[color(card)] += copies_[card];
        }
    }

    // Copies of a card that are nearer than this are too near.
    int leastGap(std::size_t card) const { return lines_ / (2 * copies_[card]); }

    double score(std::size_t card, int position) const {
        const double share = static_cast<double>(position + 1) / lines_;
        double value = share * copies_[card] - placed_[card];
        value += share * colorCopies_.at(color(card)) - colorPlaced_.at(color(card));
        value += 0.5 * noise(cards_[card].token, placed_[card]);
        for (const int back : {1, kSheetWidth}) {
            if (position >= back &&
                color(sheet_[static_cast<std::size_t>(position - back)]) == color(card)) {
                value -= 10;
            }
        }
        return position - last_[card] < leastGap(card) ? value - 20 : value;
    }

    void place() {
        for (const auto& [letter, count] : colorCopies_) {
            colorPlaced_[letter] = 0;
        }
        for (int position = 0; position < lines_; ++position) {
            std::size_t best = 0;
            double bestScore = -std::numeric_limits<double>::infinity();
            for (std::size_t card = 0; card < cards_.size(); ++card) {
                if (placed_[card] == copies_[card]) {
                    continue;
                }
                const double value = score(card, position);
                if (value > bestScore) {
                    best = card;
                    bestScore = value;
                }
            }
            sheet_.push_back(best);
            last_[best] = position;
            ++placed_[best];
            ++colorPlaced_[color(best)];
        }
    }

    std::size_t at(std::size_t position, int step) const {
        return sheet_[static_cast<std::size_t>((static_cast<int>(position) + step + lines_) %
                                               lines_)];
    }

    // What is wrong around a position; the sheet's end runs on into its start.
    int cost(std::size_t position) const {
        const std::size_t card = sheet_[position];
        int sum = 0;
        for (const int step : {1, -1, kSheetWidth, -kSheetWidth}) {
            if (lines_ > kSheetWidth && color(at(position, step)) == color(card)) {
                ++sum;
            }
        }
        for (int step = 1; step < leastGap(card); ++step) {
            sum += at(position, step) == card ? 4 : 0;
            sum += at(position, -step) == card ? 4 : 0;
        }
        return sum;
    }

    bool swapWithBest(std::size_t position) {
        for (std::size_t other = 0; other < sheet_.size(); ++other) {
            const int before = cost(position) + cost(other);
            std::swap(sheet_[position], sheet_[other]);
            if (cost(position) + cost(other) < before) {
                return true;
            }
            std::swap(sheet_[position], sheet_[other]);
        }
        return false;
    }

    void improve() {
        bool better = true;
        for (int pass = 0; better && pass < kImprovingPasses; ++pass) {
            better = false;
            for (std::size_t position = 0; position < sheet_.size(); ++position) {
                better = (cost(position) > 0 && swapWithBest(position)) || better;
            }
        }
    }

    const std::vector<SheetCard>& cards_;
    int lines_;
    std::vector<int> copies_;
    std::vector<int> last_;  // the position of each card's latest copy
    std::vector<int> placed_;
    std::map<char, int> colorCopies_;
    std::map<char, int> colorPlaced_;
    std::vector<std::size_t> sheet_;  // card by position
};

}  // namespace

std::vector<std::string> layOutSheet(const std::vector<SheetCard>& cards, int lines) {
    return cards.empty() ? std::vector<std::string>() : Layout(cards, lines).tokens();
}

void layOutSheets(SetSource& source) {
    OrderFile order;
    for (std::size_t list = 0; list < order.lists.size(); ++list) {
        const Pool pool = kPools.at(kPools.size() - 1 - list);
        std::vector<SheetCard> cards;
        for (std::size_t i = 0; i < source.cards.size(); ++i) {
            const CardRecord& card = source.cards[i];
            if (card.rarity == poolMark(pool)) {
                const double weight = source.weights.empty() ? 1 : source.weights[i];
                cards.push_back({card.color + card.name, std::max(weight, kLeastWeight)});
            }
        }
        const int rows = (static_cast<int>(cards.size()) + kSheetWidth - 1) / kSheetWidth;
        order.counts.at(list) = source.counts.at(static_cast<std::size_t>(pool));
        order.lists.at(list) = layOutSheet(cards, std::max(kSheetLines, rows * kSheetWidth));
    }
    source.order = std::move(order);
}

}  // namespace packwise::sets
