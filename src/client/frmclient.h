// The draft client: the socket to the server, and the mirror of the draft on the player's screen.
// It holds no draft logic and takes any command at any time. lstPack shows Pack row by row, its
// text colour and cmdDraft tell whether the client may pick, and lblTick is the clock that it
// shows. Picks is the store of the picked cards; lstPicked and lstPickedNS are views of it.
//
// Names go by seat index 0-7, shaSeat, lblNameB, lblNameR and txtLastPick by table position 0-7.
#pragma once

#include "client/cardcolors.h"
#include "engine/pickkeeper.h"
#include "platform/socket.h"
#include "protocol/messages.h"
#include "widgets/form.h"
#include "widgets/lazy.h"
#include "widgets/shape.h"

#include <QDateTime>
#include <QStringList>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class QCheckBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace packwise {

class CardList;
class ColorBars;
class FrmCard;
class FrmDeckBuild;
class FrmMessage;
class FrmSecurity;
class PassingArrow;
class Shell;

class FrmClient : public Form {
    Q_OBJECT
public:
    // The window's size in a draft, and where the card popup stands beside it, in twips.
    static constexpr int kDraftWidth = 5865;
    static constexpr int kBoosterHeight = 5145;
    static constexpr int kRochesterHeight = 7200;
    static constexpr int kCardGap = 240;

    // `draw` gives a uniform value u, 0 <= u < 1, for the picks that the clock makes.
    FrmClient(Shell& shell, Lazy<FrmMessage>& frmMessage, Lazy<FrmDeckBuild>& frmDeckBuild,
              Lazy<FrmSecurity>& frmSecurity, Lazy<FrmCard>& frmCard, std::function<double()> draw);

    // The link.
    Socket* wskClient;
    QTimer* tmrMisc;     // the keep-alive
    QTimer* tmrClose;    // gives "DROP~" time to leave
    QTimer* tmrSilence;  // counts the seconds without a word of the server
    QFrame* fraStatus;
    Shape* shaLight;
    QLabel* lblStatus;

    // The pack.
    QLabel* lblRound;
    QPushButton* cmdDraft;
    std::array<Shape*, kMostCardsInPack + 1> shaDot;  // the last is a spare that is always blank
    CardList* lstPack;

    // The picked cards.
    QCheckBox* chkSort;
    QLabel* lblStuff;
    ColorBars* fraColors;
    std::array<Shape*, kColors> shaBar;  // white border: that colour is shown
    QCheckBox* chkInfo;
    Shape* Shape1;
    CardList* lstPicked;
    CardList* lstPickedNS;

    // The Booster ring.
    QFrame* fraBooster;
    std::array<Shape*, kSeats> shaSeat;
    std::array<QLabel*, kSeats> lblNameB;
    PassingArrow* imgCW;
    PassingArrow* imgCCW;

    // The Rochester ring.
    QFrame* fraRoch;
    std::array<QLabel*, kSeats> lblNameR;
    std::array<QLineEdit*, kSeats> txtLastPick;
    QLabel* lblTick;
    CardList* lstHistory;  // always two rows
    QPushButton* cmdOK;
    QTimer* tmrRoch;
    QTimer* tmrReview;

    // To be set before connecting.
    QString clientName;

    // Begins to connect to wskClient's host and port.
    void Connect();

    // Writes a whole message, "~" included, to the server; dropped when there is no connection.
    void Send(std::string_view message);

    // What the player has seen of the draft.
    PickLog pickLog() const;

    void wskClient_DataArrival();
    void wskClient_Close();
    void wskClient_Error();
    void tmrMisc_Timer();
    void tmrClose_Timer();
    void tmrSilence_Timer();
    void Form_GotFocus();
    void Form_LostFocus();

    void cmdDraft_Click();
    void lstPack_DblClick();
    void lstPack_MouseDown();
    void chkInfo_Click();

    void chkSort_Click();
    // A place in fraColors, in twips.
    void fraColors_MouseDown(Qt::MouseButton button, int x, int y);
    void lstPicked_MouseDown();

    void tmrRoch_Timer();
    void tmrReview_Timer();
    void cmdOK_Click();

