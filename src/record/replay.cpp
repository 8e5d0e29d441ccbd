#include "record/replay.h"

#include "engine/rochesterflow.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

namespace packwise {

namespace {

int rowOf(const Pack& pack, std::string_view token) {
    for (int row = 0; row < pack.size(); ++row) {
        if (pack.card(row) == token) {
            return row;
        }
    }
    return -1;
}

class Replay {
public:
    Replay(const DraftRecord& record, const std::function<void(const PlayedTurn&)>& onTurn)
        : record_(record), onTurn_(onTurn), seats_(static_cast<int>(record.players.size())) {}

    Replayed run() {
        checkPlayers();
        for (const RecordEvent& event : record_.events) {
            std::visit([this](const auto& each) { on(each); }, event);
            if (isLost_) {
                return std::move(result_);
            }
        }
        if (!end_) {
            blame("The record does not tell how the draft has ended.");
        } else if (*end_ == DraftEnd::Over && !isComplete()) {
            blame("The record says that the draft is over, and cards are left.");
        } else if (*end_ == DraftEnd::Halted && !somebodyIsLost()) {
            blame("The record says that a loss has ended the draft, and nobody is lost.");
        }
        result_.isFollowed = !isLost_;
        return std::move(result_);
    }

private:
    static std::size_t at(int position) { return static_cast<std::size_t>(position); }

    bool somebodyIsLost() const {
        return std::find(lost_.begin(), lost_.end(), true) != lost_.end();
    }
    const std::string& name(int position) const { return record_.players[at(position)].name; }

    std::string place() const {
        const int pack = record_.isRochester ? packs_ : packIndex_ + 1;
        if (packs_ == 0) {
            return {};
        }
        return (record_.isRochester ? "Pack " : "Round ") + std::to_string(pack) + ", pick " +
               std::to_string(pick_);
    }
    // What comes behind it cannot be followed.
    void blame(std::string what) {
        isLost_ = true;
        result_.findings.push_back({Finding::About::Record, place(), std::move(what)});
    }

    void checkPlayers() {
        std::set<int> seats;
        std::set<std::string> names;
        for (const RecordPlayer& player : record_.players) {
            if (!seats.insert(player.seat).second || !names.insert(player.name).second) {
                blame("Two players have one seat or name.");
            }
        }
    }

    bool isTableEmpty() const {
        return std::all_of(table_.begin(), table_.end(),
                           [](const Pack& pack) { return pack.empty(); });
    }
    int packsInAll() const { return static_cast<int>(record_.sets.size()) * seats_; }
    bool isComplete() const { return packs_ == packsInAll() && isTableEmpty(); }
    // Whether all packs of a round lie before the players.
    bool isDealt() const { return record_.isRochester || (packs_ > 0 && packs_ % seats_ == 0); }

    void on(const PackDealt& event) {
        const bool isFirst = record_.isRochester || isDealt() || packs_ == 0;
        if (end_ || packs_ == packsInAll() || (isFirst && !isTableEmpty())) {
            blame("A pack is dealt where none can be.");
            return;
        }
        const int packIndex = packs_ / seats_;
        const int position = record_.isRochester ? 0 : packs_ % seats_;
        if (event.packIndex != packIndex || event.position != position) {
            blame("A pack is dealt for another round or place than is next.");
            return;
        }
        if (!isFirst && event.pack.size() != table_[0].size()) {
            blame("The packs of the round are not of one size.");
            return;
        }
        if (isFirst) {
            pick_ = 1;
        }
        packIndex_ = packIndex;
        table_[at(position)] = event.pack;
        if (record_.isRochester) {
            order_ = rochesterTurns(seats_, packIndex + 1, packs_ % seats_ + 1);
            giveTurn();
        }
        ++packs_;
    }

    void on(const CardTaken& event) {
        const int position = event.position;
        if (end_ || !isDealt() || isTableEmpty()) {
            blame(name(position) + " takes a card where there is none.");
            return;
        }
        if (!isOnTurn(position)) {
            return;
        }
        checkMaker(event);
        Pack& pack = table_[record_.isRochester ? 0 : at(position)];
        const int row = rowOf(pack, event.card);
        if (row < 0) {
            blame(name(position) + " takes " + std::string(nameOfToken(event.card)) +
                  ", which is not in the pack" + whereIs(event.card) + '.');
            return;
        }
        if (onTurn_) {
            onTurn_({packIndex_, record_.isRochester ? packs_ : packIndex_ + 1, pick_, position,
                     pack, row, event.by});
        }
        pack.remove(row);
        odd_[at(position)].fill(false);
        if (record_.isRochester) {
            ++pick_;
            int& turns = unusedTurns_[at(position)];
            turns = std::max(turns - 1, 0);
            giveTurn();
            return;
        }
        picked_[at(position)] = true;
        if (std::count(picked_.begin(), picked_.end(), true) == seats_) {
            pass();
        }
    }

