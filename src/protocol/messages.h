// The messages of the wire, a type each: its four letters, what a valid body is, and how one is
// written. read() takes the body of a message with those letters and gives nothing where it cannot
// be valid; such a message is ignored. write() gives the whole message, terminator included. Where
// a message has no fields its body is not looked at. Text is bytes in Windows-1252.
//
// A seat is a seat index, 0 to 7; a position is a table position, 0 to 7.
#pragma once

#include "protocol/framing.h"
#include "protocol/pack.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace packwise {

// A command as one number, so that two are compared in one step.
constexpr std::uint32_t packLetters(std::string_view letters) {
    std::uint32_t packed = 0;
    for (std::size_t i = 0; i < kCommandLength; ++i) {
        packed = packed << 8U | static_cast<unsigned char>(letters[i]);
    }
    return packed;
}

// Reads one message, without its terminator, and calls handler.on(context..., message) with the
// one of these types that it is. What is unknown, invalid or shorter than a command calls nothing.
// A handler that lacks one of them does not compile.
template <class... Messages, class Handler, class... Context>
void dispatchTo(std::string_view text, Handler& handler, const Context&... context) {
    const std::optional<Message> message = readMessage(text);
    if (!message) {
        return;
    }
    const std::uint32_t letters = packLetters(message->command);
    const auto isTaken = [&]<class One>(std::type_identity<One>) {
        constexpr std::uint32_t wanted = packLetters(One::kLetters);
        if (letters != wanted) {
            return false;
        }
        if (const std::optional<One> read = One::read(message->body)) {
            handler.on(context..., *read);
        }
        return true;
    };
    (isTaken(std::type_identity<Messages>{}) || ...);
}

// A message without fields.
template <class Self>
struct BareMessage {
    static std::optional<Self> read(std::string_view /*body*/) { return Self{}; }
    std::string write() const { return std::string(Self::kLetters) + kTerminator; }
    friend bool operator==(const BareMessage&, const BareMessage&) = default;
};

// A message whose body is one text, with any content.
template <class Self>
struct TextMessage {
    std::string text;

    static std::optional<Self> read(std::string_view body) { return Self{{std::string(body)}}; }
    std::string write() const {
        return std::string(Self::kLetters).append(text).append(1, kTerminator);
    }
    friend bool operator==(const TextMessage&, const TextMessage&) = default;
};

// What clients send.
namespace to_server {

struct Version : TextMessage<Version> {
    static constexpr std::string_view kLetters = "VERS";
};
// A player's name; never empty.
struct Name {
    static constexpr std::string_view kLetters = "NAME";
    std::string name;
    static std::optional<Name> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Name&, const Name&) = default;
};
struct Drop : BareMessage<Drop> {
    static constexpr std::string_view kLetters = "DROP";
};
struct Ping : BareMessage<Ping> {
    static constexpr std::string_view kLetters = "PING";
};
struct Pong : BareMessage<Pong> {
    static constexpr std::string_view kLetters = "PONG";
};
struct Test : BareMessage<Test> {
    static constexpr std::string_view kLetters = "TEST";
};
// A chat line, the speaker's name already in it.
struct Chat : TextMessage<Chat> {
    static constexpr std::string_view kLetters = "MESG";
};
// The card that is picked.
struct Card {
    static constexpr std::string_view kLetters = "CARD";
    std::string token;
    static std::optional<Card> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Card&, const Card&) = default;
};
// Booster: what is left of the pack. A body that is no pack string is a pick all the same, one
// that cannot be; `rest` is then nothing.
struct PackBack {
    static constexpr std::string_view kLetters = "BPCK";
    std::optional<Pack> rest;
    static std::optional<PackBack> read(std::string_view body) {
        return PackBack{Pack::read(body)};
    }
    std::string write() const;  // `rest` holds a pack
    friend bool operator==(const PackBack&, const PackBack&) = default;
};
// Rochester: the next pick is the clock's.
struct RandomMark : BareMessage<RandomMark> {
    static constexpr std::string_view kLetters = "RAND";
};
// Rochester: the row of the pack on show, counted from 0. A body that is no row is a pick all the
// same, one that cannot be; `row` is then nothing.
struct Pick {
    static constexpr std::string_view kLetters = "RPCK";
    std::optional<int> row;
    static std::optional<Pick> read(std::string_view body);
    std::string write() const;  // `row` holds a row
    friend bool operator==(const Pick&, const Pick&) = default;
};
// Rochester: the review time of a new pack has run out.
struct ReviewDone : BareMessage<ReviewDone> {
    static constexpr std::string_view kLetters = "RROK";
};
// Rochester: ready for the next pack.
struct PauseDone : BareMessage<PauseDone> {
    static constexpr std::string_view kLetters = "RPOK";
};
// The security code of the saved deck.
struct Code {
    static constexpr std::string_view kLetters = "CODE";
    std::int32_t code = 0;
    static std::optional<Code> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Code&, const Code&) = default;
};

// See dispatchTo().
template <class Handler, class... Context>
void dispatch(std::string_view text, Handler& handler, const Context&... context) {
    dispatchTo<Version, Name, Drop, Ping, Pong, Test, Chat, PackBack, RandomMark, Pick, PauseDone,
               ReviewDone, Card, Code>(text, handler, context...);
}

}  // namespace to_server

