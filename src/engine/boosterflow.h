// The server's running of a Booster draft: a lock step of passes, in table positions.
#pragma once

#include "engine/draft.h"

#include <array>
#include <string>
#include <string_view>

namespace packwise {

class BoosterFlow {
public:
    BoosterFlow(DraftHost& host, DraftTable& table) : host_(host), table_(table) {}

    // Begins the draft at round 1: every count and flag anew, then startRound().
    void begin();

    // A BPCK from that socket number: what is left of the pack before its seat. Ignored while no
    // draft runs, from a socket without a table position, and from a seat that has already picked
    // in this pass. A body that is not the pack before the seat less one card is a pick all the
    // same: a random one, and everybody is told.
    void onPackBack(int socket, std::string_view rest);

    // One tick of the timer: picks at random for each lost seat that has yet to pick.
    void onRandomsTick();

    bool running() const { return running_; }
    int picksIn() const { return picksIn_; }      // 0 to playerCount
    int direction() const { return direction_; }  // +1 or -1
    const std::string& seatPack(int position) const;
    bool seatPicked(int position) const;

private:
    void startRound();
    void randomPick(int position);
    std::string lessRandomCard(const std::string& pack);  // `pack` is not empty
    void passPacks();
    void handOutPacks();

    DraftHost& host_;
    DraftTable& table_;
    bool running_ = false;
    int direction_ = 1;
    int picksIn_ = 0;
    std::array<std::string, kSeats> seatPack_;
    std::array<bool, kSeats> seatPicked_{};
};

}  // namespace packwise