    bool isOnTurn(int position) {
        if (!record_.isRochester) {
            if (picked_[at(position)]) {
                blame(name(position) + " picks twice.");
            }
            return !picked_[at(position)];
        }
        const bool isExplained =
            unusedTurns_[at(position)] > 0 || noted(position, Oddity::OutOfTurn);
        if (!isExplained) {
            blame(name(position) + " picks, and it is " + name(order_[at(pick_ - 1)] - 1) +
                  "'s turn.");
        }
        return isExplained;
    }
    // Rochester. A turn that another has taken may still bring the pick of who was on it.
    void giveTurn() {
        if (!table_[0].empty()) {
            ++unusedTurns_[at(order_[at(pick_ - 1)] - 1)];
        }
    }

    bool noted(int position, Oddity what) const {
        return odd_[at(position)][static_cast<std::size_t>(what)];
    }

    // Chance picks for who is lost and in place of what is no pick, and nobody else does there.
    void checkMaker(const CardTaken& event) {
        const bool byChance = event.by == PickMaker::Chance;
        const bool isReplaced = noted(event.position, Oddity::UnsoundPick);
        const bool isLost = lost_[at(event.position)];
        if (byChance && !isLost && !isReplaced) {
            note(name(event.position) + " gets a card by chance without a reason.");
        } else if (!byChance && (isLost || isReplaced)) {
            note(name(event.position) + " picks, and only chance could have.");
        } else if (event.by == PickMaker::Clock && !record_.isRochester) {
            note("A clock picks in a Booster draft.");
        }
    }
    void note(std::string what) {
        result_.findings.push_back({Finding::About::Record, place(), std::move(what)});
    }

    std::string whereIs(std::string_view token) const {
        for (int i = 0; i < seats_ && !record_.isRochester; ++i) {
            if (rowOf(table_[at(i)], token) >= 0) {
                return ", but in that before " + name(i);
            }
        }
        return {};
    }

    void pass() {
        picked_.fill(false);
        ++pick_;
        const auto last = table_.begin() + seats_;
        if (packIndex_ % 2 == 0) {
            std::rotate(table_.begin(), last - 1, last);
        } else {
            std::rotate(table_.begin(), table_.begin() + 1, last);
        }
    }

    void on(const PlayerLost& event) {
        if (lost_[at(event.position)] || end_) {
            blame(name(event.position) + " is lost when there is nobody to lose.");
        }
        lost_[at(event.position)] = true;
    }
    void on(const OddityNoted& event) {
        odd_[at(event.position)][static_cast<std::size_t>(event.what)] = true;
        result_.findings.push_back({Finding::About::Player, end_ ? std::string() : place(),
                                    wordsFor(event.what, name(event.position))});
    }
    void on(const CodeReported& /*event*/) {}
    void on(const DraftEnded& event) {
        if (end_) {
            blame("The draft ends twice.");
        }
        end_ = event.how;
    }

    const DraftRecord& record_;
    const std::function<void(const PlayedTurn&)>& onTurn_;
    const int seats_;
    Replayed result_;
    bool isLost_ = false;
    int packs_ = 0;  // dealt so far
    int packIndex_ = 0;
    int pick_ = 1;
    std::array<Pack, kSeats> table_;  // Rochester: the first alone
    std::array<bool, kSeats> picked_{};
    std::array<bool, kSeats> lost_{};
    std::array<std::array<bool, kOddities>, kSeats> odd_{};  // since the last pick
    RochesterTurns order_{};
    std::array<int, kSeats> unusedTurns_{};
    std::optional<DraftEnd> end_;
};

}  // namespace

Replayed replay(const DraftRecord& record, const std::function<void(const PlayedTurn&)>& onTurn) {
    return Replay(record, onTurn).run();
}

PickLog picksOf(const DraftRecord& record, int position) {
    PickLog log;
    for (const RecordPlayer& player : record.players) {
        log.players.push_back(player.name);
    }
    log.self = position;
    replay(record, [&](const PlayedTurn& turn) {
        if (!record.isRochester && turn.position != position) {
            return;
        }
        SeenPack seen{turn.pack,
                      turn.pick,
                      record.sets.at(static_cast<std::size_t>(turn.packIndex)),
                      record.isRochester ? log.players[static_cast<std::size_t>(turn.position)]
                                         : std::string(),
                      turn.cards.cards(),
                      turn.row};
        for (std::string& card : seen.cards) {
            card.erase(0, 1);
        }
        log.packs.push_back(std::move(seen));
    });
    return log;
}

std::string_view nameOfToken(std::string_view token) {
    return token.substr(std::min<std::size_t>(1, token.size()));
}

}  // namespace packwise