    // The messages of the server.
    void on(const to_client::Close& message);
    void on(const to_client::Chat& message);
    void on(const to_client::Ping& message);
    void on(const to_client::Pong&) {}  // the light has blinked
    void on(const to_client::Hello& message);
    void on(const to_client::Status& message);
    void on(const to_client::Drop& message);
    void on(const to_client::Name& message);
    void on(const to_client::Address& message);
    void on(const to_client::Test& message);
    void on(const to_client::Seat& message);
    void on(const to_client::Sets& message);
    void on(const to_client::Info& message);
    void on(const to_client::Round& message);
    void on(const to_client::ShowPack& message);
    void on(const to_client::Picked& message);
    void on(const to_client::Turn& message);
    void on(const to_client::Pick& message);
    void on(const to_client::Review& message);
    void on(const to_client::Pause& message);
    void on(const to_client::Answered& message);
    void on(const to_client::Over& message);
    void on(const to_client::Snow& message);
    void on(const to_client::Code& message);

Q_SIGNALS:
    // The player, who looks elsewhere, is called: something waits for a pick.
    void playerCalled();

protected:
    bool queryUnload(UnloadMode mode) override;
    // Escape closes the card popup.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeControls();
    void makeStatus();
    void makePack(QWidget* draft);
    void makePicked(QWidget* draft);
    void makeBooster(QWidget* draft);
    void makeRochester(QWidget* draft);
    void makeTimers();
    void connectControls();

    void Dispatch(std::string_view message);

    // `detail` is plain text for the tool tip and for a screen reader.
    void setStatus(const QString& status, const QString& detail = {});
    // "host, port n", for the user.
    QString serverPlace() const;
    // What the server itself has said last, as sentences; empty when it has said nothing.
    QString lastWords() const;
    // Dispatches what has come over a link that is lost. False when that has closed it.
    bool takeArrived();
    // Draws the eye of a player who looks elsewhere.
    void callPlayer();

    // Red whatever is asked for while the socket is closed.
    void setLight(const QColor& color);
    void countPlayers();
    void describeSeat(std::size_t position);
    void colorSeat(std::size_t position, const QColor& color);
    // Only a name that is lit reads in full colour; `state` tells the same in words.
    void lightNameR(std::size_t position, bool lit, const QString& state);
    void disableNamesR();
    // Ends what the pause has taken from the picked list that is covered.
    void takeFocusAgain();
    void addHistory(const QString& line);
    int tick() const;  // the number that lblTick shows
    void setTick(int seconds);
    void showPack(const std::vector<std::string>& tokens);

    void MakePick(bool random);
    void sendRest();
    // Black while the client may pick, else grey.
    void colorPack(const QColor& color);
    void allowPick();
    // Takes a row out of the pack and closes up what stands beside it.
    void removePackRow(int row);
    void describeDot(std::size_t row, const QString& color);
    void filePick(std::size_t color, const std::string& name);
    void RebuildPicked();
    void describeBars();
    bool isShown(std::size_t color) const;
    // Beside this window, off the list in which the card was chosen.
    void placeCard(const CardList& list);
    void showCard(const QString& name);
    void hideCard();

    Shell& shell_;
    Lazy<FrmMessage>& frmMessage_;
    Lazy<FrmDeckBuild>& frmDeckBuild_;
    Lazy<FrmSecurity>& frmSecurity_;
    Lazy<FrmCard>& frmCard_;
    std::function<double()> draw_;

    QWidget* fraDraft_;  // all that the small window before the draft does not show
    MessageSplitter received_;
    int myNumber = 0;  // socket number 1-8
    int myPosition = 0;
    int playerCount = 0;
    char draftType = ' ';  // 'B', 'R', or ' ' before INFO
    int clockSeconds = 0;  // 0 in an untimed draft
    bool hasFocus_ = false;
    bool draftOver_ = false;  // the deck builder has opened
    int silentSeconds_ = 0;
    int connectingSeconds_ = 0;  // without an answer
    QString lastStat_;
    QString lastSaid_;  // no chat line of a player
    std::array<QString, kSeats> Names;
    std::array<std::string, kMostCardsInPack + 1> Pack;  // card tokens
    std::array<std::string, kColors> Picks;              // names, each followed by "|"
    QStringList Sets;                                    // six display names
    PickKeeper keeper_;
    QDateTime begun_;  // the draft
};

}  // namespace packwise
