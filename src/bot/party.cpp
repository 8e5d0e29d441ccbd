#include "bot/party.h"

#include "bot/names.h"
#include "platform/codepage.h"

#include <QTimer>

#include <algorithm>
#include <random>

using namespace Qt::Literals;

namespace packwise {

namespace {

std::uint64_t systemSeed() {
    std::random_device device;
    return (std::uint64_t{device()} << 32U) | device();
}

}  // namespace

Party::Party(BotOptions options, BotSeat::Say say, QObject* parent)
    : QObject(parent),
      options_(std::move(options)),
      say_(std::move(say)),
      book_(options_.cards.toStdU16String()),
      seed_(options_.seed.value_or(0)) {
    if (!options_.seed) {
        seed_ = systemSeed();
    }
}

void Party::start() {
    joinNext();
}

void Party::joinNext() {
    if (!joining_) {
        return;
    }
    const std::optional<std::string> name = freeName(takenNames());
    if (!name) {
        stopJoining(u"no name is left that nobody has"_s);
        return;
    }
    auto seat = std::make_unique<BotSeat>(options_, book_, seed_ + seats_.size(), say_);
    BotSeat& joining = *seat;
    seats_.push_back(std::move(seat));
    connect(&joining, &BotSeat::settled, this, &Party::onSettled);
    connect(&joining, &BotSeat::over, this, [this, &joining] { onOver(joining); });
    joining.join(*name);
}

void Party::onSettled() {
    everSat_ = true;
    if (seats_.size() == static_cast<std::size_t>(options_.seats)) {
        joining_ = false;
    } else if (freeSeats() == 0) {
        stopJoining(u"the table is full"_s);
    } else {
        QTimer::singleShot(options_.delay, this, &Party::joinNext);
    }
}

void Party::onOver(BotSeat& seat) {
    if (seat.player().ending() == Player::Ending::Refused && !leaving_) {
        refused_.insert(seat.player().name());
        if (const std::optional<std::string> name = freeName(takenNames())) {
            say_(u"the name "_s + fromBytes(seat.player().name()) + u" is taken; trying "_s +
                 fromBytes(*name));
            seat.join(*name);
            return;
        }
    }
    tellEnding(seat);
    // A seat that is gone before the draft is one that somebody else wants: no more players.
    if (joining_) {
        stopJoining(u"no more players join"_s);
    }
    finishIfEmpty();
}

void Party::tellEnding(const BotSeat& seat) {
    const QString who = fromBytes(seat.player().name()) + u": "_s;
    if (leaving_) {
        say_(who + u"has left"_s);
        return;
    }
    switch (seat.player().ending()) {
        case Player::Ending::Full:
            say_(who + u"the server is full and keeps its seats"_s);
            break;
        case Player::Ending::Refused:
            say_(who + u"the server has no place for this name"_s);
            break;
        case Player::Ending::Closed:
            say_(who + u"the server has closed the draft"_s);
            break;
        case Player::Ending::Flooded:
            say_(who + u"the server sends no messages but noise; leaving"_s);
            break;
        case Player::Ending::Lost:
        case Player::Ending::None:
            say_(who + (seat.player().knowsRoster() ? u"the link is lost"_s
                        : seat.hasConnected()       ? u"the server gives no seat"_s
                                                    : u"cannot connect to "_s + options_.host +
                                                    u" port "_s + QString::number(options_.port)));
            break;
    }
}

void Party::stopJoining(const QString& why) {
    joining_ = false;
    const auto brought = std::count_if(seats_.begin(), seats_.end(), [](const auto& seat) {
        return seat->player().knowsRoster();
    });
    say_(why + u"; "_s + QString::number(brought) + u" of "_s + QString::number(options_.seats) +
         u" joined"_s);
}

void Party::leave() {
    joining_ = false;
    leaving_ = true;
    for (const auto& seat : seats_) {
        seat->leave();
    }
    finishIfEmpty();
}

void Party::finishIfEmpty() {
    const bool anybody =
        std::any_of(seats_.begin(), seats_.end(), [](const auto& seat) { return seat->isAlive(); });
    if (anybody || finished_) {
        return;
    }
    finished_ = true;
    joining_ = false;
    const bool failed = std::any_of(seats_.begin(), seats_.end(),
                                    [](const auto& seat) { return seat->hasFailed(); });
    Q_EMIT finished(!failed && (everSat_ || leaving_) ? 0 : 1);
}

std::set<std::string> Party::takenNames() const {
    std::set<std::string> names = refused_;
    for (const auto& seat : seats_) {
        if (seat->isAlive()) {
            names.insert(seat->player().name());
            names.insert(seat->player().roster().begin(), seat->player().roster().end());
        }
    }
    return names;
}

int Party::freeSeats() const {
    const auto& roster = seats_.back()->player().roster();
    return static_cast<int>(std::count(roster.begin(), roster.end(), std::string()));
}

}  // namespace packwise
