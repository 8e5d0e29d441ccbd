// A server whose links only note what is written to them, and the steps of a script: who joins,
// what comes in, which link breaks at which write. Socket numbers are 1 to 8.
#pragma once

#include "server/drafter.h"
#include "server/draftserver.h"
#include "server/quietview.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace packwise {

struct SceneChoices {
    bool rochester = false;
    bool timed = false;
    int seconds = 5;
    int packs = 3;
    bool real = false;
    bool fixSeats = false;
    bool halt = false;
    bool silence = false;
    std::vector<std::string> sets = std::vector<std::string>(kMostPacks, "Tiny");
};

class Scene : private SeatLinks, private HostChoices, private QuietView {
public:
    // Card files are read from the current directory.
    explicit Scene(SceneChoices wanted, std::uint64_t seed = 1);

    SceneChoices choices;
    DraftServer server;
    std::string transcript;            // each write, "1 HELO1~", and what was done, "> connect"
    std::function<void()> duringABox;  // what happens while the host's box stands

    void connect();
    void join(int num, const std::string& name);
    void say(int num, const std::string& bytes);
    void hangUp(int num);  // an orderly close by the peer
    // The link is broken at that write to it from now on, 1 the next one / already now.
    void breakAtWrite(int num, int write);
    void breakNow(int num);
    void poke();
    void tick();
    void start();
    // The host exchanges table positions and presses OK.
    void seated(const std::vector<std::pair<int, int>>& exchanges);
    void kick(int num);
    void ping(int num);

    // Each seat answers, one after another, as a well-behaved client does; `before` is called with
    // its number first. False when nobody had anything to answer.
    bool act(const std::function<void(int)>& before = {});
    // Acts and ticks until nothing changes, at most so many rounds.
    void play(int rounds = 100000);

private:
    struct Link {
        LinkState state = LinkState::Free;
        std::string arrived;
        int writes = 0;
        int breaksAt = 0;
        Drafter client;
    };

    Link& at(int num) { return links_.at(static_cast<std::size_t>(num)); }
    const Link& at(int num) const { return links_.at(static_cast<std::size_t>(num)); }
    void note(const std::string& line) { transcript += line + '\n'; }
    void box(const std::string& text);
    bool nobodyIsLeft();
    void startAsTheHost();
    void settle();
    std::uint64_t next();
    double draw() { return static_cast<double>(next() >> 11U) * 0x1.0p-53; }

    LinkState state(int num) const override { return at(num).state; }
    std::string address(int num) const override;
    void write(int num, std::string_view bytes) override;
    std::size_t unsent(int) const override { return 0; }
    std::string read(int num, std::size_t most) override;
    bool hasArrived(int num) const override { return !at(num).arrived.empty(); }
    void close(int num) override;

    bool isRochester() const override { return choices.rochester; }
    bool isTimed() const override { return choices.timed; }
    int pickSeconds() const override { return choices.seconds; }
    int packCount() const override { return choices.packs; }
    std::string setName(int packIndex) const override {
        return choices.sets.at(static_cast<std::size_t>(packIndex));
    }
    bool haltsOnDrop() const override { return choices.halt; }
    bool isSilent() const override { return choices.silence; }

    void wantTicks() override { ticks_ = true; }
    void wantTurn() override { turn_ = true; }
    std::vector<Pack> dealPacks(int packIndex, int count) override;
    void cardDataFailed() override { box("Error reading file"); }

    std::uint64_t random_;
    std::array<Link, kSeats + 2> links_;
    std::vector<int> order_;  // while seats are fixed: seat index by table position
    bool listening_ = true;
    bool ticks_ = false;
    bool turn_ = false;
};

}  // namespace packwise
