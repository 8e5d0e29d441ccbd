#include "bot/player.h"

#include "bot/deckplan.h"

#include <algorithm>
#include <utility>

namespace packwise {

namespace {

constexpr int kMostClockSeconds = 30;
// The server pokes every second.
constexpr int kMostSilentSeconds = 35;

std::string_view bare(std::string_view token) {
    return token.substr(1);
}

// The tokens of a pack string; nothing when it is none.
std::optional<std::vector<std::string>> readPack(std::string_view body) {
    if (!body.empty() && body.back() != kFieldEnd) {
        return std::nullopt;
    }
    std::vector<std::string> pack = readFields(body);
    const bool sound = pack.size() <= kMostCardsInPack &&
                       std::all_of(pack.begin(), pack.end(),
                                   [](const std::string& token) { return token.size() > 1; });
    return sound ? std::optional(std::move(pack)) : std::nullopt;
}

}  // namespace

const std::array<Player::Branch, 20> Player::kBranches = {{
    {"HELO", &Player::onHelo}, {"NAME", &Player::onName}, {"DROP", &Player::onDrop},
    {"STAT", &Player::onStat}, {"CLOS", &Player::onClos}, {"PING", &Player::onPing},
    {"TEST", &Player::onTest}, {"SEAT", &Player::onSeat}, {"PAKS", &Player::onPaks},
    {"INFO", &Player::onInfo}, {"ROUN", &Player::onRoun}, {"BOOS", &Player::onBoos},
    {"REVW", &Player::onRevw}, {"TURN", &Player::onTurn}, {"RPCK", &Player::onRpck},
    {"RPAU", &Player::onRpau}, {"OVER", &Player::onOver}, {"MESG", &Player::ignore},
    {"CODE", &Player::ignore}, {"PONG", &Player::ignore},
}};

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
        dispatch(*message);
    }
    if (stage_ != Stage::Ended && splitter_.overflowed()) {
        end(Ending::Flooded);
    }
}

void Player::dispatch(std::string_view text) {
    const std::optional<Message> message = readMessage(text);
    if (!message) {
        return;
    }
    const auto branch = std::find_if(kBranches.begin(), kBranches.end(), [&](const Branch& each) {
        return each.command == message->command;
    });
    if (branch != kBranches.end()) {
        (this->*branch->run)(message->body);
    }
}

void Player::onHelo(std::string_view body) {
    const std::optional<int> number = readNumber(body);
    if (stage_ != Stage::Connecting || !number || *number < 1 || *number > kSeats) {
        return;
    }
    number_ = *number;
    stage_ = Stage::Named;
    link_.send("VERS" + std::string(kProtocolVersion) + kTerminator);
    link_.send("NAME" + name_ + kTerminator);
}

// A newcomer's name goes to all, then all eight to the newcomer: his own comes before the rest.
void Player::onName(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    if (!seat) {
        return;
    }
    roster_[static_cast<std::size_t>(*seat)] = body.substr(1);
    if (stage_ == Stage::Named && *seat == number_ - 1 && body.substr(1) == name_) {
        stage_ = Stage::Seated;
        link_.report("sits at seat " + std::to_string(number_));
    } else if (stage_ == Stage::Seated && *seat == kSeats - 1) {
        knowsRoster_ = true;
    }
}

void Player::onDrop(std::string_view body) {
    if (const std::optional<int> seat = readSeatDigit(body)) {
        roster_[static_cast<std::size_t>(*seat)].clear();
    }
}

void Player::onStat(std::string_view body) {
    if (stage_ == Stage::Connecting && body == "Server is full") {
        end(Ending::Full);
    }
}

void Player::onClos(std::string_view) {
    end(Ending::Closed);
}

void Player::onPing(std::string_view) {
    link_.send("PONG~");
}

void Player::onTest(std::string_view) {
    link_.send("TEST~");
}

void Player::onSeat(std::string_view body) {
    const std::optional<int> seat = readSeatDigit(body);
    const std::optional<int> position =
        readSeatDigit(body.substr(std::min<std::size_t>(1, body.size())));
    if (body.size() == 2 && seat && position && *seat == number_ - 1) {
        position_ = *position;
    }
}

