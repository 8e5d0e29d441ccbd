// Eight players without a window, on plain sockets and one poll loop: they join a server on this
// machine and pick at once, and they take the time.
#pragma once

#include "protocol/framing.h"
#include "protocol/messages.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace packwise::bench {

struct DraftTimes {
    std::vector<double> passes;  // seconds from the last BPCK written to the eighth BOOS read
    double whole = 0;            // seconds of a draft of instant players, first BOOS to last BPCK
};

class PassClients {
public:
    ~PassClients();

    // Connects eight players, one after the other, and joins as "P1" to "P8". False on failure.
    bool join(std::uint16_t port);

    // Plays rounds of `cards` cards until `passes` passes are done. With `measure`, each pass is
    // played in step: seven seats first, then the eighth, whose pick is timed. Otherwise every
    // player answers as soon as its pack is there. False when the server falls silent.
    bool play(int passes, bool measure, DraftTimes& times);

private:
    struct Player {
        int fd = -1;
        MessageSplitter stream;
        Pack pack;           // empty while none is there to pick from
        int picksHeard = 0;  // since play() has last set it to 0
        bool joined = false;

        void on(const to_client::Name& message);
        void on(const to_client::ShowPack& message);
        void on(const to_client::Picked& message);
    };

    bool readSome(int timeoutMilliseconds);
    static void pick(Player& player);
    template <class Condition>
    bool waitFor(Condition condition);

    std::array<Player, kSeats> players_;
};

// The least that a server can be: it deals and passes packs on in a poll loop, with one write for
// each message, as the real one does. It looks at nothing that it need not look at, and so does
// without the messages' types.
class BareServer {
public:
    BareServer();
    ~BareServer();
    std::uint16_t port() const { return port_; }

    // Serves eight players and `passes` passes, then returns. Runs in a thread of its own.
    void run(int passes);

private:
    int listener_ = -1;
    std::uint16_t port_ = 0;
};

// A pack of that many cards with names of an ordinary length.
Pack makePack(int cards, int seat);

}  // namespace packwise::bench
