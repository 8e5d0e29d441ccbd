#include "protocol/messages.h"

#include <initializer_list>

namespace packwise {

namespace {

// The letters, the fields and the terminator.
std::string joined(std::string_view letters, std::initializer_list<std::string_view> fields) {
    std::string message(letters);
    for (const std::string_view field : fields) {
        message += field;
    }
    return message += kTerminator;
}

std::optional<int> readBetween(std::string_view text, int least, int most) {
    const std::optional<int> number = readNumber(text);
    return number && *number >= least && *number <= most ? number : std::nullopt;
}

// A body that is one digit, 0 to 7.
std::optional<int> readPlace(std::string_view body) {
    return body.size() == 1 ? readSeatDigit(body) : std::nullopt;
}

}  // namespace

namespace to_server {

std::optional<Name> Name::read(std::string_view body) {
    return body.empty() ? std::nullopt : std::optional(Name{std::string(body)});
}

std::string Name::write() const {
    return joined(kLetters, {name});
}

std::optional<Card> Card::read(std::string_view body) {
    const bool isToken =
        body.size() >= kShortestToken && body.find(kFieldEnd) == std::string_view::npos;
    return isToken ? std::optional(Card{std::string(body)}) : std::nullopt;
}

std::string Card::write() const {
    return joined(kLetters, {token});
}

std::string PackBack::write() const {
    return joined(kLetters, {rest->text()});
}

// With or without leading zeros.
std::optional<Pick> Pick::read(std::string_view body) {
    while (body.size() > 1 && body.front() == '0') {
        body.remove_prefix(1);
    }
    return Pick{readBetween(body, 0, kMostCardsInPack - 1)};
}

std::string Pick::write() const {
    return joined(kLetters, {std::to_string(*row)});
}

std::optional<Code> Code::read(std::string_view body) {
    const std::optional<int> code = readNumber(body);
    return code ? std::optional(Code{*code}) : std::nullopt;
}

std::string Code::write() const {
    return joined(kLetters, {std::to_string(code)});
}

}  // namespace to_server

namespace to_client {

std::optional<Hello> Hello::read(std::string_view body) {
    const std::optional<int> socket = readBetween(body, 1, kSeats);
    return socket ? std::optional(Hello{*socket}) : std::nullopt;
}

std::string Hello::write() const {
    return joined(kLetters, {std::to_string(socket)});
}

std::optional<Name> Name::read(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    return seat ? std::optional(Name{*seat, std::string(body.substr(1))}) : std::nullopt;
}

std::string Name::write() const {
    return joined(kLetters, {std::to_string(seat), name});
}

std::optional<Address> Address::read(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    return seat ? std::optional(Address{*seat, std::string(body.substr(1))}) : std::nullopt;
}

std::string Address::write() const {
    return joined(kLetters, {std::to_string(seat), address});
}

std::optional<Drop> Drop::read(std::string_view body) {
    const std::optional<int> seat = readPlace(body);
    return seat ? std::optional(Drop{*seat}) : std::nullopt;
}

std::string Drop::write() const {
    return joined(kLetters, {std::to_string(seat)});
}

std::optional<Seat> Seat::read(std::string_view body) {
    const std::optional<int> seat = readPlace(body.substr(0, 1));
    const std::optional<int> position = seat ? readPlace(body.substr(1)) : std::nullopt;
    return position ? std::optional(Seat{*seat, *position}) : std::nullopt;
}

std::string Seat::write() const {
    return joined(kLetters, {std::to_string(seat), std::to_string(position)});
}

std::optional<Sets> Sets::read(std::string_view body) {
    Sets sets;
    std::size_t at = 0;
    for (std::string& name : sets.names) {
        const std::size_t end = body.find(kFieldEnd, at);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        name = body.substr(at, end - at);
        at = end + 1;
    }
    return at == body.size() ? std::optional(sets) : std::nullopt;
}

std::string Sets::write() const {
    std::string fields;
    for (const std::string& name : names) {
        fields += name;
        fields += kFieldEnd;
    }
    return joined(kLetters, {fields});
}

std::optional<Info> Info::read(std::string_view body) {
    if (body.empty()) {
        return std::nullopt;
    }
    Info info;
    info.format = body.front();
    if (body.starts_with("R1")) {
        const std::optional<int> seconds = readBetween(body.substr(2), 1, kMostSeconds);
        if (!seconds) {
            return std::nullopt;
        }
        info.timed = true;
        info.seconds = *seconds;
    }
    return info;
}

std::string Info::write() const {
    const std::string letter(1, format);
    return format == 'R' ? joined(kLetters, {letter, timed ? "1" : "0", std::to_string(seconds)})
                         : joined(kLetters, {letter});
}

std::optional<ShowPack> ShowPack::read(std::string_view body) {
    const std::optional<Pack> pack = Pack::read(body);
    return pack ? std::optional(ShowPack{*pack}) : std::nullopt;
}

std::string ShowPack::write() const {
    return joined(kLetters, {pack.text()});
}

std::optional<Picked> Picked::read(std::string_view body) {
    const std::optional<int> position = readPlace(body);
    return position ? std::optional(Picked{*position}) : std::nullopt;
}

std::string Picked::write() const {
    return joined(kLetters, {std::to_string(position)});
}

std::optional<Answered> Answered::read(std::string_view body) {
    const std::optional<int> position = readPlace(body);
    return position ? std::optional(Answered{*position}) : std::nullopt;
}

std::string Answered::write() const {
    return joined(kLetters, {std::to_string(position)});
}

std::optional<Turn> Turn::read(std::string_view body) {
    const std::optional<int> seat = readBetween(body, 1, kSeats);
    return seat ? std::optional(Turn{*seat - 1}) : std::nullopt;
}

std::string Turn::write() const {
    return joined(kLetters, {std::to_string(position + 1)});
}

std::optional<Pick> Pick::read(std::string_view body) {
    const bool random = body.ends_with('!');
    if (random) {
        body.remove_suffix(1);
    }
    const std::optional<int> position = readPlace(body.substr(0, 1));
    const std::optional<int> row =
        position ? readBetween(body.substr(1), 0, kMostCardsInPack - 1) : std::nullopt;
    return row ? std::optional(Pick{*position, *row, random}) : std::nullopt;
}

std::string Pick::write() const {
    return joined(kLetters, {std::to_string(position), std::to_string(row), random ? "!" : ""});
}

std::optional<Code> Code::read(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    const std::optional<int> code = seat ? readNumber(body.substr(1)) : std::nullopt;
    return code ? std::optional(Code{*seat, *code}) : std::nullopt;
}

std::string Code::write() const {
    return joined(kLetters, {std::to_string(seat), std::to_string(code)});
}

}  // namespace to_client

}  // namespace packwise
