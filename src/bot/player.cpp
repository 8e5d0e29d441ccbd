#include "bot/player.h"

#include "bot/deckplan.h"

#include <algorithm>
#include <utility>

namespace packwise {

namespace {

// The server pokes every second.
constexpr int kMostSilentSeconds = 35;

std::string_view bare(std::string_view token) {
    return token.substr(1);
}

}  // namespace

void Player::begin(const std::string& name) {
    splitter_.clear();
    stage_ = Stage::Connecting;
    ending_ = Ending::None;
    name_ = name;
    number_ = 0;
    silentSeconds_ = 0;
    knowsRoster_ = false;
    roster_ = {};
}

void Player::receive(std::string_view bytes) {
    silentSeconds_ = 0;
    splitter_.append(bytes);
    while (stage_ != Stage::Ended) {
        const std::optional<std::string> message = splitter_.next();
        if (!message) {
            break;
        }
        to_client::dispatch(*message, *this);
    }
    if (stage_ != Stage::Ended && splitter_.overflowed()) {
        end(Ending::Flooded);
    }
}

void Player::on(const to_client::Hello& message) {
    if (stage_ != Stage::Connecting) {
        return;
    }
    number_ = message.socket;
    stage_ = Stage::Named;
    link_.send(to_server::Version{{std::string(kProtocolVersion)}}.write());
    link_.send(to_server::Name{name_}.write());
}

// A newcomer's name goes to all, then all eight to the newcomer: his own comes before the rest.
void Player::on(const to_client::Name& message) {
    roster_[static_cast<std::size_t>(message.seat)] = message.name;
    if (stage_ == Stage::Named && message.seat == number_ - 1 && message.name == name_) {
        stage_ = Stage::Seated;
        link_.report("sits at seat " + std::to_string(number_));
    } else if (stage_ == Stage::Seated && message.seat == kSeats - 1) {
        knowsRoster_ = true;
    }
}

void Player::on(const to_client::Drop& message) {
    roster_[static_cast<std::size_t>(message.seat)].clear();
}

void Player::on(const to_client::Status& message) {
    if (stage_ == Stage::Connecting && message.text == "Server is full") {
        end(Ending::Full);
    }
}

void Player::on(const to_client::Close&) {
    end(Ending::Closed);
}

void Player::on(const to_client::Ping&) {
    link_.send(to_server::Pong{}.write());
}

void Player::on(const to_client::Test&) {
    link_.send(to_server::Test{}.write());
}

void Player::on(const to_client::Seat& message) {
    if (message.seat == number_ - 1) {
        position_ = message.position;
    }
    keeper_.seat(message.position, roster_[static_cast<std::size_t>(message.seat)],
                 message.seat == number_ - 1);
}

void Player::on(const to_client::Sets& message) {
    book_.setSets({message.names.begin(), message.names.end()});
    keeper_.sets(message.names);
    const auto packs =
        kMostPacks - std::count(message.names.begin(), message.names.end(), std::string());
    picker_.setDraftLength(static_cast<int>(packs) * kMostCardsInPack);
}

void Player::on(const to_client::Info& message) {
    if (message.format == 'B' || message.format == 'R') {
        draftType_ = message.format;
        clockSeconds_ = message.seconds;
        keeper_.begin(draftType_);
        link_.began();
    }
}

void Player::on(const to_client::Round& message) {
    round_ = message.text;
    picksInRound_ = 0;
    keeper_.round(round_);
}

void Player::on(const to_client::ShowPack& message) {
    if (over_) {
        return;
    }
    pack_ = message.pack;
    keeper_.pack(pack_);
    plan(draftType_ == 'B' && !pack_.empty() ? Due::BoosterPick : Due::Nothing);
}

void Player::on(const to_client::Review&) {
    if (draftType_ == 'R' && position_ >= 0) {
        plan(Due::Review);
    }
}

void Player::on(const to_client::Turn& message) {
    if (draftType_ == 'R' && !over_) {
        plan(message.position == position_ && !pack_.empty() ? Due::RochesterPick : Due::Nothing);
    }
}

// The echo of a pick: only now the card leaves the pack, on all sides alike.
void Player::on(const to_client::Pick& message) {
    if (message.row >= pack_.size() || draftType_ != 'R') {
        return;
    }
    const std::string token(pack_.card(message.row));
    pack_.remove(message.row);
    keeper_.takeRow(message.position, message.row);
    if (message.position == position_) {
        take(token);
    }
}

void Player::on(const to_client::Pause&) {
    if (draftType_ == 'R' && position_ >= 0) {
        plan(Due::Pause);
    }
}

void Player::on(const to_client::Over&) {
    if (over_ || draftType_ == 0) {
        return;
    }
    over_ = true;
    plan(Due::Nothing);
    if (picks_.empty()) {
        link_.report("has picked nothing and builds no deck");
        return;
    }
    std::vector<CardFacts> picks;
    for (const std::string& token : picks_) {
        picks.push_back(facts(token));
    }
    const DeckPlan deck = planDeck(picks);
    if (const auto code = link_.saveDeck(name_, deck.deck, deck.sideboard, keeper_.log())) {
        link_.send(to_server::Code{*code}.write());
    }
}

void Player::plan(Due due) {
    due_ = due;
    if (due == Due::Nothing) {
        link_.stopTimer();
        return;
    }
    const bool clocked = due == Due::RochesterPick && clockSeconds_ > 0;
    link_.startTimer(clocked ? std::min(delay_, clockSeconds_ * 1000) : delay_);
}

void Player::onTimer() {
    switch (std::exchange(due_, Due::Nothing)) {
        case Due::Nothing:
            break;
        case Due::BoosterPick:
            pickBooster();
            break;
        case Due::RochesterPick:
            pickRochester();
            break;
        case Due::Review:
            link_.send(to_server::ReviewDone{}.write());
            break;
        case Due::Pause:
            link_.send(to_server::PauseDone{}.write());
            break;
    }
}

void Player::onSecond() {
    if (++silentSeconds_ >= kMostSilentSeconds) {
        end(Ending::Lost);
    } else {
        link_.send(to_server::Ping{}.write());
    }
}

std::size_t Player::chooseRow() {
    std::vector<CardFacts> pack;
    for (const std::string& token : pack_.cards()) {
        pack.push_back(facts(token));
    }
    return picker_.choose(pack);
}

void Player::pickBooster() {
    const int row = static_cast<int>(chooseRow());
    const std::string token(pack_.card(row));
    pack_.remove(row);
    keeper_.take(token);
    take(token);
    link_.send(to_server::Card{token}.write());
    link_.send(to_server::PackBack{pack_}.write());
}

void Player::pickRochester() {
    if (pack_.empty()) {
        return;
    }
    const int row = static_cast<int>(chooseRow());
    link_.send(to_server::Card{std::string(pack_.card(row))}.write());
    link_.send(to_server::Pick{row}.write());
}

void Player::take(const std::string& token) {
    picks_.push_back(token);
    picker_.take(facts(token));
    ++picksInRound_;
    link_.report("pick " + std::to_string(picksInRound_) + " of pack " + round_ + ": " +
                 std::string(bare(token)));
}

CardFacts Player::facts(const std::string& token) {
    return factsOf(token, book_.find(std::string(bare(token))));
}

void Player::onLinkLost() {
    if (stage_ != Stage::Ended) {
        end(stage_ == Stage::Named ? Ending::Refused : Ending::Lost);
    }
}

void Player::end(Ending ending) {
    plan(Due::Nothing);
    stage_ = Stage::Ended;
    ending_ = ending;
    link_.ended();
}

}  // namespace packwise
