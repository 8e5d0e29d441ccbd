// What the two draft flows share: the table, and what they need of the server that runs them.
#pragma once

#include "protocol/framing.h"
#include "protocol/pack.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// The players' places. Seat index is socket number minus 1; table position is the place round the
// table. Positions 0 to playerCount - 1 are in use; a seat without a place has tableOf -1, an
// unused position has socketAt 0.
struct DraftTable {
    int playerCount = 0;               // 1 to 8 in a draft
    int packCount = 0;                 // 3 to 6
    int roundNo = 0;                   // Booster: the round; Rochester: the pack of the set; from 1
    std::array<int, kSeats> tableOf;   // by seat index: table position or -1
    std::array<int, kSeats> socketAt;  // by table position: socket number 1 to 8, or 0

    DraftTable() { clear(); }
    void clear();

    // Puts the seat index at the table position, both 0 to 7.
    void place(int seatIndex, int position);

    // The table position of a socket number, or -1 when it has none or is no seat's number.
    int positionOfSocket(int socket) const;
};

// Who has chosen a card: the player, his client because his time was up, or the server.
enum class PickMaker { Player, Clock, Chance };

// What an honest client never does.
enum class Oddity {
    OutOfTurn,    // a pick from a seat that has no turn left for it
    UnsoundPick,  // what came back is not the pack less one card, or the row is none
    OtherCard,    // the card that was told is not the one that was taken
    SecondCode    // another code than the one that was reported before
};

inline constexpr int kOddities = 4;

// What a draft flow needs of the server.
class DraftHost {
public:
    virtual ~DraftHost() = default;

    // Writes a whole message to the socket number / to all, unless the draft has been stopped.
    virtual void sendInDraft(int socket, std::string_view message) = 0;
    virtual void broadcastInDraft(std::string_view message) = 0;

    // Deals `count` packs (1 to 8) of the set of the pack number 0 to 5, all in the same way and so
    // of the same size. None when the card data cannot be read or the draft has been stopped; the
    // flow then stops without a word.
    virtual std::vector<Pack> makePacks(int packIndex, int count) = 0;

    // Display name of the set of the pack number 0 to 5.
    virtual std::string setName(int packIndex) const = 0;

    // True once the player of that socket number is gone.
    virtual bool dropped(int socket) const = 0;

    // A uniform draw u, 0 <= u < 1.
    virtual double draw() = 0;

    // Tells everybody that the pick of that socket number could not be one, so that a card is
    // taken at random in its place.
    virtual void tellReplacedPick(int socket) = 0;

    // What has come of the draft, for the record: a card, which is still in its pack, is taken for
    // that socket number; a message from there is none that an honest client sends.
    virtual void tellPick(int socket, std::string_view card, PickMaker by) = 0;
    virtual void tellOddity(int socket, Oddity what) = 0;

    // Asks for the ticks that answer for lost players, for the rest of the draft.
    virtual void enableRandoms() = 0;

    // The draft has ended; called before "OVER~" goes out.
    virtual void draftOver() = 0;
};

}  // namespace packwise
