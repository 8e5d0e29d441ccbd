// The start of the draft, and what its flows need of the server.
#include "engine/seating.h"
#include "server/draftserver.h"

#include <algorithm>
#include <utility>

namespace packwise {

std::vector<int> DraftServer::namedSeats() const {
    std::vector<int> named;
    for (int i = 0; i < kSeats; ++i) {
        if (!seat(i).name.empty()) {
            named.push_back(i);
        }
    }
    return named;
}

void DraftServer::start() {
    // Who is lost from here on keeps the place at the table.
    players_ = namedSeats();
    table_.clear();
    table_.playerCount = static_cast<int>(players_.size());
    table_.packCount = choices_.packCount();
    for (Seat& each : seats_) {
        each.dropped = false;
        each.cards.clear();
        each.cardIsTold = false;
        each.code.reset();
    }
    seatedByChance_ = false;
    if (observer_) {
        std::array<std::string, kSeats> names;
        std::transform(seats_.begin(), seats_.end(), names.begin(),
                       [](const Seat& each) { return each.name; });
        observer_->onStart(names);
    }
    state_ = State::Drafting;
    broadcast(to_client::Status{{"Draft in progress"}}.write());
}

bool DraftServer::canGoOn() const {
    return state_ == State::Drafting &&
           std::any_of(players_.begin(), players_.end(),
                       [this](int seatIndex) { return !seat(seatIndex).dropped; });
}

bool DraftServer::hasHole() const {
    return players_.back() != table_.playerCount - 1;
}

void DraftServer::tellOfSeating() {
    broadcast(to_client::Chat{{"*Server is fixing seat order.*"}}.write());
}

void DraftServer::seatByChance() {
    seatedByChance_ = true;
    const std::vector<int> order = seatAtRandom(players_, draw_());
    for (std::size_t position = 0; position < order.size(); ++position) {
        seatAt(order[position], static_cast<int>(position));
    }
}

void DraftServer::seatAt(int seatIndex, int position) {
    table_.place(seatIndex, position);
    broadcast(to_client::Seat{seatIndex, position}.write());
}

void DraftServer::deal() {
    if (observer_) {
        observer_->onSeated(plan());
    }
    to_client::Sets sets;
    std::string line = "Draft is ";
    for (int i = 0; i < table_.packCount; ++i) {
        std::string& name = sets.names[static_cast<std::size_t>(i)];
        name = choices_.setName(i);
        line += (i > 0 ? " - " : "") + name;
    }
    broadcast(sets.write());
    broadcast(to_client::Chat{{line}}.write());
    if (state_ != State::Drafting) {
        return;
    }
    if (choices_.isRochester()) {
        broadcast(to_client::Info{'R', choices_.isTimed(), choices_.pickSeconds()}.write());
        rochester_.begin();
    } else {
        broadcast(to_client::Info{}.write());
        booster_.begin();
    }
}

DraftPlan DraftServer::plan() const {
    DraftPlan plan{choices_.isRochester(),
                   choices_.isRochester() && choices_.isTimed(),
                   choices_.pickSeconds(),
                   seatedByChance_,
                   {},
                   {}};
    for (int i = 0; i < table_.packCount; ++i) {
        plan.sets.push_back(choices_.setName(i));
    }
    for (int i = 0; i < table_.playerCount; ++i) {
        plan.seats.push_back(table_.socketAt.at(static_cast<std::size_t>(i)) - 1);
    }
    return plan;
}

std::vector<int> DraftServer::awaited() const {
    std::vector<int> seats;
    for (const int seatIndex : players_) {
        const int position = table_.tableOf.at(static_cast<std::size_t>(seatIndex));
        if (state_ == State::Drafting && position >= 0 && !seat(seatIndex).dropped &&
            (booster_.awaits(position) || rochester_.awaits(position))) {
            seats.push_back(seatIndex);
        }
    }
    return seats;
}

void DraftServer::tick() {
    if (state_ == State::Drafting) {
        booster_.onRandomsTick();
        rochester_.onRandomsTick();
    }
}

void DraftServer::sendInDraft(int socket, std::string_view message) {
    if (!isStopped()) {
        send(socket, message);
    }
}

void DraftServer::broadcastInDraft(std::string_view message) {
    for (int num = 1; num <= kSeats; ++num) {
        sendInDraft(num, message);
    }
}

std::vector<Pack> DraftServer::makePacks(int packIndex, int count) {
    if (state_ != State::Drafting) {
        return {};
    }
    std::vector<Pack> packs = view_.dealPacks(packIndex, count);
    if (observer_ && !packs.empty()) {
        observer_->onDealt(packIndex, packs);
    } else if (observer_) {
        observer_->onEnd(DraftEnd::Failed);
    }
    if (packs.empty()) {
        state_ = State::Failed;
        view_.cardDataFailed();
    }
    return packs;
}

std::string DraftServer::setName(int packIndex) const {
    return choices_.setName(packIndex);
}

bool DraftServer::dropped(int socket) const {
    return seatOf(socket).dropped;
}

double DraftServer::draw() {
    return draw_();
}

void DraftServer::tellReplacedPick(int socket) {
    tellOddity(socket, Oddity::UnsoundPick);
    broadcastInDraft(to_client::Chat{
        {"*" + seatOf(socket).name + " sent no card of the pack; one is taken at random.*"}}
                         .write());
}

void DraftServer::tellPick(int socket, std::string_view card, PickMaker by) {
    if (!observer_ || state_ != State::Drafting) {
        return;  // what is still under way in a draft that has been stopped
    }
    Seat& seat = seatOf(socket);
    if (std::exchange(seat.cardIsTold, false) && by != PickMaker::Chance) {
        // Without its colour, and behind the end of another.
        std::string_view told = seat.cards;
        const std::string_view name = card.substr(1);
        told.remove_suffix(1);
        const bool endsAlike = told.ends_with(name);
        told.remove_suffix(endsAlike ? name.size() : 0);
        if (!endsAlike || (!told.empty() && told.back() != kFieldEnd)) {
            tellOddity(socket, Oddity::OtherCard);
        }
    }
    observer_->onPick(socket - 1, card, by);
}

void DraftServer::tellOddity(int socket, Oddity what) {
    if (observer_ && state_ == State::Drafting) {
        observer_->onOddity(socket - 1, what);
    }
}

void DraftServer::enableRandoms() {
    if (!isStopped()) {
        view_.wantTicks();
    }
}

void DraftServer::draftOver() {
    if (state_ == State::Drafting) {
        if (observer_) {
            observer_->onEnd(DraftEnd::Over);
        }
        state_ = State::Over;
    }
}

}  // namespace packwise