void Player::onPaks(std::string_view body) {
    const std::vector<std::string> sets = readFields(body);
    if (sets.size() < kMostPacks) {
        return;
    }
    book_.setSets({sets.begin(), sets.begin() + kMostPacks});
    const auto packs = kMostPacks - std::count(sets.begin(), sets.begin() + kMostPacks, "");
    picker_.setDraftLength(static_cast<int>(packs) * kMostCardsInPack);
}

void Player::onInfo(std::string_view body) {
    if (body.empty()) {
        return;
    }
    if (body.front() == 'B') {
        draftType_ = 'B';
    } else if (body.front() == 'R') {
        draftType_ = 'R';
        const bool timed = body.size() > 2 && body[1] == '1';
        const int seconds = timed ? readNumber(body.substr(2)).value_or(0) : 0;
        clockSeconds_ = std::clamp(seconds, 0, kMostClockSeconds);
    }
}

void Player::onRoun(std::string_view body) {
    round_ = body;
    picksInRound_ = 0;
}

void Player::onBoos(std::string_view body) {
    std::optional<std::vector<std::string>> pack = readPack(body);
    if (!pack || over_) {
        return;
    }
    pack_ = std::move(*pack);
    plan(draftType_ == 'B' && !pack_.empty() ? Due::BoosterPick : Due::Nothing);
}

void Player::onRevw(std::string_view) {
    if (draftType_ == 'R' && position_ >= 0) {
        plan(Due::Review);
    }
}

void Player::onTurn(std::string_view body) {
    if (draftType_ != 'R' || over_) {
        return;
    }
    const std::optional<int> number = readNumber(body);
    plan(position_ >= 0 && number == position_ + 1 && !pack_.empty() ? Due::RochesterPick
                                                                     : Due::Nothing);
}

// The echo of a pick: only now the card leaves the pack, on all sides alike.
void Player::onRpck(std::string_view body) {
    if (!body.empty() && body.back() == '!') {
        body.remove_suffix(1);
    }
    const std::optional<int> position = readSeatDigit(body);
    const std::optional<int> row = position ? readNumber(body.substr(1)) : std::nullopt;
    if (!row || *row < 0 || *row >= static_cast<int>(pack_.size()) || draftType_ != 'R') {
        return;
    }
    const auto picked = pack_.begin() + *row;
    const std::string token = *picked;
    pack_.erase(picked);
    if (*position == position_) {
        take(token);
    }
}

void Player::onRpau(std::string_view) {
    if (draftType_ == 'R' && position_ >= 0) {
        plan(Due::Pause);
    }
}

void Player::onOver(std::string_view) {
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
    if (const auto code = link_.saveDeck(name_, deck.deck, deck.sideboard)) {
        link_.send("CODE" + std::to_string(*code) + kTerminator);
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
            link_.send("RROK~");
            break;
        case Due::Pause:
            link_.send("RPOK~");
            break;
    }
}

void Player::onSecond() {
    if (++silentSeconds_ >= kMostSilentSeconds) {
        end(Ending::Lost);
    } else {
        link_.send("PING~");
    }
}

std::size_t Player::chooseRow() {
    std::vector<CardFacts> pack;
    for (const std::string& token : pack_) {
        pack.push_back(facts(token));
    }
    return picker_.choose(pack);
}

void Player::pickBooster() {
    const auto picked = pack_.begin() + static_cast<std::ptrdiff_t>(chooseRow());
    const std::string token = *picked;
    pack_.erase(picked);
    take(token);
    std::string rest = "BPCK";
    for (const std::string& left : pack_) {
        rest += left + kFieldEnd;
    }
    link_.send("CARD" + token + kTerminator);
    link_.send(rest + kTerminator);
}

void Player::pickRochester() {
    if (pack_.empty()) {
        return;
    }
    const std::size_t row = chooseRow();
    link_.send("CARD" + pack_[row] + kTerminator);
    link_.send("RPCK" + std::to_string(row) + kTerminator);
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
