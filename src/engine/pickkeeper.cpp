#include "engine/pickkeeper.h"

#include <algorithm>

namespace packwise {

namespace {

// Far more than the longest draft of real cards holds.
constexpr std::size_t kMostSeenBytes = kMostPickText / 4;

std::vector<std::string> namesOf(const Pack& pack) {
    std::vector<std::string> names = pack.cards();
    for (std::string& token : names) {
        token.erase(0, 1);
    }
    return names;
}

}  // namespace

void PickKeeper::seat(int position, std::string_view name, bool isSelf) {
    if (position < 0 || position >= kSeats) {
        return;
    }
    const auto place = static_cast<std::size_t>(position);
    log_.players.resize(std::max(log_.players.size(), place + 1));
    log_.players[place] = name;
    if (isSelf) {
        log_.self = position;
    }
}

void PickKeeper::round(std::string_view text) {
    const int number = readNumber(text.substr(0, text.find(':'))).value_or(0);
    set_ = number >= 1 && number <= kMostPacks ? sets_[static_cast<std::size_t>(number - 1)] : "";
    ++packs_;
    picks_ = 0;
    lying_ = {};
}

void PickKeeper::pack(const Pack& pack) {
    if (format_ == 'B' && !pack.empty()) {
        see(pack, {}, -1);
    } else if (format_ == 'R') {
        lying_ = pack;
        picks_ = 0;
    }
}

void PickKeeper::take(std::string_view token) {
    if (format_ != 'B' || log_.packs.empty() || log_.packs.back().taken >= 0) {
        return;
    }
    SeenPack& seen = log_.packs.back();
    const auto card = std::ranges::find(seen.cards, token.substr(1));
    if (card != seen.cards.end()) {
        seen.taken = static_cast<int>(card - seen.cards.begin());
    }
}

void PickKeeper::takeRow(int position, int row) {
    if (format_ != 'R' || row < 0 || row >= lying_.size()) {
        return;
    }
    const auto place = static_cast<std::size_t>(position);
    const bool isKnown = place < log_.players.size() && !log_.players[place].empty();
    see(lying_, isKnown ? log_.players[place] : "?", row);
    lying_.remove(row);
}

void PickKeeper::see(const Pack& pack, const std::string& player, int taken) {
    ++picks_;
    seenBytes_ += pack.text().size() + player.size() + set_.size();
    const bool isOfADraft = packs_ >= 1 && packs_ <= kMostSeenPacks && picks_ <= kMostCardsInPack &&
                            log_.packs.size() < kMostTurns && seenBytes_ <= kMostSeenBytes;
    if (isOfADraft) {
        log_.packs.push_back({packs_, picks_, set_, player, namesOf(pack), taken});
    }
}

}  // namespace packwise
