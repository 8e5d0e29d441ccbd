// A player's surroundings without sockets and clocks.
#pragma once

#include "bot/player.h"
#include "support/test.h"

namespace packwise {

class FakeLink : public PlayerLink {
public:
    std::string sent;
    std::optional<int> timer;  // milliseconds
    std::vector<std::string> lines;
    std::vector<std::string> deck;
    std::vector<std::string> sideboard;
    PickLog picks;
    int decks = 0;
    bool over = false;

    std::string take() { return std::exchange(sent, {}); }

    void send(std::string_view message) override { sent += message; }
    void startTimer(int milliseconds) override { timer = milliseconds; }
    void stopTimer() override { timer.reset(); }
    void report(std::string_view line) override { lines.emplace_back(line); }
    void began() override {}
    std::optional<std::int32_t> saveDeck(std::string_view, const std::vector<std::string>& cards,
                                         const std::vector<std::string>& rest,
                                         const PickLog& log) override {
        picks = log;
        deck = cards;
        sideboard = rest;
        ++decks;
        return -44281;
    }
    void ended() override { over = true; }
};

// Lets the time that the player waits for pass.
inline void elapse(Player& player, FakeLink& link) {
    while (link.timer) {
        link.timer.reset();
        player.onTimer();
    }
}

}  // namespace packwise
