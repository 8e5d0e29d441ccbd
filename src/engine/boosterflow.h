// The server's running of a Booster draft: a lock step of passes, in table positions.
#pragma once

#include "engine/draft.h"

#include <array>
#include <optional>

namespace packwise {

class BoosterFlow {
public:
    BoosterFlow(DraftHost& host, DraftTable& table) : host_(host), table_(table) {}

    // Begins the draft at round 1: every count and flag anew, then startRound().
    void begin();

    // A pick from that socket number: what is left of the pack before its seat. Ignored while no
    // draft runs, from a socket without a table position, and from a seat that has already picked
    // in this pass. What is not the pack before the seat less one card, or nothing, is a pick all
    // the same: a random one, and everybody is told.
    void onPackBack(int socket, const std::optional<Pack>& rest);

    // One tick of the timer: picks at random for each lost seat that has yet to pick.
    void onRandomsTick();

    bool running() const { return running_; }
    // Whether the draft waits for the pick of a table position.
    bool awaits(int position) const { return running_ && !seatPicked(position); }
    int step() const { return step_; }        // goes up with each pass and each round
    int picksIn() const { return picksIn_; }  // 0 to playerCount
    const Pack& seatPack(int position) const;
    bool seatPicked(int position) const;

private:
    void startRound();
    // A pick of a table position: the card, which is in its pack, and what is left of that.
    void take(int position, std::string_view card, Pack rest, PickMaker by);
    void takeAtRandom(int position);  // its pack is not empty
    void passPacks();
    void handOutPacks();

    DraftHost& host_;
    DraftTable& table_;
    bool running_ = false;
    int direction_ = 1;  // +1 up the positions, -1 down
    int picksIn_ = 0;
    int step_ = 0;
    std::array<Pack, kSeats> seatPack_;
    std::array<bool, kSeats> seatPicked_{};
};

}  // namespace packwise
