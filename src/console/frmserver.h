// The host's console: a front end of the draft server. Its controls are the store of the host's
// choices, which the server reads when it needs them: cboPack, optPack and the boxes of the Draft
// Info frame. lstNames, the lights and Draft Information show what the server tells.
#pragma once

#include "companions/frmsecurity.h"
#include "console/frmfixseats.h"
#include "console/localclient.h"
#include "console/reachpanel.h"
#include "console/setbox.h"
#include "platform/routerport.h"
#include "platform/socketlinks.h"
#include "record/recordkeeper.h"
#include "widgets/form.h"
#include "widgets/lazy.h"
#include "widgets/listbox.h"
#include "widgets/shape.h"
#include "widgets/shell.h"

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

class FrmServer : public Form, private HostChoices, private ServerView {
    Q_OBJECT
public:
    // `draw` gives a uniform u, 0 <= u < 1. The record of the draft goes into the folder `records`;
    // there is none when that is empty.
    FrmServer(Shell& shell, Lazy<FrmSecurity>& security, Lazy<FrmFixSeats>& fixSeats,
              LocalClient& localClient, std::function<double()> draw, const QString& records = {});

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
    QLabel* lblSecs;      // the seconds of the pick clock, 1 to kMostSeconds
    QScrollBar* vsbSecs;  // to_client::Info::kMostSeconds less the seconds
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
    ReachPanel* reach;
    QPushButton* cmdStart;

    QTimer* tmrPoke;
    QTimer* tmrPing;
    QTimer* tmrRandoms;
    QTimer* tmrTurns;  // at the next turn of the event loop: seats whose messages wait

    // 0 listens, 1 to 8 are the seats, 9 tells a ninth connection that there is no room.
    SocketLinks::Sockets wskServer;

    // Seats, dispatcher and draft.
    const DraftServer& server() const { return server_; }
    DraftServer& server() { return server_; }

    // Begins the draft once the players have their places.
    void StartUp2();

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
    void setSeatRow(int row, const QString& text) const;
    void updatePingByRow();

    // Opening the port.
    bool openPort();
    void startLocalClient();
    bool someConnectionOpen() const;

    // The start of the draft.
    // Why no pack can be dealt for some round; empty when all can be.
    QString faultOfPacks() const;
    void storeChoices();
    void disableChoices();
    void showFixSeats(const QStringList& names);  // by seat index
    void fixSeatsDone();
    // Whether there is no draft to be had any more; the host has then been told.
    bool nobodyIsLeft();

    // HostChoices: the controls are the store.
    bool isRochester() const override;
    bool isTimed() const override;
    int pickSeconds() const override;
    int packCount() const override;
    std::string setName(int packIndex) const override;
    bool haltsOnDrop() const override;
    bool isSilent() const override;

    // ServerView
    void showSeat(int seat, const std::string& name) override;
    void showPlayer(int seat, const std::string& name, const std::string& address) override;
    void blink(int seat) override;
    void showCode(int seat, std::int32_t code) override;
    void showPong(int seconds) override;
    void wantTicks() override;
    void wantTurn() override;
    std::vector<Pack> dealPacks(int packIndex, int count) override;
    void cardDataFailed() override;

    Shell& shell_;
    Lazy<FrmSecurity>& security_;
    Lazy<FrmFixSeats>& fixSeats_;
    LocalClient& localClient_;
    std::function<double()> draw_;

    QStandardItemModel* sets_;  // the list of every cboPack

    RouterPort routerPort_;
    SocketLinks links_{wskServer};
    RecordKeeper record_;
    DraftServer server_;
    QElapsedTimer sinceListen_;
    bool pingLentFocus_ = false;  // to lstNames, until the answer
    bool fixingSeats_ = false;    // the seating window has the word
};

}  // namespace packwise
