// What the server needs of the program around it. Socket numbers are 1 to 8, seat indexes 0 to 7.
// Text is bytes in Windows-1252.
#pragma once

#include "engine/draft.h"
#include "protocol/pack.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

enum class LinkState {
    Free,  // no connection
    Open,
    Broken  // closed by the peer or failed, and yet to be closed here
};

// The connections of the seats, by socket number.
class SeatLinks {
public:
    virtual ~SeatLinks() = default;

    virtual LinkState state(int num) const = 0;
    // The peer's address in dotted decimal.
    virtual std::string address(int num) const = 0;

    // Writes to an open link. It may break the link, which its state then tells; it calls nobody.
    virtual void write(int num, std::string_view bytes) = 0;
    // Bytes written that the peer has not read, as far as is known.
    virtual std::size_t unsent(int num) const = 0;

    // Takes the bytes that have arrived, at most so many; also on a broken link.
    virtual std::string read(int num, std::size_t most) = 0;
    virtual bool hasArrived(int num) const = 0;

    // Makes the link free. What was written still leaves.
    virtual void close(int num) = 0;
};

// What the host has chosen, read at the moment of use.
class HostChoices {
public:
    virtual ~HostChoices() = default;

    virtual bool isRochester() const = 0;
    virtual bool isTimed() const = 0;     // Rochester
    virtual int pickSeconds() const = 0;  // 1 to 30
    virtual int packCount() const = 0;    // 3 to 6
    // Display name of the set of the pack number 0 to 5.
    virtual std::string setName(int packIndex) const = 0;
    virtual bool haltsOnDrop() const = 0;
    virtual bool isSilent() const = 0;
};

// Whom the server tells what has changed, and whom it asks for packs.
class ServerView {
public:
    virtual ~ServerView() = default;

    // Who sits on a seat; an empty name when nobody does.
    virtual void showSeat(int seat, const std::string& name) = 0;
    // Name and address of a seat that all players have been told; both empty once it is free
    // again. Who leaves a draft stays listed.
    virtual void showPlayer(int seat, const std::string& name, const std::string& address) = 0;
    // A message has come from a seat.
    virtual void blink(int seat) = 0;
    // A deck's security code.
    virtual void showCode(int seat, std::int32_t code) = 0;
    // A seat has answered a ping after so many seconds.
    virtual void showPong(int seconds) = 0;

    // DraftServer::tick() is wanted every two seconds from now on; asked again and again.
    virtual void wantTicks() = 0;
    // DraftServer::turn() is wanted at the next turn of the event loop.
    virtual void wantTurn() = 0;

    // Deals `count` packs (1 to 8) of the set of the pack number 0 to 5, all in the same way and so
    // of the same size. None when the card data cannot be read.
    virtual std::vector<Pack> dealPacks(int packIndex, int count) = 0;
    // The card data of a round could not be read; the draft has stopped for good.
    virtual void cardDataFailed() = 0;
};

struct DraftPlan {
    bool isRochester = false;
    bool isTimed = false;  // Rochester
    int pickSeconds = 0;   // 1 to 30
    bool isSeatedByChance = false;
    std::vector<std::string> sets;  // display name of the set of each pack, 3 to 6
    std::vector<int> seats;         // seat index by table position, 1 to 8 of them
};

enum class DraftEnd {
    Over,     // to the last card
    Halted,   // a drop has ended it
    Failed,   // card data could not be read
    GivenUp,  // nobody has gone on with it
};

// Whom the server tells what happens in a draft, so that it can be looked at afterwards: the
// players, by seat index, and nobody else. It is called in the midst of a message and so takes no
// time to speak of, calls nobody back and throws nothing.
class DraftObserver {
public:
    virtual ~DraftObserver() = default;

    // In this order. Losses may come as soon as the players are known. `names` is by seat index,
    // empty for who does not play.
    virtual void onStart(const std::array<std::string, kSeats>& names) noexcept = 0;
    virtual void onSeated(const DraftPlan& plan) noexcept = 0;
    // Booster: the packs of a round, by table position. Rochester: one, for the table.
    virtual void onDealt(int packIndex, const std::vector<Pack>& packs) noexcept = 0;
    virtual void onPick(int seat, std::string_view card, PickMaker by) noexcept = 0;
    virtual void onLoss(int seat) noexcept = 0;
    virtual void onOddity(int seat, Oddity what) noexcept = 0;
    // Over, Halted or Failed.
    virtual void onEnd(DraftEnd how) noexcept = 0;
    // The security code of a deck; mostly after the end.
    virtual void onCode(int seat, std::int32_t code) noexcept = 0;
};

}  // namespace packwise
