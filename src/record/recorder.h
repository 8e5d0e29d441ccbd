// Notes what happens in a draft, in memory.
#pragma once

#include "record/draftrecord.h"

#include <array>
#include <bitset>
#include <functional>

namespace packwise {

class Recorder : public DraftObserver {
public:
    // `now` gives the time as in DraftRecord.
    explicit Recorder(std::function<std::string()> now) : now_(std::move(now)) {}

    // Called in the midst of the server's work, and may not throw: an oddity of that kind is the
    // first one of that seat index / the record has come to an end, or to a code behind it.
    std::function<void(const std::string& line)> oddityNoted = [](const std::string&) {};
    std::function<void()> changed = [] {};

    // How the packs that are dealt next are dealt.
    void setAlongLists(bool alongLists) { alongLists_ = alongLists; }

    // The draft that is under way comes to nothing. What it does from here on is not noted; the
    // codes of decks are.
    void giveUp() noexcept;

    // Whether packs were dealt and the draft has ended: there is something to keep.
    bool isComplete() const { return hasEnded_; }
    // There was no room for something, so that the record is worth nothing.
    bool hasFailed() const { return hasFailed_; }
    DraftRecord record() const;

    void onStart(const std::array<std::string, kSeats>& names) noexcept override;
    void onSeated(const DraftPlan& plan) noexcept override;
    void onDealt(int packIndex, const std::vector<Pack>& packs) noexcept override;
    void onPick(int seat, std::string_view card, PickMaker by) noexcept override;
    void onLoss(int seat) noexcept override;
    void onOddity(int seat, Oddity what) noexcept override;
    void onEnd(DraftEnd how) noexcept override;
    void onCode(int seat, std::int32_t code) noexcept override;

private:
    template <class Work>
    void note(Work work) noexcept;
    int positionOf(int seat) const { return positions_.at(static_cast<std::size_t>(seat)); }

    // Picks are by far the most, and are noted in a pass; the record is put together of them later.
    struct Pick {
        std::size_t place;    // how many of the other events stand before it
        std::size_t textEnd;  // of its card in `cards_`
        int position;
        PickMaker by;
    };

    std::function<std::string()> now_;
    DraftRecord record_;  // but for the picks
    std::vector<Pick> picks_;
    std::string cards_;
    std::array<std::string, kSeats> names_;                 // by seat index
    std::array<int, kSeats> positions_{};                   // by seat index; -1 without one
    std::array<std::array<int, kOddities>, kSeats> odd_{};  // how often, by seat index
    std::array<int, kSeats> codes_{};                       // likewise
    std::array<std::bitset<kOddities>, kSeats> unnoted_;    // more of them, since the last pick
    std::vector<int> lostEarly_;  // seat indexes, before the players had their places
    bool isSeated_ = false;
    bool hasPacks_ = false;
    bool hasEnded_ = false;
    bool hasFailed_ = false;
    bool alongLists_ = false;
};

}  // namespace packwise
