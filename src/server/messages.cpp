// What the server does on each message of a client, and the host's kick and ping.
#include "server/draftserver.h"

#include <algorithm>

namespace packwise {

namespace {

// More picks than any draft has.
constexpr int kMostPicks = kMostPacks * kMostCardsInPack;
constexpr std::size_t kMostNameBytes = 64;
constexpr int kMostPingSeconds = 99;
constexpr int kMostGoodPingSeconds = 10;

std::string chat(std::string line) {
    return to_client::Chat{{std::move(line)}}.write();
}

std::string thisVersion() {
    return chat("This server is version " + std::string(kProtocolVersion));
}

}  // namespace

void DraftServer::handle(int num, std::string_view text) {
    if (text.size() >= kCommandLength) {
        view_.blink(num - 1);
        to_server::dispatch(text, *this, num);
    }
}

void DraftServer::on(int num, const to_server::Version& message) {
    if (message.text != kProtocolVersion) {
        send(num, chat("You are using version " + message.text));
        send(num, thisVersion());
        relay(num, std::to_string(num) + " is using an old version.");
    }
    // The writes may have found the link gone; the next one on this seat is another's.
    seatOf(num).versionSeen = !isFree(num);
}

void DraftServer::on(int num, const to_server::Name& message) {
    Seat& seat = seatOf(num);
    if (!seat.versionSeen) {
        send(num, chat("You are using version 1.3"));
        send(num, thisVersion());
    }
    if (isFree(num)) {
        return;
    }
    const std::string name = message.name.substr(0, kMostNameBytes);
    // A free seat is a row of one blank.
    const bool isTaken = std::any_of(seats_.begin(), seats_.end(), [&](const Seat& other) {
        return name == (other.name.empty() ? " " : other.name);
    });
    if (isTaken) {
        disconnect(num);
        broadcast(chat("Kicking duplicate " + name));
        return;
    }
    const std::string address = links_.address(num);
    seat.name = name;
    view_.showSeat(num - 1, name);
    relay(num, name + " has joined");
    for (const std::string& announced :
         {to_client::Name{num - 1, name}.write(), to_client::Address{num - 1, address}.write()}) {
        if (isFree(num)) {
            return;  // gone while it was being announced
        }
        charge(num, announced);
        if (isFree(num) && state_ == State::Lobby) {
            // Who stands behind it in the row has heard of the loss first.
            broadcast(to_client::Drop{num - 1}.write());
        }
    }
    if (isFree(num)) {
        return;
    }
    view_.showPlayer(num - 1, name, address);
    for (int i = 0; i < kSeats; ++i) {
        send(num, to_client::Name{i, seats_[static_cast<std::size_t>(i)].name}.write());
    }
}

void DraftServer::on(int num, const to_server::Drop&) {
    relay(num, seatOf(num).name + " intentionally dropped.");
}

void DraftServer::on(int num, const to_server::Ping&) {
    send(num, to_client::Pong{}.write());
}

void DraftServer::on(int num, const to_server::Pong&) {
    view_.showPong(pingSeconds_);
    if (pingSeconds_ > kMostGoodPingSeconds) {
        send(num, to_client::Status{{"Detected poor connection"}}.write());
    }
}

void DraftServer::on(int /*num*/, const to_server::Test&) {}

void DraftServer::on(int num, const to_server::Chat& message) {
    if (choices_.isSilent()) {
        send(num, chat("-silent draft-"));
    } else {
        relay(num, message.text);
    }
}

void DraftServer::on(int num, const to_server::Card& message) {
    Seat& seat = seatOf(num);
    std::string& cards = seat.cards;
    if (countFields(cards) < kMostPicks) {
        cards.append(message.token, 1).push_back(kFieldEnd);
        seat.cardIsTold = true;
    }
}

void DraftServer::on(int num, const to_server::PackBack& message) {
    if (state_ == State::Drafting) {
        booster_.onPackBack(num, message.rest);
    }
}

void DraftServer::on(int num, const to_server::RandomMark&) {
    if (state_ == State::Drafting) {
        rochester_.onRandomMark(num);
    }
}

void DraftServer::on(int num, const to_server::Pick& message) {
    if (state_ == State::Drafting) {
        rochester_.onPick(num, message.row);
    }
}

void DraftServer::on(int num, const to_server::ReviewDone&) {
    if (state_ == State::Drafting) {
        rochester_.onReviewDone(num);
    }
}

void DraftServer::on(int num, const to_server::PauseDone&) {
    if (state_ == State::Drafting) {
        rochester_.onPauseDone(num);
    }
}

void DraftServer::on(int num, const to_server::Code& message) {
    charge(num, to_client::Code{num - 1, message.code}.write());
    view_.showCode(num - 1, message.code);
    if (!observer_ || !plays(num - 1)) {
        return;
    }
    std::optional<std::int32_t>& code = seatOf(num).code;
    if (code && *code != message.code) {
        observer_->onOddity(num - 1, Oddity::SecondCode);
    }
    code = code.value_or(message.code);
    observer_->onCode(num - 1, message.code);
}

void DraftServer::kick(int num) {
    const std::string name = seatOf(num).name;
    disconnect(num);
    broadcast(chat("Kicked " + name));
}

bool DraftServer::ping(int num) {
    if (links_.state(num) != LinkState::Open) {
        return false;
    }
    send(num, to_client::Ping{}.write());
    pingSeconds_ = 0;
    return true;
}

bool DraftServer::pingSecond() {
    return ++pingSeconds_ < kMostPingSeconds;
}

}  // namespace packwise
