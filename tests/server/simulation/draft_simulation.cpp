// Plays whole drafts of both formats on the real server, without a socket: links break at any
// write, bytes arrive in any cut, peers leave, chat, answer twice, and send anything at all. After
// each event the invariants are looked at, and at the end the record.
//
//   draft_simulation [drafts [seed]]
//
// Every draft can be played again: draft number n of a seed is draft 0 of the seed + n.
#include "record/recorder.h"
#include "record/replay.h"
#include "server/draftserver.h"
#include "server/quietview.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace packwise {
namespace {

void check(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

int readId(std::string_view digits) {
    int id = -1;
    std::from_chars(digits.data(), digits.data() + digits.size(), id);
    return id;
}

class Simulation : private SeatLinks, private HostChoices, private QuietView {
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
        if (dealt_ > 0) {
            lookAtRecord();
        }
    }

private:
    struct Peer {
        LinkState state = LinkState::Free;
        std::string arrived;
        bool joined = false;  // has been told all eight names
        std::array<std::string, kSeats> names;
        int position = -1;
        Pack pack;                     // Rochester: as its client shows it
        int picks = 0;                 // that it has heard of
        std::string answer;            // owed
        std::bitset<kSeats> answered;  // by position, since the last pack, review or pause
        int pings = 0;
    };
    // Cards of a round, each by how many were dealt behind it.
    static constexpr int kMostOnTable = kSeats * kMostCardsInPack;
    using Cards = std::bitset<std::size_t{kMostOnTable}>;

    double draw() { return static_cast<double>(random_() >> 11U) * 0x1.0p-53; }
    int upTo(int n) { return static_cast<int>(draw() * n); }
    bool chance(double p) { return p > 0 && draw() < p; }
    Peer& at(int num) { return peers_[static_cast<std::size_t>(num)]; }
    const Peer& at(int num) const { return peers_[static_cast<std::size_t>(num)]; }

    void gather() {
        for (int visitors = upTo(10) + 1; visitors > 0 || server_.namedSeats().empty();
             --visitors) {
            const int num = server_.socketForNewcomer();
            if (num == 0) {
                server_.poke();  // the nameless have to go some time
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
        lobby_ = false;
    }

    void seatInOrder() {
        int position = 0;
        for (const int seat : std::vector<int>(server_.players())) {
            server_.seatAt(seat, position++);
        }
    }

    // Bytes in any cut.
    void arrive(int num, std::string_view bytes) {
        while (!bytes.empty() && at(num).state == LinkState::Open) {
            const auto cut = static_cast<std::size_t>(
                chance(0.1) ? upTo(static_cast<int>(bytes.size())) + 1 : bytes.size());
            at(num).arrived += bytes.substr(0, cut);
            bytes.remove_prefix(cut);
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
        static constexpr std::array<const char*, 29> kNoise = {
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
            bytes = kNoise.at(static_cast<std::size_t>(upTo(static_cast<int>(kNoise.size()))));
            bytes += '~';
        }
        // Half a message would swallow the front of the next one.
        arrive(num, bytes + "~");
        settle();
    }

    void look() {
        const int left = cardsLeft();
        const Pack* shown = nullptr;  // Rochester: on all screens
        for (std::size_t seat = 0; seat < kSeats; ++seat) {
            const std::string& name = server_.seat(static_cast<int>(seat)).name;
            check(seated_[seat] == name, "the host's names are not the server's");
            check(!lobby_ || listed_[seat] == name, "the host lists who is not there");
        }
        for (int num = 1; num <= kSeats; ++num) {
            const Peer& peer = at(num);
            for (int seat = 0; seat < kSeats && lobby_ && peer.joined; ++seat) {
                check(peer.names[static_cast<std::size_t>(seat)] == server_.seat(seat).name,
                      "a client's names are not the server's");
            }
            if (peer.state == LinkState::Open && dealt_ > 0) {
                check(peer.picks + left == dealt_, "a card is neither picked nor in a pack");
                shown = shown ? shown : &peer.pack;
                check(peer.pack == *shown, "clients show different packs");
            }
        }
        check(!rochester_ || !shown || shown->size() == left, "cards in the pack");
        if (server_.booster().running()) {
            lookAtPasses();
        }
        check(dealt_ == 0 || canGoOn(), "nobody has to do anything");
    }

    // Booster: the packs before the seats, and the lights of who has picked.
    void lookAtPasses() {
        Cards cards;
        std::bitset<kSeats> picked;
        const int size = server_.booster().seatPack(0).size() + server_.booster().seatPicked(0);
        for (int i = 0; i < server_.table().playerCount; ++i) {
            const Pack& pack = server_.booster().seatPack(i);
            picked.set(static_cast<std::size_t>(i), server_.booster().seatPicked(i));
            check(pack.size() + server_.booster().seatPicked(i) == size, "unequal packs");
            add(pack, cards);
        }
        check((cards & ~onTable_).none(), "a card appears from nowhere");
        onTable_ = cards;
        for (const Peer& peer : peers_) {
            check(peer.state != LinkState::Open || peer.position < 0 || peer.answered == picked,
                  "a client's lights are not the server's");
        }
    }

    // The record agrees with the rules of the draft, and one with a change does not.
    void lookAtRecord() {
        DraftRecord record = recorder_.record();
        const auto isSound = [&record] {
            const Replayed replayed = replay(record, {});
            return replayed.isFollowed &&
                   std::all_of(replayed.findings.begin(), replayed.findings.end(),
                               [](const Finding& finding) {
                                   return finding.about == Finding::About::Player;
                               });
        };
        check(recorder_.isComplete() && !recorder_.hasFailed(), "no record");
        check(isSound(), "the record of the draft is not sound");
        if (chance(0.01)) {
            RecordFault fault;
            check(readRecord(writeRecord(record), fault) == record, "a file is not its record");
        }
        change(record);
        check(!isSound(), "a record that was changed is sound");
    }

    // Anything that is done to a record afterwards.
    void change(DraftRecord& record) {
        const auto at = record.events.begin() + upTo(static_cast<int>(record.events.size()));
        const auto isPlayed = [](const RecordEvent& event) {
            return std::holds_alternative<CardTaken>(event) ||
                   std::holds_alternative<PackDealt>(event);
        };
        auto changed = std::find_if(at, record.events.end(), isPlayed);
        changed = changed == record.events.end() ? std::find_if(record.events.begin(), at, isPlayed)
                                                 : changed;
        if (auto* const taken = std::get_if<CardTaken>(&*changed); taken && upTo(2) == 0) {
            taken->card += 'x';
        } else if (auto* const dealt = std::get_if<PackDealt>(&*changed)) {
            dealt->packIndex = (dealt->packIndex + 1) % packs_;
        } else {
            const RecordEvent again = *changed;
            record.events.insert(changed, again);
        }
    }

    void add(const Pack& pack, Cards& cards) const {
        std::string_view rest = pack.text();
        for (; !rest.empty(); rest.remove_prefix(rest.find(kFieldEnd) + 1)) {
            const int behind = dealt_ - readId(rest.substr(1));
            check(behind >= 0 && behind < kMostOnTable, "no card of this round");
            check(!cards.test(static_cast<std::size_t>(behind)), "a card twice");
            cards.set(static_cast<std::size_t>(behind));
        }
    }

    // Whether somebody owes an answer, or the tick one for him, or a loss is yet to be found.
    bool canGoOn() const {
        bool lost = false;
        for (const int seat : server_.players()) {
            const Peer& peer = at(seat + 1);
            lost = lost || server_.seat(seat).dropped;
            if (peer.state == LinkState::Broken || !peer.answer.empty()) {
                return true;
            }
        }
        return lost && ticks_;
    }

    int cardsLeft() const {
        int cards = server_.rochester().rochCards() - server_.rochester().rochTurn();
        for (int i = 0; i < kSeats && !rochester_; ++i) {
            cards += server_.booster().seatPack(i).size();
        }
        return cards;
    }

    // What a client does with a message.
    void hear(int num, std::string_view text) {
        Peer& peer = at(num);
        const std::string_view command = text.substr(0, kCommandLength);
        const std::string_view body = text.substr(command.size());
        if (command == "BSTA" || command == "RSTA") {
            peer.picks += command == "BSTA" ? 1 : 0;
            // An onlooker of a Booster draft is not told when the next pass begins.
            if (rochester_ || peer.position >= 0) {
                const auto position = static_cast<std::size_t>(body[0] - '0');
                check(!peer.answered.test(position), "a seat answers twice");
                peer.answered.set(position);
            }
        } else if (command == "BOOS") {
            const auto pack = Pack::read(body);
            check(pack && (rochester_ || !pack->empty()), "no pack");
            if (rochester_) {
                peer.pack = *pack;
                return;
            }
            check(peer.position >= 0, "a pack for an onlooker");
            check(server_.booster().seatPack(peer.position) == *pack, "not the seat's pack");
            peer.answered.reset();
            const int taken = upTo(pack->size());
            peer.answer.assign("CARD").append(pack->card(taken)).append("~BPCK");
            peer.answer.append(pack->without(taken).text()).append("~");
        } else if (command == "RPCK") {
            const int row = readId(body.substr(1));
            check(row >= 0 && row < peer.pack.size(), "no such row");
            peer.pack.remove(row);
            ++peer.picks;
        } else if (command == "TURN") {
            check(body[0] - '1' == server_.rochester().turnPosition(), "another one's turn");
            check(!peer.pack.empty(), "a turn without a card");
            if (body[0] - '1' == peer.position) {
                peer.answer = chance(0.2) ? "RAND~RPCK" : "RPCK";
                peer.answer += std::to_string(upTo(peer.pack.size())) + "~";
            }
        } else if (command == "REVW" || command == "RPAU") {
            check(command == "REVW" || peer.pack.empty(), "a pause over a pack");
            peer.answer = command == "REVW" ? "RROK~" : "RPOK~";
            peer.answered.reset();
        } else if (command == "NAME") {
            peer.names.at(static_cast<std::size_t>(body[0] - '0')) = body.substr(1);
        } else if (command == "DROP") {
            peer.names.at(static_cast<std::size_t>(body[0] - '0')).clear();
        } else if (command == "SEAT" && body[0] - '0' == num - 1) {
            peer.position = body[1] - '0';
        } else if (command == "PONG") {
            check(--peer.pings >= 0, "an answer to nobody's ping");
        }
    }

    LinkState state(int num) const override { return at(num).state; }
    std::string address(int num) const override { return std::to_string(num); }
    std::size_t unsent(int) const override { return 0; }
    bool hasArrived(int num) const override { return !at(num).arrived.empty(); }
    void write(int num, std::string_view bytes) override {
        Peer& peer = at(num);
        check(peer.state == LinkState::Open, "a write to a link that is not open");
        check(bytes.ends_with(kTerminator), "half a message");
        for (std::size_t end; (end = bytes.find(kTerminator)) != std::string_view::npos;) {
            hear(num, bytes.substr(0, end));
            bytes.remove_prefix(end + 1);
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

    void showSeat(int seat, const std::string& name) override {
        seated_.at(static_cast<std::size_t>(seat)) = name;
    }
    void showPlayer(int seat, const std::string& name, const std::string&) override {
        listed_.at(static_cast<std::size_t>(seat)) = name;
    }
    void wantTicks() override { ticks_ = true; }
    void wantTurn() override { turn_ = true; }
    std::vector<Pack> dealPacks(int, int count) override {
        check(cardsLeft() == 0, "a pack is opened over another");
        std::vector<Pack> packs(static_cast<std::size_t>(count));
        for (Pack& pack : packs) {
            for (int i = 0; i < cards_; ++i) {
                pack.add("U" + std::to_string(++dealt_));
            }
        }
        onTable_ = ~Cards() >> static_cast<std::size_t>(kMostOnTable - count * cards_);
        return packs;
    }
    void cardDataFailed() override { check(false, "no pack"); }

    std::mt19937_64 random_;
    bool rochester_ = false;
    int packs_ = 3;
    int cards_ = 15;
    bool halts_ = false;
    double lossInWrite_ = 0;
    double lossInCycle_ = 0;
    double noise_ = 0;
    std::array<Peer, kSeats + 1> peers_;
    std::array<std::string, kSeats> seated_;  // as the host sees them
    std::array<std::string, kSeats> listed_;
    bool lobby_ = true;
    bool ticks_ = false;
    bool turn_ = false;
    int dealt_ = 0;
    Cards onTable_;  // Booster: the cards that nobody has taken
    Recorder recorder_{[] { return std::string("now"); }};
    DraftServer server_{*this, *this, *this, [this] { return draw(); }, &recorder_};
};

}  // namespace
}  // namespace packwise

int main(int argc, char** argv) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    const unsigned long drafts = argc > 1 ? std::stoul(argv[1]) : 10000;
    const unsigned long seed = argc > 2 ? std::stoul(argv[2]) : 1;
    const Clock::time_point start = Clock::now();
    Clock::time_point told = start;
    for (unsigned long i = 0; i < drafts; ++i) {
        try {
            packwise::Simulation(seed + i).play();
        } catch (const std::exception& broken) {
            std::printf("draft of seed %lu: %s\n", seed + i, broken.what());
            return 1;
        }
        if (i % 1000 == 0 && Clock::now() - told > std::chrono::seconds(5)) {
            told = Clock::now();
            const double rate = static_cast<double>(i) / Seconds(told - start).count();
            std::fprintf(stderr, "%lu of %lu drafts, %.0f a second\n", i, drafts, rate);
        }
    }
    std::printf("%lu drafts in %.1f s, all invariants held\n", drafts,
                Seconds(Clock::now() - start).count());
    return 0;
}
