// The server's running of a Rochester draft: one pack on the table, picked in turns that snake
// round it.
#pragma once

#include "engine/draft.h"

#include <array>
#include <cstddef>
#include <optional>

namespace packwise {

// The seat number, 1 to `seats`, of each turn of a pack.
using RochesterTurns = std::array<int, kMostCardsInPack>;

// For the pack number `roundNo`, 1 to `seats`, of the set number `rochSet`, from 1.
RochesterTurns rochesterTurns(int seats, int rochSet, int roundNo);

class RochesterFlow {
public:
    RochesterFlow(DraftHost& host, DraftTable& table) : host_(host), table_(table) {}

    // Begins the draft at the first pack of the first set: every count and flag anew.
    void begin();

    // Messages by socket number. Each is ignored where it is not awaited: outside its phase, a
    // second answer of one seat, from a socket without a table position. A pick counts as the turn
    // under way, from whichever seat it comes. No row, or one that is not among the remaining
    // ones, is a random pick of the seat on turn, and everybody is told; from another seat it is
    // ignored. A random mark has no phase; it stands until the next pick.
    void onReviewDone(int socket);
    void onRandomMark(int socket);
    void onPick(int socket, std::optional<int> row);
    void onPauseDone(int socket);

    // A player has been lost while the draft runs (the host already says so): the seat counts as
    // having answered what is awaited. (A turn of a lost seat is taken by the tick.)
    void onSeatLost();

    // One tick of the timer: takes the turn of a lost seat.
    void onRandomsTick();

    bool running() const { return phase_ != Phase::Idle; }
    // Whether the draft waits for an answer or the pick of a table position.
    bool awaits(int position) const;
    int step() const { return step_; }            // goes up with each review, turn and pause
    int rochSet() const { return rochSet_; }      // 1 to packCount
    int rochCards() const { return rochCards_; }  // 0 to 15
    int rochTurn() const { return rochTurn_; }    // 0 to rochCards
    int turnPosition() const;                     // the table position on turn; -1 between turns

private:
    enum class Phase { Idle, Opening, Review, Turns, Pause };

    // Marks the flow as busy: a loss of a seat inside one of its own writes is looked at later, so
    // that messages go out in their order and no call nests.
    class Busy;

    void openPack();
    void answer(int socket);
    void settle();
    bool settleOnce();
    bool answerForOneLost();
    bool allAnswered() const;
    void take(int position, int row, PickMaker by);
    void nextTurn();
    void endPack();
    int randomRow();
    bool lost(std::size_t position) const;

    DraftHost& host_;
    DraftTable& table_;
    Phase phase_ = Phase::Idle;
    Pack pack_;  // on the table
    int rochSet_ = 0;
    int rochCards_ = 0;
    int rochTurn_ = 0;
    int step_ = 0;
    bool rochRandom_ = false;
    bool busy_ = false;
    RochesterTurns rochOrder_{};
    std::array<bool, kSeats> answered_{};    // by table position
    std::array<int, kSeats> unusedTurns_{};  // likewise: turns announced that no pick has come for
};

}  // namespace packwise
