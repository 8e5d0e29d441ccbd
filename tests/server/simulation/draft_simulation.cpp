// Plays whole drafts of both formats on the real server, without a socket: links break at any
// write, bytes arrive in any cut, peers leave, chat, answer twice, and send anything at all. After
// each event the invariants are looked at.
//
//   draft_simulation [drafts [seed]]
//
// Every draft can be played again: draft number n of a seed is draft 0 of the seed + n.
#include "server/draftserver.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace packwise {
namespace {

void check(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

class Simulation : private SeatLinks, private HostChoices, private ServerView {
public:
    explicit Simulation(std::uint64_t seed) : random_(seed) {
        rochester_ = upTo(2) == 0;
        packs_ = upTo(4) + 3;
        cards_ = upTo(15) + 1;
        halts_ = upTo(6) == 0;
        lossInWrite_ = upTo(3) == 0 ? 0.0005 : 0.0;
        lossInCycle_ = upTo(3) == 0 ? 0.01 : 0.0005;
        noise_ = upTo(2) == 0 ? 0.05 : 0.0;
    }

    // Throws with the broken invariant.
    void play() {
        gather();
        server_.start();
        if (server_.canGoOn()) {
            upTo(2) == 0 ? server_.seatByChance() : seatInOrder();
        }
        settle();
        if (!server_.canGoOn()) {
            return;
        }
        server_.deal();
        settle();
        for (int cycles = 0; server_.state() == DraftServer::State::Drafting; ++cycles) {
            check(cycles < 20000, "the draft does not end");
            cycle();
        }
        if (server_.state() == DraftServer::State::Over) {
            check(cardsLeft() == 0, "cards are left on the table");
            const int players = static_cast<int>(server_.players().size());
            check(dealt_ == packs_ * players * cards_, "number of cards dealt");
        }
    }

private:
    struct Peer {
        LinkState state = LinkState::Free;
        std::string arrived;
        MessageSplitter heard;
        bool joined = false;  // has been told all eight names
        std::array<std::string, kSeats> names;
        int position = -1;
        std::vector<std::string> pack;  // as its client shows it
        bool mayPick = false;
        std::string answer;              // owed
        std::set<std::string> answered;  // table positions, since the last review or pause
        int pings = 0;
    };

    int upTo(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    bool chance(double p) { return uniform_(random_) < p; }
    Peer& at(int num) { return peers_.at(static_cast<std::size_t>(num)); }
    const Peer& at(int num) const { return peers_.at(static_cast<std::size_t>(num)); }

    void gather() {
        const int visitors = upTo(10) + 1;
        for (int i = 0; i < visitors; ++i) {
            const int num = server_.socketForNewcomer();
            if (num == 0) {
                continue;
            }
            at(num) = Peer();
            at(num).state = LinkState::Open;
            server_.welcome(num);
            if (!chance(0.1)) {
                arrive(num, "VERS1.41~NAMEP" + std::to_string(upTo(40)) + "~");
                at(num).joined = !server_.seat(num - 1).name.empty();
            }
            if (chance(0.1)) {
                lose(upTo(kSeats) + 1);
            }
            settle();
        }
        while (server_.namedSeats().empty()) {
            const int num = server_.socketForNewcomer();
            at(num) = Peer();
            at(num).state = LinkState::Open;
            server_.welcome(num);
            arrive(num, "NAMELast~");
            settle();
        }
        lobby_ = false;
    }

    void seatInOrder() {
        int position = 0;
        for (const int seat : std::vector<int>(server_.players())) {
            server_.seatAt(seat, position++);
        }
    }

    // Bytes in any cut.
    void arrive(int num, std::string bytes) {
        while (!bytes.empty() && at(num).state == LinkState::Open) {
            const auto cut = static_cast<std::size_t>(
                chance(0.1) ? upTo(static_cast<int>(bytes.size())) + 1 : bytes.size());
            at(num).arrived += bytes.substr(0, cut);
            bytes.erase(0, cut);
            server_.onArrival(num);
        }
    }

    void lose(int num) {
        if (at(num).state != LinkState::Open) {
            return;
        }
        at(num).state = LinkState::Broken;
        if (upTo(2) == 0) {
            server_.onArrival(num);  // else it is found by a write or by the poke
        }
    }

    void settle() {
        while (std::exchange(turn_, false)) {
            server_.turn();
        }
        if (lobby_ || server_.state() == DraftServer::State::Drafting) {
            look();
        }
    }

    void cycle() {
        for (int num = 1; num <= kSeats; ++num) {
            Peer& peer = at(num);
            if (chance(noise_)) {
                noise(num);
            }
            if (peer.state == LinkState::Open && !peer.answer.empty() && chance(0.8)) {
                const std::string answer = std::exchange(peer.answer, {});
                arrive(num, answer);
                if (chance(noise_)) {
                    arrive(num, answer);  // said twice
                }
                settle();
            }
            if (chance(lossInCycle_)) {
                lose(upTo(kSeats) + 1);
                settle();
            }
        }
        if (chance(0.3)) {
            server_.poke();
        }
        if (ticks_ && chance(0.5)) {
            server_.tick();
        }
        settle();
    }

    void noise(int num) {
        static const std::vector<std::string> kNoise = {
            "",        "BPC",    "BPCK||", "BPCKx",  "BPCKUa|b", "RROK",  "RPOK",   "RAND",
            "RPCK",    "RPCK15", "RPCK-1", "RPCKxx", "RPCK0!",   "RPCK0", "RROKx",  "TURN1",
            "OVER",    "BOOSa|", "SEAT00", "NAME",   "NAMEx",    "CODE1", "CARDUa", "DROP",
            "MESG hi", "VERS",   "PONG",   "TEST",   "CODEx"};
        std::string bytes;
        if (chance(0.2)) {
            for (int i = upTo(200); i > 0; --i) {
                bytes += static_cast<char>(upTo(256));
            }
        } else if (chance(0.2)) {
            ++at(num).pings;
            bytes = "PING~";
        } else {
            bytes =
                kNoise.at(static_cast<std::size_t>(upTo(static_cast<int>(kNoise.size())))) + "~";
        }
        // Half a message would swallow the front of the next one.
        arrive(num, bytes + "~");
        settle();
    }

    // The names on all screens; the cards before all seats, or on all screens.
    void look() const {
        if (lobby_) {
            for (int num = 1; num <= kSeats; ++num) {
                for (int seat = 0; seat < kSeats && at(num).joined; ++seat) {
                    check(at(num).names[static_cast<std::size_t>(seat)] == server_.seat(seat).name,
                          "a client's names are not the server's");
                }
            }
        } else if (rochester_) {
            const std::vector<std::string>* shown = nullptr;
            for (int num = 1; num <= kSeats; ++num) {
                if (at(num).state == LinkState::Open && dealt_ > 0) {
                    shown = shown ? shown : &at(num).pack;
                    check(at(num).pack == *shown, "clients show different packs");
                    check(static_cast<int>(shown->size()) == cardsLeft(), "cards in the pack");
                }
            }
        } else if (server_.booster().running()) {
            std::multiset<std::string> cards;
            std::set<int> sizes;
            for (int i = 0; i < server_.table().playerCount; ++i) {
                const Pack& pack = server_.booster().seatPack(i);
                sizes.insert(pack.size() + (server_.booster().seatPicked(i) ? 1 : 0));
                const auto tokens = pack.cards();
                cards.insert(tokens.begin(), tokens.end());
            }
            check(sizes.size() == 1, "packs of different sizes");
            check(std::includes(onTable_.begin(), onTable_.end(), cards.begin(), cards.end()),
                  "a card appears from nowhere");
            check(std::set(cards.begin(), cards.end()).size() == cards.size(), "a card twice");
            onTable_ = std::move(cards);
        }
    }

    int cardsLeft() const {
        int cards = server_.rochester().rochCards() - server_.rochester().rochTurn();
        for (int i = 0; i < kSeats && !rochester_; ++i) {
            cards += server_.booster().seatPack(i).size();
        }
        return cards;
    }

    // What a client does with a message.
    void hear(int num, const std::string& text) {
        Peer& peer = at(num);
        const std::string command = text.substr(0, kCommandLength);
        const std::string body = text.size() > kCommandLength ? text.substr(kCommandLength) : "";
        if (command == "NAME") {
            peer.names.at(static_cast<std::size_t>(body[0] - '0')) = body.substr(1);
        } else if (command == "DROP") {
            peer.names.at(static_cast<std::size_t>(body[0] - '0')).clear();
        } else if (command == "SEAT" && body[0] - '0' == num - 1) {
            peer.position = body[1] - '0';
        } else if (command == "PONG") {
            check(--peer.pings >= 0, "an answer to nobody's ping");
        } else if (command == "BOOS") {
            peer.pack = readFields(body);
            if (!rochester_) {
                check(peer.position >= 0, "a pack for an onlooker");
                check(server_.booster().seatPack(peer.position).text() == body,
                      "not the pack before the seat");
                peer.answer = boosterPick(peer);
            }
        } else if (command == "REVW" || command == "RPAU") {
            check(command == "REVW" || peer.pack.empty(), "a pause over a pack");
            peer.answer = command == "REVW" ? "RROK~" : "RPOK~";
            peer.answered.clear();
        } else if (command == "RSTA") {
            check(peer.answered.insert(body).second, "a seat answers twice");
        } else if (command == "TURN" && body[0] - '1' == peer.position) {
            check(!peer.pack.empty(), "a turn without a card");
            peer.answer = (chance(0.2) ? "RAND~RPCK" : "RPCK") +
                          std::to_string(upTo(static_cast<int>(peer.pack.size()))) + "~";
        } else if (command == "RPCK") {
            const auto row = static_cast<std::size_t>(std::stoi(body.substr(1)));
            check(row < peer.pack.size(), "no such row");
            peer.pack.erase(peer.pack.begin() + static_cast<std::ptrdiff_t>(row));
        }
    }

    std::string boosterPick(Peer& peer) {
        const auto taken =
            static_cast<std::size_t>(upTo(std::max(static_cast<int>(peer.pack.size()), 1)));
        std::string rest;
        for (std::size_t i = 0; i < peer.pack.size(); ++i) {
            rest += i == taken ? "" : peer.pack[i] + kFieldEnd;
        }
        return peer.pack.empty() ? "" : "CARD" + peer.pack[taken] + "~BPCK" + rest + "~";
    }

    LinkState state(int num) const override { return at(num).state; }
    std::string address(int num) const override { return std::to_string(num); }
    std::size_t unsent(int) const override { return 0; }
    bool hasArrived(int num) const override { return !at(num).arrived.empty(); }
    void write(int num, std::string_view bytes) override {
        Peer& peer = at(num);
        check(peer.state == LinkState::Open, "a write to a link that is not open");
        check(bytes.ends_with(kTerminator), "half a message");
        peer.heard.append(bytes);
        while (const auto message = peer.heard.next()) {
            hear(num, *message);
        }
        if (chance(lobby_ ? 0.005 : lossInWrite_)) {
            Peer& broken = upTo(2) == 0 ? peer : at(upTo(kSeats) + 1);
            broken.state = broken.state == LinkState::Open ? LinkState::Broken : broken.state;
        }
    }
    std::string read(int num, std::size_t most) override {
        std::string bytes = at(num).arrived.substr(0, most);
        at(num).arrived.erase(0, bytes.size());
        return bytes;
    }
    void close(int num) override { at(num) = Peer(); }

    bool isRochester() const override { return rochester_; }
    bool isTimed() const override { return false; }
    int pickSeconds() const override { return 5; }
    int packCount() const override { return packs_; }
    std::string setName(int) const override { return "Alliances"; }
    bool haltsOnDrop() const override { return halts_; }
    bool isSilent() const override { return false; }

    void showSeat(int, const std::string&) override {}
    void showPlayer(int, const std::string&, const std::string&) override {}
    void blink(int) override {}
    void showCode(int, std::int32_t) override {}
    void showPong(int) override {}
    void wantTicks() override { ticks_ = true; }
    void wantTurn() override { turn_ = true; }
    std::vector<Pack> dealPacks(int, int count) override {
        check(cardsLeft() == 0, "a pack is opened over another");
        onTable_.clear();
        std::vector<Pack> packs(static_cast<std::size_t>(count));
        for (Pack& pack : packs) {
            for (int i = 0; i < cards_; ++i) {
                pack.add("U" + std::to_string(++dealt_));
                onTable_.insert("U" + std::to_string(dealt_));
            }
        }
        return packs;
    }
    void cardDataFailed() override { check(false, "no pack"); }

    std::mt19937_64 random_;
    std::uniform_real_distribution<double> uniform_{0.0, 1.0};
    bool rochester_ = false;
    int packs_ = 3;
    int cards_ = 15;
    bool halts_ = false;
    double lossInWrite_ = 0;
    double lossInCycle_ = 0;
    double noise_ = 0;
    std::array<Peer, kSeats + 1> peers_;
    bool lobby_ = true;
    bool ticks_ = false;
    bool turn_ = false;
    int dealt_ = 0;
    mutable std::multiset<std::string> onTable_;  // Booster: the cards that nobody has taken
    DraftServer server_{*this, *this, *this, [this] { return uniform_(random_); }};
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
