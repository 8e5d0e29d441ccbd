// Plays whole drafts of both formats on the engine alone, with players who get lost at any moment,
// even inside a write of the flow, and with duplicate, late and malformed messages.
//
//   draft_simulation [drafts [seed]]
//
// Every draft can be played again: draft number n of a seed is draft 0 of the seed + n.
#include "engine/fakehost.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace packwise {
namespace {

void check(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

class Simulation {
public:
    explicit Simulation(std::uint64_t seed)
        : random_(seed), host_(upTo(8) + 1, upTo(4) + 3), booster_(upTo(2) == 0) {
        host_.keepSent = false;
        host_.cards = upTo(15) + 1;
        host_.uniform = [this] { return uniform_(random_); };
        seat();
        lossInWrite_ = upTo(3) == 0 ? 0.002 : 0.0;
        lossInCycle_ = upTo(3) == 0 ? 0.02 : 0.001;
        host_.onWrite = [this](int socket, std::string_view text) { watch(socket, text); };
    }

    // Throws with the broken invariant.
    void play() {
        if (upTo(10) == 0) {  // lost before the start, when no timer runs yet
            host_.gone.at(static_cast<std::size_t>(anyPlayer())) = true;
        }
        booster_ ? host_.booster.begin() : host_.rochester.begin();
        // A card taken or an answer given in each cycle would need about 800 of them.
        for (int cycles = 0; !host_.over; ++cycles) {
            check(cycles < 20000, "the draft does not end");
            cycle();
        }
        check(table_.empty() && onTable_ == 0, "cards are left on the table");
        check(packs_ == host_.table.packCount * (booster_ ? 1 : host_.table.playerCount),
              "number of packs or rounds");
    }

private:
    int upTo(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    bool chance(double p) { return uniform_(random_) < p; }
    int anyPlayer() {
        return host_.table.socketAt.at(static_cast<std::size_t>(upTo(host_.table.playerCount)));
    }

    // Players on any sockets, at the positions 0 to playerCount - 1.
    void seat() {
        std::vector<int> seats = {0, 1, 2, 3, 4, 5, 6, 7};
        std::shuffle(seats.begin(), seats.end(), random_);
        const DraftTable before = host_.table;
        host_.table.clear();
        host_.table.playerCount = before.playerCount;
        host_.table.packCount = before.packCount;
        for (int i = 0; i < before.playerCount; ++i) {
            host_.table.place(seats.at(static_cast<std::size_t>(i)), i);
        }
    }

    void cycle() {
        for (int i = 0; i < host_.table.playerCount && !host_.over; ++i) {
            if (chance(0.1)) {
                noise(upTo(11) - 1);
            }
            const int socket = host_.table.socketAt.at(static_cast<std::size_t>(i));
            if (!host_.dropped(socket) && chance(0.8)) {
                booster_ ? answerBooster(socket) : answerRochester(socket, i);
            }
            if (chance(lossInCycle_)) {
                host_.lose(anyPlayer());
            }
        }
        if (chance(0.5)) {
            host_.tick();
        }
        checkRanges();
    }

    void answerBooster(int socket) {
        const auto seat = static_cast<std::size_t>(socket);
        const std::vector<std::string> cards = readFields(host_.lastBoos.at(seat));
        if (cards.empty()) {
            return;
        }
        std::string rest = "BPCK";
        const int taken = upTo(static_cast<int>(cards.size()));
        for (int i = 0; i < static_cast<int>(cards.size()); ++i) {
            if (i != taken) {
                rest += cards.at(static_cast<std::size_t>(i)) + kFieldEnd;
            }
        }
        host_.receive(socket, rest);
        if (chance(0.05)) {
            host_.receive(socket, rest);
        }
    }

    void answerRochester(int socket, int position) {
        host_.receive(socket, phase_ == "REVW" ? "RROK" : "RPOK");
        if (turn_ == position + 1 && !table_.empty()) {
            if (chance(0.2)) {
                host_.receive(socket, "RAND");
            }
            const std::string pick = "RPCK" + std::to_string(upTo(static_cast<int>(table_.size())));
            host_.receive(socket, pick);
            if (chance(0.05)) {
                host_.receive(socket, pick);
            }
        }
    }

    // A message that no sound client would send at that moment.
    void noise(int socket) {
        static const std::vector<std::string> kNoise = {
            "",        "BPC",    "BPCK||", "BPCKx",  "BPCKa|b",
            "BPCK|a|", "RROK",   "RPOK",   "RAND",   "RPCK",
            "RPCK15",  "RPCK-1", "RPCKxx", "RPCK0!", "RPCK99999999999",
            "RROKx",   "TURN1",  "OVER",   "BOOSa|", "RPCK0x",
            "SEAT00"};
        host_.receive(socket,
                      kNoise.at(static_cast<std::size_t>(upTo(static_cast<int>(kNoise.size())))));
        if (socket >= 1 && socket <= kSeats && !host_.dropped(socket)) {
            host_.receive(socket, "BPCK" + host_.lastBoos.at(static_cast<std::size_t>(socket)));
        }
    }

    void checkRanges() {
        const int players = host_.table.playerCount;
        const int picksIn = host_.booster.picksIn();
        check(picksIn >= 0 && picksIn <= players, "picksIn");
        const int answers = host_.rochester.answers();
        check(answers >= 0 && answers <= players, "answers");
        const int turn = host_.rochester.rochTurn();
        check(turn >= 0 && turn <= host_.rochester.rochCards(), "rochTurn");
        check(host_.table.roundNo <= std::max(host_.table.packCount + 1, players), "roundNo");
        check(host_.rochester.rochSet() <= host_.table.packCount, "rochSet");
    }

    // Sees every write, as the clients do.
    void watch(int socket, std::string_view text) {
        const std::string_view command = text.substr(0, kCommandLength);
        const std::string_view body = text.substr(kCommandLength);
        if (command == "ROUN") {
            ++packs_;
            check(table_.empty() && onTable_ == 0, "a pack is opened over another");
        } else if (booster_) {
            watchBooster(socket, command, body);
        } else {
            watchRochester(command, body);
        }
        if (chance(lossInWrite_)) {
            host_.lose(anyPlayer());
        }
    }

    void watchBooster(int socket, std::string_view command, std::string_view body) {
        if (command == "BOOS") {
            check(!host_.dropped(socket), "a pack goes to a lost seat");
            const int position = host_.table.positionOfSocket(socket);
            check(host_.booster.seatPack(position) == body, "not the pack before the seat");
        } else if (command == "BSTA") {
            check(host_.booster.seatPicked(*readSeatDigit(body)), "a seat without a pick is told");
            const std::size_t before =
                onTable_ > 0 ? onTable_
                             : static_cast<std::size_t>(host_.cards * host_.table.playerCount);
            onTable_ = cardsOnTable();
            check(onTable_ + 1 == before, "a pick takes one card");
        }
    }

    // The cards before all seats: none twice, all packs of one size but for this pass's picks.
    std::size_t cardsOnTable() {
        std::vector<std::string_view> cards;
        std::set<int> sizes;
        for (int i = 0; i < host_.table.playerCount; ++i) {
            std::string_view pack = host_.booster.seatPack(i);
            sizes.insert(countCards(pack) + (host_.booster.seatPicked(i) ? 1 : 0));
            for (std::size_t end; (end = pack.find(kFieldEnd)) != std::string_view::npos;) {
                cards.push_back(pack.substr(0, end));
                pack.remove_prefix(end + 1);
            }
        }
        check(sizes.size() == 1, "packs of different sizes");
        std::sort(cards.begin(), cards.end());
        check(std::adjacent_find(cards.begin(), cards.end()) == cards.end(),
              "a card lies on the table twice");
        return cards.size();
    }

    void watchRochester(std::string_view command, std::string_view body) {
        const int players = host_.table.playerCount;
        if (command == "BOOS") {
            const std::vector<std::string> cards = readFields(body);
            table_.insert(cards.begin(), cards.end());
            check(static_cast<int>(table_.size()) == host_.cards, "cards in the pack");
        } else if (command == "REVW" || command == "RPAU") {
            phase_ = command;
            turn_ = 0;
            answered_.clear();
        } else if (command == "RSTA") {
            check(answered_.insert(*readSeatDigit(body)).second, "a seat answers twice");
        } else if (command == "TURN") {
            turn_ = *readNumber(body);
            check(turn_ >= 1 && turn_ <= players, "a turn of nobody");
            check(static_cast<int>(answered_.size()) == players, "a turn before all answers");
            check(!table_.empty(), "a turn without a card");
        } else if (command == "RPCK") {
            std::string_view row = body.substr(1);
            if (row.ends_with('!')) {
                row.remove_suffix(1);
            }
            const auto card = readNumber(row);
            check(card && *card >= 0 && *card < static_cast<int>(table_.size()), "no such row");
            table_.erase(std::next(table_.begin(), *card));
            turn_ = 0;
        }
    }

    std::mt19937_64 random_;
    std::uniform_real_distribution<double> uniform_{0.0, 1.0};
    FakeHost host_;
    bool booster_;
    double lossInWrite_ = 0;
    double lossInCycle_ = 0;
    int packs_ = 0;
    std::size_t onTable_ = 0;      // Booster: cards that nobody has taken
    std::set<std::string> table_;  // Rochester: the cards that nobody has taken
    std::string phase_;            // Rochester: the last of REVW and RPAU
    int turn_ = 0;                 // Rochester: the seat number on turn, 0 between turns
    std::set<int> answered_;
};

}  // namespace
}  // namespace packwise

int main(int argc, char** argv) {
    const unsigned long drafts = argc > 1 ? std::stoul(argv[1]) : 10000;
    const unsigned long seed = argc > 2 ? std::stoul(argv[2]) : 1;
    const auto start = std::chrono::steady_clock::now();
    for (unsigned long i = 0; i < drafts; ++i) {
        try {
            packwise::Simulation(seed + i).play();
        } catch (const std::exception& broken) {
            std::printf("draft of seed %lu: %s\n", seed + i, broken.what());
            return 1;
        }
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::printf("%lu drafts in %.1f s, all invariants held\n", drafts, took.count());
    return 0;
}
