// A draft of one to seven players on the real server, without sockets. What all are told is what
// an onlooker on socket 8 hears.
#pragma once

#include "server/draftserver.h"
#include "server/quietview.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace packwise {

class SmallTable : private SeatLinks, private HostChoices, private QuietView {
public:
    // Players called P1, P2 and so on, on the sockets 1 to `players`.
    SmallTable(int players, bool rochester, DraftObserver* observer = nullptr)
        : server(
              *this, *this, *this, [this] { return uniform(); }, observer),
          rochester_(rochester) {
        for (int num = 1; num <= kSeats; ++num) {
            open_.at(at(num)) = num <= players || num == kSeats;
            if (num <= players) {
                receive(num, "NAMEP" + std::to_string(num));
            }
        }
    }

    DraftServer server;
    int cards = 3;  // in a pack: U0a0, U0a1, U0a2 in the first one, U0b0 in the second
    std::vector<std::string> sets = std::vector<std::string>(kMostPacks, "Sample");
    std::function<double()> uniform = [] { return 0.0; };
    // "2:BOOS..." for a pack to one, the message alone for one to all; no terminators.
    std::vector<std::string> sent;
    std::array<std::string, kSeats + 1> lastPack;  // by socket number

    // Starts the draft with the players in their order; `sent` then begins at its first round.
    void begin() {
        server.start();
        for (const int seat : std::vector<int>(server.players())) {
            server.seatAt(seat, seat);
        }
        server.deal();
        while (!sent.front().starts_with("ROUN")) {
            sent.erase(sent.begin());
        }
    }
    void receive(int socket, std::string_view text) { server.handle(socket, text); }
    // From all players who are still there.
    void receiveFromAll(std::string_view text) {
        for (const int seat : server.players()) {
            if (open_.at(at(seat + 1))) {
                receive(seat + 1, text);
            }
        }
    }
    void lose(int socket) { server.disconnect(socket); }
    bool isOver() const { return server.state() == DraftServer::State::Over; }

    // What has gone out since the last call, less the chat lines.
    std::vector<std::string> take() {
        std::erase_if(sent, [](const std::string& message) { return message.starts_with("MESG"); });
        return std::exchange(sent, {});
    }

private:
    static std::size_t at(int num) { return static_cast<std::size_t>(num); }

    LinkState state(int num) const override {
        return open_.at(at(num)) ? LinkState::Open : LinkState::Free;
    }
    std::string address(int) const override { return "127.0.0.1"; }
    std::size_t unsent(int) const override { return 0; }
    std::string read(int, std::size_t) override { return {}; }
    bool hasArrived(int) const override { return false; }
    void close(int num) override { open_.at(at(num)) = false; }
    void write(int num, std::string_view bytes) override {
        const std::string text(bytes.substr(0, bytes.size() - 1));
        const bool ownPack = text.starts_with("BOOS") && !rochester_;
        if (ownPack) {
            lastPack.at(at(num)) = text.substr(kCommandLength);
        }
        if (ownPack || num == kSeats) {
            sent.push_back((ownPack ? std::to_string(num) + ":" : "") + text);
        }
    }

    bool isRochester() const override { return rochester_; }
    bool isTimed() const override { return false; }
    int pickSeconds() const override { return 5; }
    int packCount() const override { return 3; }
    std::string setName(int packIndex) const override { return sets.at(at(packIndex)); }
    bool haltsOnDrop() const override { return false; }
    bool isSilent() const override { return false; }

    std::vector<Pack> dealPacks(int packIndex, int count) override {
        std::vector<Pack> packs(at(count));
        for (Pack& pack : packs) {
            const char letter = static_cast<char>('a' + packsMade_++ % 26);
            for (int i = 0; i < cards; ++i) {
                pack.add("U" + std::to_string(packIndex) + letter + std::to_string(i));
            }
        }
        return packs;
    }

    bool rochester_;
    std::array<bool, kSeats + 1> open_{};
    int packsMade_ = 0;
};

}  // namespace packwise
