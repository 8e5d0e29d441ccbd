// The host's console, and the whole server: seat table, connections, dispatcher, and the draft
// that runs on them. The seat table is spread over parallel controls and arrays: the sockets, the
// rows of lstNames, the lights and the arrays by seat index. lstNames is the store of who counts
// as a player; cboPack, optPack and the boxes of the Draft Info frame are the store of the
// draft's choices.
#pragma once

#include "common/protocol.h"
#include "common/shell.h"
#include "companions/frmsecurity.h"
#include "engine/boosterflow.h"
#include "engine/rochesterflow.h"
#include "platform/form.h"
#include "platform/lazy.h"
#include "platform/listbox.h"
#include "platform/shape.h"
#include "platform/socket.h"
#include "server/allowance.h"
#include "server/flowhost.h"
#include "server/frmfixseats.h"
#include "server/localclient.h"
#include "server/setbox.h"

#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QStandardItemModel;

namespace packwise {

// What comes in from one client.
class ClientStream : public MessageSplitter {
public:
    ClientStream() : MessageSplitter(kMostClientMessageLength) {}
};

class FrmServer : public Form {
    Q_OBJECT
public:
    // `draw` gives a uniform u, 0 <= u < 1.
    FrmServer(Shell& shell, Lazy<FrmSecurity>& security, Lazy<FrmFixSeats>& fixSeats,
              LocalClient& localClient, std::function<double()> draw);

    // The port and the host's own client.
    QLabel* lblPortQ;
    QLineEdit* txtPort;
    QPushButton* cmdOpenPort;
    QCheckBox* chkClient;
    QLineEdit* txtName;
    QLabel* Image1;

    QGroupBox* fraDraft;
    QRadioButton* optBooster;
    QRadioButton* optRochester;
    QCheckBox* chkTimed;
    QLabel* lblSecs;      // the seconds of the pick clock, 1 to 30
    QScrollBar* vsbSecs;  // 30 minus the seconds
    QCheckBox* chkFixSeats;
    QCheckBox* chkReal;

    QGroupBox* fraPacks;
    std::array<SetBox*, kMostPacks> cboPack;          // the set of each pack
    std::array<QRadioButton*, kMostPacks> optPack{};  // index plus 1 packs; none at 0 and 1

    // The seats, by seat index. An empty row is " ".
    ListBox* lstNames;
    std::array<Shape*, kSeats> shaLight;
    QPushButton* cmdKick;
    QPushButton* cmdPing;
    QLineEdit* txtPing;
    QCheckBox* chkHalt;
    QCheckBox* chkSilence;
    QPushButton* cmdStart;

    QTimer* tmrPoke;
    QTimer* tmrPing;
    QTimer* tmrRandoms;
    QTimer* tmrTurns;  // at the next turn of the event loop: seats whose messages wait

    // 0 listens, 1 to 8 are the seats, 9 tells a ninth connection that there is no room.
    std::array<Socket*, kSeats + 2> wskServer;

    // By seat index.
    std::array<std::string, kSeats> playerName;   // "" without a name
    std::array<std::string, kSeats> playerCards;  // names of the picks, each followed by "|"
    std::array<ClientStream, kSeats> inBuffer;
    std::array<Allowance, kSeats> allowance;
    std::array<int, kSeats> secondsNameless{};  // since the seat was taken, while it has no name
    // By socket number; element 0 is not used.
    std::array<bool, kSeats + 1> versionSeen{};
    std::array<bool, kSeats + 1> dropped{};

    std::string draftState;  // "N" before the draft, "D" while it runs, "O" after it
    int pingTicks = 0;       // seconds since cmdPing, up to 99

    // Writes to a socket number (1 to 9) / to the sockets 1 to 8. A broken connection costs its
    // seat, once what had come from it is handled; a free seat swallows what is written to it.
    void Send(int num, std::string_view message);
    void Broadcast(std::string_view message);

    // Handles one message, without its terminator, of a socket number.
    void Dispatch(int num, std::string_view text);

    // Empties the seat of a socket number.
    void Disconnect(int num);

    // Begins the draft once the players have their places.
    void StartUp2();