// What the server sends.
namespace to_client {

// The first message of a connection, with the socket number, 1 to 8.
struct Hello {
    static constexpr std::string_view kLetters = "HELO";
    int socket = 0;
    static std::optional<Hello> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Hello&, const Hello&) = default;
};
// A line for the chat window.
struct Chat : TextMessage<Chat> {
    static constexpr std::string_view kLetters = "MESG";
};
// A line for the status label.
struct Status : TextMessage<Status> {
    static constexpr std::string_view kLetters = "STAT";
};
// Who sits on a seat; an empty name for a free one.
struct Name {
    static constexpr std::string_view kLetters = "NAME";
    int seat = 0;
    std::string name;
    static std::optional<Name> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Name&, const Name&) = default;
};
struct Address {
    static constexpr std::string_view kLetters = "ADDR";
    int seat = 0;
    std::string address;  // dotted decimal
    static std::optional<Address> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Address&, const Address&) = default;
};
// A seat is lost before the draft.
struct Drop {
    static constexpr std::string_view kLetters = "DROP";
    int seat = 0;
    static std::optional<Drop> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Drop&, const Drop&) = default;
};
struct Ping : BareMessage<Ping> {
    static constexpr std::string_view kLetters = "PING";
};
struct Pong : BareMessage<Pong> {
    static constexpr std::string_view kLetters = "PONG";
};
struct Test : BareMessage<Test> {
    static constexpr std::string_view kLetters = "TEST";
};
// The server wants the connection closed.
struct Close : BareMessage<Close> {
    static constexpr std::string_view kLetters = "CLOS";
};
// Draft start: a player's place at the table.
struct Seat {
    static constexpr std::string_view kLetters = "SEAT";
    int seat = 0;
    int position = 0;
    static std::optional<Seat> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Seat&, const Seat&) = default;
};
// Draft start: the set of each pack, empty behind the last one.
struct Sets {
    static constexpr std::string_view kLetters = "PAKS";
    std::array<std::string, kMostPacks> names;
    static std::optional<Sets> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Sets&, const Sets&) = default;
};
// Draft start: the format, and the clock of a timed Rochester draft.
struct Info {
    static constexpr std::string_view kLetters = "INFO";
    static constexpr int kMostSeconds = 30;
    char format = 'B';  // 'B' Booster, 'R' Rochester; another letter as it came
    bool timed = false;
    int seconds = 0;  // for a pick, 1 to 30; 0 in what a client reads of an untimed draft
    static std::optional<Info> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Info&, const Info&) = default;
};
// A new round, or set and pack with a ":" between them; for showing.
struct Round : TextMessage<Round> {
    static constexpr std::string_view kLetters = "ROUN";
};
// A pack: the player's own (Booster), or the one on the table (Rochester).
struct ShowPack {
    static constexpr std::string_view kLetters = "BOOS";
    Pack pack;
    static std::optional<ShowPack> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const ShowPack&, const ShowPack&) = default;
};
// Snow-covered lands are allowed.
struct Snow : BareMessage<Snow> {
    static constexpr std::string_view kLetters = "SNOW";
};
// Booster: a position has picked.
struct Picked {
    static constexpr std::string_view kLetters = "BSTA";
    int position = 0;
    static std::optional<Picked> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Picked&, const Picked&) = default;
};
// Rochester: the review time of a new pack begins.
struct Review : BareMessage<Review> {
    static constexpr std::string_view kLetters = "REVW";
};
// Rochester: a position has answered a Review or a Pause.
struct Answered {
    static constexpr std::string_view kLetters = "RSTA";
    int position = 0;
    static std::optional<Answered> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Answered&, const Answered&) = default;
};
// Rochester: who picks next.
struct Turn {
    static constexpr std::string_view kLetters = "TURN";
    int position = 0;  // one more on the wire
    static std::optional<Turn> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Turn&, const Turn&) = default;
};
// Rochester: who took which row of the pack.
struct Pick {
    static constexpr std::string_view kLetters = "RPCK";
    int position = 0;
    int row = 0;  // 0 to 14
    bool random = false;
    static std::optional<Pick> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Pick&, const Pick&) = default;
};
// Rochester: a pack is finished and more follow.
struct Pause : BareMessage<Pause> {
    static constexpr std::string_view kLetters = "RPAU";
};
struct Over : BareMessage<Over> {
    static constexpr std::string_view kLetters = "OVER";
};
// The security code of a player's deck.
struct Code {
    static constexpr std::string_view kLetters = "CODE";
    int seat = 0;
    std::int32_t code = 0;
    static std::optional<Code> read(std::string_view body);
    std::string write() const;
    friend bool operator==(const Code&, const Code&) = default;
};

// See dispatchTo().
template <class Handler, class... Context>
void dispatch(std::string_view text, Handler& handler, const Context&... context) {
    dispatchTo<Close, Chat, Ping, Hello, Status, Drop, Name, Address, Test, Seat, Info, Sets, Round,
               ShowPack, Turn, Pick, Review, Pause, Picked, Answered, Over, Snow, Code, Pong>(
        text, handler, context...);
}

}  // namespace to_client

}  // namespace packwise
