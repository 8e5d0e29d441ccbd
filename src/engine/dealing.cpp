#include "engine/dealing.h"

#include "protocol/framing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

namespace packwise {

namespace {

// A deal looks for a card by chance this often, then among the cards that can still be dealt.
constexpr int kTriesForCard = 256;
// A deal that is stuck, because what it dealt first shuts out the rest, begins anew this often.
constexpr int kTriesForPack = 64;

bool canJoin(const Pack& pack, const std::string& token) {
    return pack.text().find(token) == std::string::npos;
}

// floor(size * u), 0 to size - 1. `size` is not 0.
std::size_t drawIndex(std::size_t size, const Draw& draw) {
    return std::min(static_cast<std::size_t>(static_cast<double>(size) * draw()), size - 1);
}

bool dealFromPool(Pack& pack, const std::vector<std::string>& pool, const Draw& draw) {
    for (int i = 0; i < kTriesForCard; ++i) {
        const std::string& candidate = pool[drawIndex(pool.size(), draw)];
        if (canJoin(pack, candidate)) {
            pack.add(candidate);
            return true;
        }
    }
    std::vector<const std::string*> left;
    for (const std::string& token : pool) {
        if (canJoin(pack, token)) {
            left.push_back(&token);
        }
    }
    if (left.empty()) {
        return false;
    }
    pack.add(*left[drawIndex(left.size(), draw)]);
    return true;
}

bool dealFromList(Pack& pack, const std::vector<std::string>& list, int& position,
                  const Draw& draw) {
    const int length = static_cast<int>(list.size());
    const auto tokenAt = [&list](int place) -> const std::string& {
        return list[static_cast<std::size_t>(place - 1)];
    };
    for (int i = 0; i < kTriesForCard; ++i) {
        position = nextSheetPos(position, length, draw);
        if (canJoin(pack, tokenAt(position))) {
            pack.add(tokenAt(position));
            return true;
        }
    }
    for (int i = 0; i < length; ++i) {
        position = position % length + 1;
        if (canJoin(pack, tokenAt(position))) {
            pack.add(tokenAt(position));
            return true;
        }
    }
    return false;
}

std::optional<Pack> dealPools(const CardPools& pools, const Draw& draw) {
    Pack pack;
    for (const Pool pool : {Pool::Rare, Pool::Uncommon, Pool::Common}) {
        const auto i = static_cast<std::size_t>(pool);
        for (int k = 0; k < pools.counts[i]; ++k) {
            if (!dealFromPool(pack, pools.tokens[i], draw)) {
                return std::nullopt;
            }
        }
    }
    return pack;
}

std::optional<Pack> dealLists(const OrderFile& order, const Draw& draw) {
    Pack pack;
    for (const std::size_t i : {2U, 1U, 0U}) {
        if (order.counts[i] == 0) {
            continue;
        }
        int position = static_cast<int>(drawIndex(order.lists[i].size(), draw)) + 1;
        for (int k = 0; k < order.counts[i]; ++k) {
            if (!dealFromList(pack, order.lists[i], position, draw)) {
                return std::nullopt;
            }
        }
    }
    return pack;
}

template <typename Source>
std::optional<Pack> dealWhole(std::optional<Pack> (*deal)(const Source&, const Draw&),
                              const Source& source, const Draw& draw) {
    std::optional<Pack> pack;
    for (int i = 0; !pack && i < kTriesForPack; ++i) {
        pack = deal(source, draw);
    }
    return pack;
}

}  // namespace

std::optional<Pack> randomPack(const std::filesystem::path& folder, std::string_view setName,
                               const Draw& draw) {
    const auto pools = readCardPools(setFilePath(folder, setName, kCardFileExtension));
    return pools ? dealWhole(dealPools, *pools, draw) : std::nullopt;
}

std::optional<Pack> realPack(const std::filesystem::path& folder, std::string_view setName,
                             const Draw& draw) {
    const auto order = readOrderFile(setFilePath(folder, setName, kOrderFileExtension));
    return order ? dealWhole(dealLists, *order, draw) : std::nullopt;
}

DealtRound dealRound(const std::filesystem::path& folder, std::string_view setName, bool alongLists,
                     int count, const Draw& draw) {
    const auto deal = [&](auto* way) {
        std::vector<Pack> packs;
        for (int i = 0; i < count; ++i) {
            std::optional<Pack> pack = way(folder, setName, draw);
            if (!pack) {
                return std::vector<Pack>();
            }
            packs.push_back(std::move(*pack));
        }
        return packs;
    };
    DealtRound round;
    if (alongLists) {
        round.packs = deal(realPack);
        round.alongLists = !round.packs.empty();
    }
    if (round.packs.empty()) {
        round.packs = deal(randomPack);
    }
    return round;
}

SetFault trySet(const std::filesystem::path& folder, std::string_view setName, bool alongLists,
                const Draw& draw) {
    if (!hasSetFile(folder, setName, kCardFileExtension)) {
        return SetFault::CardsMissing;
    }
    if (!randomPack(folder, setName, draw)) {
        return SetFault::CardsUnusable;
    }
    if (alongLists && hasSetFile(folder, setName, kOrderFileExtension) &&
        !realPack(folder, setName, draw)) {
        std::error_code error;
        const bool isEmpty = std::filesystem::file_size(
                                 setFilePath(folder, setName, kOrderFileExtension), error) == 0;
        return isEmpty ? SetFault::None : SetFault::OrderUnusable;
    }
    return SetFault::None;
}

int nextSheetPos(int position, int length, const Draw& draw) {
    // Running totals of the weights of the steps 1 to 21.
    static constexpr std::array<int, kMostSheetStep> kTotals = {
        2050, 2370, 2435, 2535, 2600, 2610, 2665, 2765, 2820, 2850, 3210,
        3370, 3470, 3510, 3540, 3565, 3585, 3610, 3650, 3750, 4000};
    const int r = static_cast<int>(drawIndex(kTotals.back(), draw)) + 1;
    if (r == 1) {
        return 1;
    }
    const auto step = std::lower_bound(kTotals.begin(), kTotals.end(), r) - kTotals.begin() + 1;
    const int next = position + static_cast<int>(step);
    return next > length ? next - length : next;
}

}  // namespace packwise