    const DraftTable& table() const { return table_; }
    const BoosterFlow& booster() const { return booster_; }
    const RochesterFlow& rochester() const { return rochester_; }

    void cmdOpenPort_Click();
    void cmdStart_Click();
    void cmdKick_Click();
    void cmdPing_Click();
    void chkClient_Click() const;
    void chkHalt_Click();
    void chkReal_Click();
    void chkSilence_Click();
    void optBooster_Click() const;
    void optRochester_Click() const;
    void optPack_Click(int index);
    void vsbSecs_Change() const;
    void lstNames_Click();
    void wskServer_ConnectionRequest(int index, ConnectionRequest& request);
    void wskServer_DataArrival(int index);
    void wskServer_Close(int index);
    void tmrPoke_Timer();
    void tmrPing_Timer();
    void tmrRandoms_Timer();
    void tmrTurns_Timer();

protected:
    bool queryUnload(UnloadMode mode) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    friend class FlowHost;

    // The window.
    void makeControls();
    void makeDraftFrame();
    void makePacksFrame();
    void makeSeatControls();
    void placeControls();
    void makeTimers();
    void makeSockets();
    void connectControls();
    void load();
    void loadSets();
    void loadPackChoices();
    void lookForSets();

    // The seats.
    ListBox& securityNames() { return *security_().lstNames; }
    ListBox& securityIPs() { return *security_().lstIP; }
    ListBox& securityCodes() { return *security_().lstCode; }
    void setSeatRow(int row, const QString& text) const;
    int lowestFreeSocket() const;
    bool giveUpANamelessSeat();
    void takeTurn(int num);
    void awaitTurn(int num);
    bool hasUnread(int num) const;
    // Hands a line that a seat causes on to everybody who keeps up with reading.
    void relayLine(int num, std::string_view message);
    int selectedRow() const;
    void updatePingByRow();

    // Opening the port.
    bool openPort();
    void startLocalClient();
    bool someConnectionOpen() const;

    // The commands of the dispatcher: socket number and body.
    struct Command;
    void onVersion(int num, std::string_view body);
    void onName(int num, std::string_view body);
    void onDrop(int num, std::string_view body);
    void onPing(int num, std::string_view body);
    void onPong(int num, std::string_view body);
    void onChat(int num, std::string_view body);
    void onPackBack(int num, std::string_view body);
    void onRandomMark(int num, std::string_view body);
    void onRochesterPick(int num, std::string_view body);
    void onPauseDone(int num, std::string_view body);
    void onReviewDone(int num, std::string_view body);
    void onCard(int num, std::string_view body);
    void onCode(int num, std::string_view body);

    // The start of the draft.
    std::vector<int> namedSeats() const;
    // Why no pack can be dealt for some round; empty when all can be.
    QString faultOfPacks() const;
    void findPlayers();
    int chosenPackCount() const;
    void storeChoices();
    void disableChoices();
    void showFixSeats(const QStringList& names);
    void fixSeatsDone();
    void seatPlayer(int seatIndex, int position);
    bool nobodyIsLeft();
    void tellSets();
    bool draftStopped() const { return halted_ || failed_ || shell_.ended(); }
    std::vector<std::string> makePacks(int packIndex, int count);
    void startRandoms();

    Shell& shell_;
    Lazy<FrmSecurity>& security_;
    Lazy<FrmFixSeats>& fixSeats_;
    LocalClient& localClient_;
    std::function<double()> draw_;

    QStandardItemModel* sets_;  // the list of every cboPack

    FlowHost host_{*this};
    DraftTable table_;
    BoosterFlow booster_{host_, table_};
    RochesterFlow rochester_{host_, table_};
    std::vector<int> players_;                   // seat indexes of those who are in the draft
    std::array<bool, kSeats + 1> awaitsTurn_{};  // by socket number
    QElapsedTimer sinceListen_;
    bool pingLentFocus_ = false;  // to lstNames, until the answer
    bool fixingSeats_ = false;    // the seating window has the word
    bool halted_ = false;         // a drop has ended the draft
    bool failed_ = false;         // card data could not be read, the program is ending
};

}  // namespace packwise
