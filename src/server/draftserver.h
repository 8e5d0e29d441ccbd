// The whole server: seats, the dispatcher of the clients' messages, losses, and the draft that runs
// on them. It knows no socket class, no window and no clock: links, choices and view are handed
// in, time comes as calls. A process may hold any number of servers.
//
// A link that breaks inside a write is found by its state at the next one, so that everything goes
// out in the order of the statements.
#pragma once

#include "engine/boosterflow.h"
#include "engine/draft.h"
#include "engine/rochesterflow.h"
#include "protocol/framing.h"
#include "protocol/messages.h"
#include "server/allowance.h"
#include "server/interfaces.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

class DraftServer : private DraftHost {
public:
    enum class State {
        Lobby,
        Drafting,
        Halted,  // a drop has ended the draft
        Failed,  // card data could not be read
        Over
    };

    struct Seat {
        std::string name;   // "" without one
        std::string cards;  // names of the picks as reported, each followed by "|"
        MessageSplitter stream{kMostClientMessageLength};
        Allowance allowance;
        bool versionSeen = false;
        bool dropped = false;     // the player is gone; cleared at the start
        int secondsNameless = 0;  // since the seat was taken, while it has no name
        bool awaitsTurn = false;
        bool cardIsTold = false;           // the last of `cards` is of a pick that is yet to come
        std::optional<std::int32_t> code;  // of the deck, as reported first
    };

    // `draw` gives a uniform u, 0 <= u < 1. `observer` may be null.
    DraftServer(SeatLinks& links, const HostChoices& choices, ServerView& view,
                std::function<double()> draw, DraftObserver* observer = nullptr);

    State state() const { return state_; }
    const Seat& seat(int seatIndex) const { return seats_.at(static_cast<std::size_t>(seatIndex)); }
    const DraftTable& table() const { return table_; }
    const BoosterFlow& booster() const { return booster_; }
    const RochesterFlow& rochester() const { return rochester_; }

    // Connections. The socket number for a newcomer, 0 when there is no room; a full table gives up
    // the seat that has long had no name. Once the link of that number is open, welcome() greets.
    int socketForNewcomer();
    void welcome(int num);
    // Bytes have arrived, or the link is broken; the seat is emptied once all is handled.
    void onArrival(int num);

    // Time: every second; every two seconds once wanted; at the next turn of the event loop.
    void poke();
    void tick();
    void turn();

    // The host's hand.
    void kick(int num);
    // False when nobody is there.
    bool ping(int num);
    // A second of the ping has passed; false once it is given up.
    bool pingSecond();
    // Tells all open links to close.
    void sayGoodbye();

    // The start of the draft, in this order: start(); canGoOn(); the seating, by chance or by hand,
    // perhaps much later; canGoOn() again; deal().
    std::vector<int> namedSeats() const;  // seat indexes
    void start();
    // Whether anybody who plays is still there and no drop has ended the draft.
    bool canGoOn() const;
    bool hasHole() const;                                         // a free seat below a player's
    const std::vector<int>& players() const { return players_; }  // seat indexes
    void tellOfSeating();
    void seatByChance();
    // Puts the player of a seat index at a table position.
    void seatAt(int seatIndex, int position);
    void deal();

    // Whom the draft waits for, by seat index; lost seats apart.
    std::vector<int> awaited() const;
    // Goes up whenever the draft begins to wait for something new.
    int step() const { return booster_.step() + rochester_.step(); }

    // Writes to a socket number / to the sockets 1 to 8. A broken link costs its seat, once what
    // had come from it is handled; a free one swallows what is written to it.
    void send(int num, std::string_view message);
    void broadcast(std::string_view message);

    // Handles one message, without its terminator, of a socket number.
    void handle(int num, std::string_view text);
    // Empties the seat of a socket number.
    void disconnect(int num);

    // The messages, by socket number.
    void on(int num, const to_server::Version& message);
    void on(int num, const to_server::Name& message);
    void on(int num, const to_server::Drop& message);
    void on(int num, const to_server::Ping& message);
    void on(int num, const to_server::Pong& message);
    void on(int num, const to_server::Test& message);
    void on(int num, const to_server::Chat& message);
    void on(int num, const to_server::Card& message);
    void on(int num, const to_server::PackBack& message);
    void on(int num, const to_server::RandomMark& message);
    void on(int num, const to_server::Pick& message);
    void on(int num, const to_server::ReviewDone& message);
    void on(int num, const to_server::PauseDone& message);
    void on(int num, const to_server::Code& message);

private:
    Seat& seatOf(int num) { return seats_.at(static_cast<std::size_t>(num - 1)); }
    const Seat& seatOf(int num) const { return seats_.at(static_cast<std::size_t>(num - 1)); }
    bool isFree(int num) const { return links_.state(num) == LinkState::Free; }
    int lowestFree() const;
    bool giveUpANamelessSeat();
    void takeTurn(int num);
    void awaitTurn(int num);
    bool hasUnread(int num) const;
    // Hands a chat line that a seat causes on to everybody who keeps up with reading.
    void relay(int num, const std::string& line);
    // Hands another message that a seat causes on to everybody.
    void charge(int num, const std::string& message);
    bool plays(int seatIndex) const;
    DraftPlan plan() const;
    // Whether a draft has ended before its time.
    bool isStopped() const { return state_ == State::Halted || state_ == State::Failed; }

    // DraftHost. A write may find a loss that ends the draft; nobody hears of its flow behind that.
    void sendInDraft(int socket, std::string_view message) override;
    void broadcastInDraft(std::string_view message) override;
    std::vector<Pack> makePacks(int packIndex, int count) override;
    std::string setName(int packIndex) const override;
    bool dropped(int socket) const override;
    double draw() override;
    void tellReplacedPick(int socket) override;
    void tellPick(int socket, std::string_view card, PickMaker by) override;
    void tellOddity(int socket, Oddity what) override;
    void enableRandoms() override;
    void draftOver() override;

    SeatLinks& links_;
    const HostChoices& choices_;
    ServerView& view_;
    DraftObserver* observer_;
    std::function<double()> draw_;
    State state_ = State::Lobby;
    std::array<Seat, kSeats> seats_;
    std::vector<int> players_;
    bool seatedByChance_ = false;
    int pingSeconds_ = 0;
    DraftTable table_;
    BoosterFlow booster_{*this, table_};
    RochesterFlow rochester_{*this, table_};
};

}  // namespace packwise
