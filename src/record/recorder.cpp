#include "record/recorder.h"

#include "protocol/framing.h"

namespace packwise {

namespace {

// Of one kind and seat; a peer that sends more of them tells nothing new.
constexpr int kMostOfAKind = 20;
// Room that is made at the start, for a draft of eight and names of an ordinary length.
constexpr std::size_t kUsualPicks = 360;
constexpr std::size_t kUsualToken = 24;

}  // namespace

// Only the lack of memory can make it fail.
template <class Work>
void Recorder::note(Work work) noexcept {
    if (hasFailed_) {
        return;
    }
    try {
        work();
    } catch (...) {
        hasFailed_ = true;
    }
}

void Recorder::onStart(const std::array<std::string, kSeats>& names) noexcept {
    note([&] {
        names_ = names;
        positions_.fill(-1);
    });
}

void Recorder::onSeated(const DraftPlan& plan) noexcept {
    note([&] {
        record_.version = kProtocolVersion;
        record_.time = now_();
        record_.isRochester = plan.isRochester;
        record_.isTimed = plan.isTimed;
        record_.pickSeconds = plan.isTimed ? plan.pickSeconds : 0;
        record_.isSeatedByChance = plan.isSeatedByChance;
        record_.sets = plan.sets;
        picks_.reserve(kUsualPicks);
        cards_.reserve(kUsualPicks * kUsualToken);
        for (const int seat : plan.seats) {
            const auto at = static_cast<std::size_t>(seat);
            positions_.at(at) = static_cast<int>(record_.players.size());
            record_.players.push_back({names_.at(at), seat});
        }
        isSeated_ = true;
        for (const int seat : lostEarly_) {
            record_.events.emplace_back(PlayerLost{positionOf(seat)});
        }
    });
}

void Recorder::onDealt(int packIndex, const std::vector<Pack>& packs) noexcept {
    note([&] {
        if (hasEnded_) {
            return;
        }
        hasPacks_ = true;
        int position = 0;
        for (const Pack& pack : packs) {
            record_.events.emplace_back(PackDealt{packIndex, position++, alongLists_, pack});
        }
    });
}

void Recorder::onPick(int seat, std::string_view card, PickMaker by) noexcept {
    note([&] {
        if (hasEnded_) {
            return;
        }
        // What a pick itself is like always stands before it.
        auto& unnoted = unnoted_[static_cast<std::size_t>(seat)];
        for (std::size_t what = 0; unnoted.any() && what < kOddities; ++what) {
            if (unnoted[what]) {
                record_.events.emplace_back(
                    OddityNoted{positionOf(seat), static_cast<Oddity>(what)});
                unnoted.reset(what);
            }
        }
        cards_ += card;
        picks_.push_back({record_.events.size(), cards_.size(), positionOf(seat), by});
    });
}

DraftRecord Recorder::record() const {
    DraftRecord whole = record_;
    whole.events.clear();
    std::size_t events = 0;
    const auto addEventsTo = [&](std::size_t end) {
        for (; events < end; ++events) {
            whole.events.push_back(record_.events[events]);
        }
    };
    std::size_t text = 0;
    for (const Pick& pick : picks_) {
        addEventsTo(pick.place);
        whole.events.emplace_back(
            CardTaken{pick.position, cards_.substr(text, pick.textEnd - text), pick.by});
        text = pick.textEnd;
    }
    addEventsTo(record_.events.size());
    return whole;
}

void Recorder::onLoss(int seat) noexcept {
    note([&] {
        if (hasEnded_) {
            return;
        }
        if (isSeated_) {
            record_.events.emplace_back(PlayerLost{positionOf(seat)});
        } else {
            lostEarly_.push_back(seat);
        }
    });
}

void Recorder::onOddity(int seat, Oddity what) noexcept {
    note([&] {
        const auto at = static_cast<std::size_t>(seat);
        int& times = odd_.at(at).at(static_cast<std::size_t>(what));
        if (!isSeated_ || (hasEnded_ && what != Oddity::SecondCode)) {
            return;
        }
        if (times == kMostOfAKind) {
            unnoted_.at(at).set(static_cast<std::size_t>(what));
            return;
        }
        record_.events.emplace_back(OddityNoted{positionOf(seat), what});
        if (++times == 1) {
            oddityNoted(wordsFor(what, names_.at(at)));
        }
    });
}

void Recorder::onEnd(DraftEnd how) noexcept {
    note([&] {
        if (!hasPacks_ || hasEnded_) {
            return;
        }
        record_.events.emplace_back(DraftEnded{how, now_()});
        hasEnded_ = true;
    });
    changed();
}

void Recorder::giveUp() noexcept {
    onEnd(DraftEnd::GivenUp);
}

void Recorder::onCode(int seat, std::int32_t code) noexcept {
    note([&] {
        int& times = codes_.at(static_cast<std::size_t>(seat));
        if (!isSeated_ || times == kMostOfAKind) {
            return;
        }
        ++times;
        record_.events.emplace_back(CodeReported{positionOf(seat), code});
        if (hasEnded_) {
            changed();
        }
    });
}

}  // namespace packwise
