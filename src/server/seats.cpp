// The seats and their connections.
#include "server/draftserver.h"

#include <algorithm>
#include <utility>

namespace packwise {

namespace {

// What one seat gets of a turn of the event loop; the rest waits behind the other seats.
constexpr int kMostMessagesInTurn = 64;
constexpr std::size_t kMostReadAtOnce = std::size_t{16} * 1024;
// Who has so much unread, in bytes, misses chat lines, so that they do not cost him the draft.
constexpr std::size_t kMostUnsentForChat = std::size_t{256} * 1024;
// When there is no room, a seat without a name goes to the next one after so many seconds.
constexpr int kMostSecondsNameless = 20;

}  // namespace

DraftServer::DraftServer(SeatLinks& links, const HostChoices& choices, ServerView& view,
                         std::function<double()> draw, DraftObserver* observer)
    : links_(links), choices_(choices), view_(view), observer_(observer), draw_(std::move(draw)) {}

int DraftServer::lowestFree() const {
    for (int num = 1; num <= kSeats; ++num) {
        if (isFree(num)) {
            return num;
        }
    }
    return 0;
}

bool DraftServer::giveUpANamelessSeat() {
    const auto oldest = std::max_element(
        seats_.begin(), seats_.end(),
        [](const Seat& a, const Seat& b) { return a.secondsNameless < b.secondsNameless; });
    if (state_ != State::Lobby || oldest->secondsNameless < kMostSecondsNameless) {
        return false;
    }
    disconnect(static_cast<int>(oldest - seats_.begin()) + 1);
    return true;
}

int DraftServer::socketForNewcomer() {
    const int free = lowestFree();
    return free == 0 && giveUpANamelessSeat() ? lowestFree() : free;
}

void DraftServer::welcome(int num) {
    send(num, to_client::Hello{num}.write());
    for (int other = 1; other < num; ++other) {
        if (links_.address(other) == links_.address(num)) {
            send(num, to_client::Chat{{"Duplicate connection"}}.write());
            break;
        }
    }
}

void DraftServer::onArrival(int num) {
    if (!seatOf(num).awaitsTurn) {
        takeTurn(num);
    }
}

void DraftServer::takeTurn(int num) {
    Seat& seat = seatOf(num);
    int handled = 0;
    while (handled < kMostMessagesInTurn) {
        if (seat.allowance.isOverdrawn() && !isFree(num)) {
            if (links_.state(num) == LinkState::Broken) {
                disconnect(num);  // what a flood has left behind would cost the next one here
            }
            return;  // until the poke
        }
        // A message may cost the seat; its stream is then empty and its link free.
        if (const auto message = seat.stream.next()) {
            ++handled;
            handle(num, *message);
            continue;
        }
        const std::string bytes = links_.read(num, kMostReadAtOnce);
        if (seat.stream.overflowed() || (bytes.empty() && links_.state(num) == LinkState::Broken)) {
            disconnect(num);
            return;
        }
        if (bytes.empty()) {
            return;
        }
        seat.stream.append(bytes);
    }
    awaitTurn(num);
}

void DraftServer::awaitTurn(int num) {
    seatOf(num).awaitsTurn = true;
    view_.wantTurn();
}

void DraftServer::turn() {
    for (int num = 1; num <= kSeats; ++num) {
        if (std::exchange(seatOf(num).awaitsTurn, false)) {
            takeTurn(num);
        }
    }
}

bool DraftServer::hasUnread(int num) const {
    return seatOf(num).stream.hasNext() || links_.hasArrived(num);
}

void DraftServer::poke() {
    broadcast("~");
    for (int num = 1; num <= kSeats; ++num) {
        Seat& seat = seatOf(num);
        const bool isNameless = seat.name.empty() && links_.state(num) == LinkState::Open;
        seat.secondsNameless = isNameless ? seat.secondsNameless + 1 : 0;
        seat.allowance.grow();
        if (hasUnread(num)) {
            awaitTurn(num);
        }
    }
}

void DraftServer::send(int num, std::string_view message) {
    const LinkState state = links_.state(num);
    if (state == LinkState::Open) {
        links_.write(num, message);
    } else if (hasUnread(num)) {
        awaitTurn(num);  // whoever has gone is heard to the end, then the seat is emptied
    } else if (state == LinkState::Broken) {
        disconnect(num);
    }
}

void DraftServer::broadcast(std::string_view message) {
    for (int num = 1; num <= kSeats; ++num) {
        send(num, message);
    }
}

void DraftServer::relay(int num, const std::string& line) {
    const std::string message = to_client::Chat{{line}}.write();
    seatOf(num).allowance.spend(message.size());
    for (int to = 1; to <= kSeats; ++to) {
        if (links_.unsent(to) <= kMostUnsentForChat) {
            send(to, message);
        }
    }
}

void DraftServer::charge(int num, const std::string& message) {
    seatOf(num).allowance.spend(message.size());
    broadcast(message);
}

void DraftServer::disconnect(int num) {
    // Closed first, so that the broadcasts below find a free seat here.
    links_.close(num);
    Seat& seat = seatOf(num);
    const int seatIndex = num - 1;
    seat.stream.clear();
    seat.versionSeen = false;
    seat.secondsNameless = 0;
    broadcast(to_client::Chat{{seat.name + " disconnected"}}.write());
    if (state_ == State::Lobby) {
        broadcast(to_client::Drop{seatIndex}.write());
        view_.showPlayer(seatIndex, {}, {});
    }
    seat.name.clear();
    const bool wasThere = !std::exchange(seat.dropped, true);
    if (observer_ && wasThere && state_ == State::Drafting && plays(seatIndex)) {
        observer_->onLoss(seatIndex);
    }
    view_.showSeat(seatIndex, {});
    if ((state_ != State::Drafting && !isStopped()) || !plays(seatIndex)) {
        return;
    }
    if (choices_.haltsOnDrop()) {
        if (observer_ && state_ == State::Drafting) {
            observer_->onEnd(DraftEnd::Halted);
        }
        state_ = State::Halted;
        broadcast(to_client::Close{}.write());
        return;
    }
    view_.wantTicks();
    if (state_ == State::Drafting) {
        rochester_.onSeatLost();
    }
}

bool DraftServer::plays(int seatIndex) const {
    return std::find(players_.begin(), players_.end(), seatIndex) != players_.end();
}

void DraftServer::sayGoodbye() {
    for (int num = 1; num <= kSeats; ++num) {
        if (links_.state(num) == LinkState::Open) {
            send(num, to_client::Close{}.write());
        }
    }
}

}  // namespace packwise
