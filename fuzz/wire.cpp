#include "wire.h"

#include "protocol/messages.h"
#include "record/recorder.h"
#include "record/replay.h"
#include "server/draftserver.h"
#include "server/quietview.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace packwise {

namespace {

void need(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

class FuzzedTable : private SeatLinks, private HostChoices, private QuietView {
public:
    explicit FuzzedTable(std::string_view bytes) : bytes_(bytes), options_(next()) {}

    void play() {
        while (!bytes_.empty()) {
            const unsigned step = next();
            const int num = 1 + static_cast<int>(step % kSeats);
            act(step / kSeats, num);
            while (std::exchange(turn_, false)) {
                server_.turn();
            }
            need(server_.booster().picksIn() <= server_.table().playerCount, "picks of a pass");
            need(server_.rochester().rochTurn() <= server_.rochester().rochCards(), "turns");
        }
        recorder_.giveUp();
        if (recorder_.isComplete()) {
            for (const Finding& finding : replay(recorder_.record(), {}).findings) {
                need(finding.about == Finding::About::Player, "a record is by the rules");
            }
        }
    }

private:
    struct Link {
        LinkState state = LinkState::Free;
        std::string arrived;
    };

    unsigned next() {
        const auto byte = bytes_.empty() ? 0U : static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(bytes_.empty() ? 0 : 1);
        return byte;
    }
    Link& at(int num) { return links_.at(static_cast<std::size_t>(num)); }
    const Link& at(int num) const { return links_.at(static_cast<std::size_t>(num)); }

    void act(unsigned what, int num) {
        switch (what % 16) {
            case 0:
                if (const int free = server_.state() == DraftServer::State::Lobby
                                         ? server_.socketForNewcomer()
                                         : 0) {
                    at(free).state = LinkState::Open;
                    server_.welcome(free);
                }
                return;
            case 1:
                at(num).state =
                    at(num).state == LinkState::Open ? LinkState::Broken : at(num).state;
                return;
            case 2:
                server_.poke();
                return;
            case 3:
                server_.tick();
                return;
            case 4:
                start();
                return;
            case 5:
                server_.kick(num);
                return;
            case 6:
                server_.ping(num);
                return;
            default:
                say(num, next());
        }
    }

    void say(int num, std::size_t length) {
        if (at(num).state == LinkState::Open) {
            at(num).arrived += bytes_.substr(0, length);
            server_.onArrival(num);
        }
        bytes_.remove_prefix(std::min(length, bytes_.size()));
    }

    void start() {
        if (server_.state() != DraftServer::State::Lobby || server_.namedSeats().empty()) {
            return;
        }
        server_.start();
        if (server_.canGoOn()) {
            server_.seatByChance();
        }
        if (server_.canGoOn()) {
            server_.deal();
        }
    }

    LinkState state(int num) const override { return at(num).state; }
    std::string address(int num) const override { return std::to_string(num % 3); }
    std::size_t unsent(int) const override { return 0; }
    bool hasArrived(int num) const override { return !at(num).arrived.empty(); }
    void close(int num) override { at(num) = Link(); }
    void write(int num, std::string_view bytes) override {
        need(at(num).state == LinkState::Open, "a write to an open link");
        need(bytes.ends_with(kTerminator) && bytes.size() <= kMostMessageLength + 1, "a message");
        if (++writes_ % 64 == options_ % 64U) {
            at(num).state = LinkState::Broken;
        }
    }
    std::string read(int num, std::size_t most) override {
        std::string bytes = at(num).arrived.substr(0, most);
        at(num).arrived.erase(0, bytes.size());
        return bytes;
    }

    bool isRochester() const override { return (options_ & 1U) != 0; }
    bool isTimed() const override { return (options_ & 2U) != 0; }
    int pickSeconds() const override { return 5; }
    int packCount() const override { return 3; }
    std::string setName(int) const override { return "Alliances"; }
    bool haltsOnDrop() const override { return (options_ & 4U) != 0; }
    bool isSilent() const override { return (options_ & 8U) != 0; }

    void wantTurn() override { turn_ = true; }
    std::vector<Pack> dealPacks(int, int count) override {
        Pack pack;
        for (const char* card : {"Ua", "Bb", "Gc"}) {
            pack.add(card);
        }
        return std::vector<Pack>(static_cast<std::size_t>(count), pack);
    }

    std::string_view bytes_;
    unsigned options_;
    std::array<Link, kSeats + 1> links_;
    unsigned writes_ = 0;
    bool turn_ = false;
    Recorder recorder_{[] { return std::string(); }};
    DraftServer server_{*this, *this, *this, [this] { return (writes_ * 37U % 100U) / 100.0; },
                        &recorder_};
};

// Reads what was read once more, out of what it was written as.
struct Echo {
    template <class Message>
    void on(const Message& message) {
        const std::string text = message.write();
        need(text.starts_with(Message::kLetters) && text.ends_with(kTerminator), "a message");
        const std::string_view body = std::string_view(text).substr(kCommandLength);
        const auto again = Message::read(body.substr(0, body.size() - 1));
        need(again && *again == message, "what is written reads as it was");
    }
    void on(const to_server::PackBack& message) {
        if (message.rest) {
            on<to_server::PackBack>(message);
        }
    }
    void on(const to_server::Pick& message) {
        if (message.row) {
            on<to_server::Pick>(message);
        }
    }
};

}  // namespace

void fuzzServer(std::string_view bytes) {
    FuzzedTable(bytes).play();
}

void fuzzMessages(std::string_view bytes) {
    Echo echo;
    MessageSplitter splitter;
    splitter.append(bytes);
    splitter.append("~");
    while (const auto message = splitter.next()) {
        to_server::dispatch(*message, echo);
        to_client::dispatch(*message, echo);
    }
}

}  // namespace packwise
