// One player: what he answers to the server's messages, and when. He knows no socket and no clock.
#pragma once

#include "bot/cardbook.h"
#include "bot/picker.h"
#include "engine/pickkeeper.h"
#include "protocol/messages.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// What a player needs of the program around him.
class PlayerLink {
public:
    virtual ~PlayerLink() = default;

    // Writes a whole message to the server; dropped when there is no connection.
    virtual void send(std::string_view message) = 0;

    // Calls Player::onTimer() once, that many milliseconds from now; an earlier call still under
    // way is forgotten. stopTimer() forgets it too.
    virtual void startTimer(int milliseconds) = 0;
    virtual void stopTimer() = 0;

    // Tells the user in a line what this player does. Bytes in Windows-1252.
    virtual void report(std::string_view line) = 0;

    // A draft begins.
    virtual void began() = 0;

    // Writes a deck of that player, and what the player saw, and tells the user of it. Gives the
    // deck's code; nothing when that cannot be written.
    virtual std::optional<std::int32_t> saveDeck(std::string_view name,
                                                 const std::vector<std::string>& deck,
                                                 const std::vector<std::string>& sideboard,
                                                 const PickLog& picks) = 0;

    // The player's part is over, see Player::ending(): the connection is to be closed.
    virtual void ended() = 0;
};

class Player {
public:
    enum class Stage { Connecting, Named, Seated, Ended };
    enum class Ending {
        None,
        Full,     // the server had no seat
        Refused,  // let go of after giving the name and before sitting: the name is taken
        Closed,   // the server said so
        Lost,     // the link broke or fell silent, or the server let go of the seat
        Flooded   // the server sent a message without an end
    };

    // `milliseconds` pass before each answer of the draft, fewer where the pick clock is shorter.
    Player(PlayerLink& link, CardBook& book, std::uint64_t seed, int milliseconds)
        : link_(link), book_(book), picker_(seed), delay_(milliseconds) {}

    // The name to give to the server of the connection that now begins.
    void begin(const std::string& name);

    // Bytes from the server, cut anywhere.
    void receive(std::string_view bytes);

    void onTimer();

    // A second of the connection has passed: asks the server for a sign of life, and takes it as
    // gone when none has come for too long.
    void onSecond();

    // The connection is gone.
    void onLinkLost();

    // The messages of the server.
    void on(const to_client::Hello& message);
    void on(const to_client::Name& message);
    void on(const to_client::Drop& message);
    void on(const to_client::Status& message);
    void on(const to_client::Close& message);
    void on(const to_client::Ping& message);
    void on(const to_client::Test& message);
    void on(const to_client::Seat& message);
    void on(const to_client::Sets& message);
    void on(const to_client::Info& message);
    void on(const to_client::Round& message);
    void on(const to_client::ShowPack& message);
    void on(const to_client::Review& message);
    void on(const to_client::Turn& message);
    void on(const to_client::Pick& message);
    void on(const to_client::Pause& message);
    void on(const to_client::Over& message);
    void on(const to_client::Chat&) {}
    void on(const to_client::Pong&) {}
    void on(const to_client::Address&) {}
    void on(const to_client::Snow&) {}
    void on(const to_client::Picked&) {}
    void on(const to_client::Answered&) {}
    void on(const to_client::Code&) {}

    Stage stage() const { return stage_; }
    Ending ending() const { return ending_; }
    const std::string& name() const { return name_; }
    // Whether the server has told who sits where, after seating this player.
    bool knowsRoster() const { return knowsRoster_; }
    // Names by seat index; empty for a free seat.
    const std::array<std::string, kSeats>& roster() const { return roster_; }

private:
    enum class Due { Nothing, BoosterPick, RochesterPick, Review, Pause };
    void plan(Due due);
    std::size_t chooseRow();
    void pickBooster();
    void pickRochester();
    void take(const std::string& token);
    CardFacts facts(const std::string& token);
    void end(Ending ending);

    PlayerLink& link_;
    CardBook& book_;
    Picker picker_;
    int delay_;
    MessageSplitter splitter_;
    Stage stage_ = Stage::Connecting;
    Ending ending_ = Ending::None;
    std::string name_;
    int number_ = 0;         // socket number, 1 to 8; 0 before HELO
    int silentSeconds_ = 0;  // since anything came
    bool knowsRoster_ = false;
    std::array<std::string, kSeats> roster_;

    int position_ = -1;     // table position; -1 without one
    char draftType_ = 0;    // 'B' or 'R'; 0 before INFO
    int clockSeconds_ = 0;  // for a Rochester pick; 0 in an untimed draft
    std::string round_;
    int picksInRound_ = 0;
    Pack pack_;
    std::vector<std::string> picks_;  // tokens
    PickKeeper keeper_;
    Due due_ = Due::Nothing;
    bool over_ = false;
};

}  // namespace packwise
