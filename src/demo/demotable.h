// A demonstration draft: the host's program with console and own client and seven more programs in
// this process, joined over TCP on this machine. All is done by pressing the windows' controls.
#pragma once

#include "app/program.h"
#include "bot/cardbook.h"
#include "bot/picker.h"
#include "demo/narrator.h"
#include "demo/options.h"
#include "demo/pictures.h"
#include "platform/interrupt.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace packwise {

// Why the demonstration cannot go on, in a line.
class DemoFailure : public std::runtime_error {
public:
    explicit DemoFailure(const QString& reason) : std::runtime_error(reason.toStdString()) {}
};

// One player's program, and what he makes of his picks.
struct DemoSeat {
    DemoSeat(const QString& playerName, const QString& settingsFile, std::uint64_t seed);

    FrmClient& client() { return program.frmClient(); }

    QString name;
    Program program;
    Picker picker;
    std::vector<CardFacts> picks;
    QString colors;    // of the deck
    QString deckFile;  // whole path; empty before it is saved
    std::int32_t code = 0;
};

class DemoTable {
public:
    // `workFolder` is the current directory and holds the card files of `sets`, two display names;
    // the settings go there too. Decks go into `deckFolder`.
    DemoTable(const DemoOptions& options, const QString& workFolder, const QStringList& sets,
              const QString& deckFolder, const Pictures& pictures, Narrator& narrator);
    ~DemoTable();

    // Plays from the start windows to eight sound codes in every Draft Information. Throws
    // DemoFailure.
    void play();

    // Keeps the windows up for somebody who watches.
    void linger();

    const std::vector<std::unique_ptr<DemoSeat>>& seats() const { return seats_; }

private:
    DemoSeat& host() { return *seats_.front(); }
    // The player whose windows the pictures show.
    DemoSeat& shown() { return *seats_[3]; }
    FrmServer& console() { return host().program.frmServer(); }
    bool forAll(const std::function<bool(DemoSeat&)>& condition) const;

    // Runs the event loop until the condition holds. Throws when it does not come to hold, when
    // the user breaks off, and when a program has ended.
    void waitFor(const QString& what, const std::function<bool()>& condition);
    void pause(int milliseconds);
    void checkAlive() const;

    void join();
    void openPort(quint16 port);
    void connectSeat(DemoSeat& seat, quint16 port);
    void say(std::size_t seat, const QString& line);
    void takePicture(QWidget& window, const QString& name);

    // Drafting.
    void draft();
    bool act(DemoSeat& seat);  // false when there is nothing to do
    void pick(DemoSeat& seat);
    CardFacts factsOfCard(const QString& name);
    void onNewRound();
    void showBoosterDraft();
    void showRochesterDraft();
    void showCardAndTable(const QString& name);

    // Decks and codes.
    void buildDecks();
    void buildDeck(DemoSeat& seat);
    void showDeckBuilder(FrmDeckBuild& builder);
    void saveDeck(DemoSeat& seat);
    void checkCodes();

    DemoOptions options_;
    QStringList sets_;
    QString deckFolder_;
    const Pictures& pictures_;
    Narrator& narrator_;
    Interrupt interrupt_;
    bool interrupted_ = false;
    QString trouble_;  // what a message box has told
    CardBook book_;
    std::vector<std::unique_ptr<DemoSeat>> seats_;
    QString round_;
    int picked_ = 0;  // cards, by all
    bool draftShown_ = false;
};

}  // namespace packwise
