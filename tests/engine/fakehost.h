// A server without sockets: it keeps what goes out, and loses players where a test says so.
#pragma once

#include "engine/boosterflow.h"
#include "engine/draft.h"
#include "engine/rochesterflow.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

class FakeHost : public DraftHost {
public:
    // Players sit on the sockets 1 to `players`, at the positions 0 to `players` - 1.
    FakeHost(int players, int packs) {
        table.playerCount = players;
        table.packCount = packs;
        for (int i = 0; i < players; ++i) {
            table.place(i, i);
        }
    }

    DraftTable table;
    BoosterFlow booster{*this, table};
    RochesterFlow rochester{*this, table};

    // "2:BOOS..." for a message to one, the message alone for one to all; no terminators.
    std::vector<std::string> sent;
    bool keepSent = true;
    std::array<std::string, kSeats + 1> lastBoos{};
    std::array<bool, kSeats + 1> gone{};
    bool randoms = false;
    bool over = false;
    int cards = 3;  // in a pack
    int packsMade = 0;
    std::vector<std::string> sets = std::vector<std::string>(6, "Sample");
    std::function<double()> uniform = [] { return 0.0; };
    std::function<void(int, std::string_view)> onWrite;  // socket, 0 for all

    void lose(int socket) {
        if (gone.at(static_cast<std::size_t>(socket))) {
            return;
        }
        gone.at(static_cast<std::size_t>(socket)) = true;
        broadcast("MESGx disconnected~");
        enableRandoms();
        rochester.onSeatLost(socket);
    }

    void receive(int socket, std::string_view text) {
        const auto message = readMessage(text);
        if (!message) {
            return;
        }
        if (message->command == "BPCK") {
            booster.onPackBack(socket, message->body);
        } else if (message->command == "RROK") {
            rochester.onReviewDone(socket);
        } else if (message->command == "RAND") {
            rochester.onRandomMark(socket);
        } else if (message->command == "RPCK") {
            rochester.onPick(socket, message->body);
        } else if (message->command == "RPOK") {
            rochester.onPauseDone(socket);
        }
    }

    void tick() {
        if (randoms) {
            booster.onRandomsTick();
            rochester.onRandomsTick();
        }
    }

    // What has gone out since the last call, less the chat lines.
    std::vector<std::string> take() {
        std::vector<std::string> taken;
        for (std::string& message : sent) {
            if (message.find("MESG") == std::string::npos) {
                taken.push_back(std::move(message));
            }
        }
        sent.clear();
        return taken;
    }

    void send(int socket, std::string_view data) override { write(socket, data); }
    void broadcast(std::string_view data) override { write(0, data); }
    void dispatch(int socket, std::string_view message) override { receive(socket, message); }
    std::vector<std::string> makePacks(int packIndex, int count) override {
        std::vector<std::string> packs;
        for (int i = 0; i < count; ++i) {
            packs.push_back(makePack(packIndex));
        }
        return packs;
    }
    std::string makePack(int packIndex) {
        const char letter = static_cast<char>('a' + packsMade++ % 26);
        std::string pack;
        for (int i = 0; i < cards; ++i) {
            pack += "U" + std::to_string(packIndex) + letter + std::to_string(i) + kFieldEnd;
        }
        return pack;
    }
    std::string setName(int packIndex) const override {
        return sets.at(static_cast<std::size_t>(packIndex));
    }
    bool dropped(int socket) const override { return gone.at(static_cast<std::size_t>(socket)); }
    double draw() override { return uniform(); }
    void tellReplacedPick(int socket) override {
        broadcast("MESG" + std::to_string(socket) + " replaced~");
    }
    void enableRandoms() override { randoms = true; }
    void draftOver() override { over = true; }

private:
    void write(int socket, std::string_view data) {
        const std::string_view text = data.substr(0, data.size() - 1);
        if (keepSent) {
            sent.push_back((socket == 0 ? "" : std::to_string(socket) + ":") + std::string(text));
        }
        if (text.starts_with("BOOS")) {
            lastBoos.at(static_cast<std::size_t>(socket)) = text.substr(4);
        }
        if (onWrite) {
            onWrite(socket, text);
        }
    }
};

}  // namespace packwise
