// A whole table in one process: a host's program with its console and its own client, and further
// programs that join over real sockets on this machine. Everything is done by pressing the
// windows' controls.
#pragma once

#include "app/program.h"
#include "support/boxscript.h"
#include "support/peer.h"

namespace packwise {

inline constexpr int kRounds = 3;

// Runs the event loop until the condition holds. False when it does not come to hold in time.
bool spinUntil(const std::function<bool()>& condition, int milliseconds = 5000);

// A folder with card data, the current directory for as long as it lives.
class CardFolder {
public:
    CardFolder();  // the sample sets
    // One set, "Tiny", of that many rares, uncommons and commons a pack.
    CardFolder(int rares, int uncommons, int commons);
    ~CardFolder();
    const QStringList& setNames() const { return setNames_; }  // display names

private:
    QString before_;
    QTemporaryDir folder_;
    QStringList setNames_;
};

// One player's program.
struct PlayerProgram {
    explicit PlayerProgram(int number);

    QString name;
    QTemporaryDir settingsFolder;
    Program program;
    BoxScript script{program.boxes()};
    bool gone = false;

    FrmClient& client() { return program.frmClient(); }
    bool mayPick() { return !gone && client().cmdDraft->isEnabled(); }
};

struct DraftChoices {
    bool rochester = false;
    bool timed = false;  // Rochester; 5 seconds a pick
    bool fixSeats = false;
    bool halt = false;
};

class DraftParty {
public:
    // The host opens the port and plays along; the others connect one after the other, so that
    // player i sits on seat index i. Each pack's set is chosen in turn from `sets`.
    DraftParty(int players, const QStringList& sets, int packs, const DraftChoices& choices = {});

    bool join();  // false when somebody does not get to the table

    FrmServer& console() { return host().program.frmServer(); }
    PlayerProgram& host() { return *players_.front(); }
    PlayerProgram& player(int seatIndex) {
        return *players_.at(static_cast<std::size_t>(seatIndex));
    }
    std::vector<std::unique_ptr<PlayerProgram>>& players() { return players_; }

    void start();

    // Every player who may pick takes a card, whoever's review runs lets it run out, and whoever
    // is asked for OK presses it; then the event loop runs once.
    void actOnce();

    // The same for one player. True when there was something to do.
    static bool act(PlayerProgram& player);

    // The player's connection goes without a word.
    void lose(int seatIndex);

    // Whether everybody who is still there has the deck builder on the screen.
    bool allBuildDecks() const;

private:
    int packs_;
    DraftChoices choices_;
    QStringList sets_;
    quint16 port_;
    std::vector<std::unique_ptr<PlayerProgram>> players_;
};

}  // namespace packwise
