// Whether a pack could have come from its set.
#include "engine/dealing.h"
#include "record/check.h"

#include <algorithm>
#include <map>
#include <optional>

namespace packwise {

namespace {

// The tokens of a pack one after the other, and what a deal asks of each: that it does not stand
// inside what is there already.
class Dealt {
public:
    explicit Dealt(const Pack& pack) : cards_(pack.cards()) {}

    // The next token; nothing when there is none, or none that could join the others.
    std::optional<std::string_view> next() {
        if (at_ == cards_.size() || !canJoin(cards_[at_])) {
            return std::nullopt;
        }
        return cards_[at_];
    }
    bool canJoin(const std::string& token) const {
        return before_.text().find(token) == std::string::npos;
    }
    void take() { before_.add(cards_[at_++]); }
    bool isDone() const { return at_ == cards_.size(); }

private:
    std::vector<std::string> cards_;
    std::size_t at_ = 0;
    Pack before_;
};

// The positions of a list, 1-based by index, from which a card has been dealt or passed over.
using Places = std::vector<bool>;

// Where the next card of a list may come from, when the last one may have come from `places`: a
// step on, and further where what stands there cannot join the pack.
Places nextPlaces(const Places& places, const std::vector<std::string>& list, const Dealt& dealt) {
    const int length = static_cast<int>(list.size());
    Places reached(places.size());
    std::vector<int> from;
    for (int place = 1; place <= length; ++place) {
        if (places[static_cast<std::size_t>(place)]) {
            from.push_back(place);
        }
    }
    const auto reach = [&](int place) {
        if (place > length || reached[static_cast<std::size_t>(place)]) {
            return;
        }
        reached[static_cast<std::size_t>(place)] = true;
        if (!dealt.canJoin(list[static_cast<std::size_t>(place - 1)])) {
            from.push_back(place);
        }
    };
    reach(1);
    while (!from.empty()) {
        const int place = from.back();
        from.pop_back();
        for (int step = 1; step <= kMostSheetStep; ++step) {
            reach(place + step > length ? place + step - length : place + step);
        }
    }
    return reached;
}

bool couldComeFromList(Dealt& dealt, const std::vector<std::string>& list, int count) {
    Places places(list.size() + 1, true);  // a deal begins anywhere
    for (int i = 0; i < count; ++i) {
        const auto card = dealt.next();
        if (!card) {
            return false;
        }
        places = nextPlaces(places, list, dealt);
        bool isThere = false;
        for (std::size_t place = 1; place < places.size(); ++place) {
            places[place] = places[place] && list[place - 1] == *card;
            isThere = isThere || places[place];
        }
        if (!isThere) {
            return false;
        }
        dealt.take();
    }
    return true;
}

}  // namespace

bool couldComeFromPools(const Pack& pack, const CardPools& pools) {
    Dealt dealt(pack);
    for (const Pool pool : {Pool::Rare, Pool::Uncommon, Pool::Common}) {
        const auto& tokens = pools.tokens[static_cast<std::size_t>(pool)];
        for (int k = 0; k < pools.counts[static_cast<std::size_t>(pool)]; ++k) {
            const auto card = dealt.next();
            if (!card || std::find(tokens.begin(), tokens.end(), *card) == tokens.end()) {
                return false;
            }
            dealt.take();
        }
    }
    return dealt.isDone();
}

bool couldComeFromLists(const Pack& pack, const OrderFile& order) {
    Dealt dealt(pack);
    return couldComeFromList(dealt, order.lists[2], order.counts[2]) &&
           couldComeFromList(dealt, order.lists[1], order.counts[1]) &&
           couldComeFromList(dealt, order.lists[0], order.counts[0]) && dealt.isDone();
}

void DraftCheck::checkPacks(const std::filesystem::path& folder) {
    std::map<std::string, std::optional<CardPools>> pools;
    std::map<std::string, std::optional<OrderFile>> orders;
    std::map<std::string, int> could;
    int number = 0;
    for (const RecordEvent& event : record_.events) {
        const auto* const dealt = std::get_if<PackDealt>(&event);
        if (!dealt) {
            continue;
        }
        ++number;
        const std::string& set = record_.sets.at(static_cast<std::size_t>(dealt->packIndex));
        if (!pools.contains(set)) {
            pools[set] = readCardPools(setFilePath(folder, set, kCardFileExtension));
            orders[set] = readOrderFile(setFilePath(folder, set, kOrderFileExtension));
        }
        const bool isThere = dealt->alongLists ? orders[set].has_value() : pools[set].has_value();
        if (!isThere) {
            could.try_emplace(set, -1);
        } else if (dealt->alongLists ? couldComeFromLists(dealt->pack, *orders[set])
                                     : couldComeFromPools(dealt->pack, *pools[set])) {
            could.try_emplace(set, 0).first->second += 1;
        } else {
            could.try_emplace(set, 0);
            find(Finding::About::Record,
                 record_.isRochester ? "Pack " + std::to_string(number)
                                     : "Round " + std::to_string(dealt->packIndex + 1) +
                                           ", the pack of " + nameAt(dealt->position),
                 "It cannot be dealt from the files of " + set + " as they are here.");
        }
    }
    for (const auto& [set, packs] : could) {
        if (packs < 0) {
            report_.unchecked.push_back("The packs of " + set + ": the files that they " +
                                        "were dealt from are not here, or cannot be read.");
        } else {
            report_.checked.push_back(std::to_string(packs) + " packs could come from " + set +
                                      '.');
        }
    }
}

}  // namespace packwise
