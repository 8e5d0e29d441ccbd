// One table of a host without a window: a front end of the draft server, with its port, its timers
// and its own start. It reports in words and shows nothing. Seat indexes are 0 to 7, socket
// numbers 1 to 8.
#pragma once

#include "host/options.h"
#include "platform/socketlinks.h"
#include "record/recordkeeper.h"
#include "server/draftserver.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QTimer;

namespace packwise {

class HostTable : public QObject, private HostChoices, private ServerView {
    Q_OBJECT
public:
    // Takes a line for the host to read, without its time.
    using Report = std::function<void(const QString&)>;

    // `options` outlives this. `draw` gives a uniform u, 0 <= u < 1.
    HostTable(const HostOptions& options, quint16 port, std::function<double()> draw, Report report,
              QObject* parent = nullptr);

    // Opens the port. False when it cannot be had, see listenFault().
    bool open();
    QString listenFault() const { return sockets_[0]->listenFault(); }
    quint16 port() const { return port_; }

    const DraftServer& server() const { return *server_; }
    bool isDrafting() const {
        return phase_ == Phase::Serving && server_->state() == DraftServer::State::Drafting;
    }
    // Whether nothing will happen here any more, and whether that was not meant to be.
    bool isOver() const { return phase_ == Phase::Over; }
    bool hasFailed() const { return hasFailed_; }

    // What the table does, and a line for each seat that is taken.
    QStringList list() const;
    // Begins the draft. Gives why not; empty when it has begun.
    QString start();
    // The socket number of a player, as "#3" for who sits on the third seat or by name as it is
    // reported; 0 when nobody is meant, or more than one.
    int socketOf(const QString& name) const;
    void kick(int num);
    // False while another answer is awaited, or when nobody is there.
    bool ping(int num);
    void say(const QString& text);
    // Tells the players to close; the table is over once they have, or two seconds later.
    void quit();

    // Waits until the record of its last draft is on the disk. For a table that is over.
    void keepRecord() const { record_->finish(); }

    // The handlers of its timers.
    void onSecond();
    void onPingSecond();
    void onTick();
    void onTurn();

Q_SIGNALS:
    void over();

private:
    enum class Phase {
        Serving,  // from the lobby to the end of the draft
        Leaving,  // the players have been told to close
        Closed,   // the port is yet to be had again
        Over
    };

    void makeSockets();
    void makeServer();

    // Runs what may reach the server, and reports what has become of the draft. Whatever is thrown
    // costs this table alone.
    void run(const std::function<void()>& work);
    void reportProgress();
    void fail(const QString& why);

    // Once a second.
    void countDown();
    void lookAtDraft();
    void lookAtTheEnd();

    void startDraft();
    void leave();
    void endLeaving();
    bool isAnybodyThere() const;
    bool isAPlayerThere() const;

    void tell(const QString& line);  // from the server to all players
    // A line that strangers cause: so many a second and no more.
    void reportCaused(const QString& line);
    QString nameOf(int seat) const;
    QString waitedFor() const;
    void reportStart();
    void reportCodes();
    QString where() const;

    // HostChoices
    bool isRochester() const override { return options_.isRochester; }
    bool isTimed() const override { return options_.isTimed; }
    int pickSeconds() const override { return options_.pickSeconds; }
    int packCount() const override { return static_cast<int>(options_.sets.size()); }
    std::string setName(int packIndex) const override;
    bool haltsOnDrop() const override { return options_.haltsOnDrop; }
    bool isSilent() const override { return options_.isSilent; }

    // ServerView
    void showSeat(int seat, const std::string& name) override;
    void showPlayer(int, const std::string&, const std::string&) override {}
    void blink(int) override {}
    void showCode(int seat, std::int32_t code) override;
    void showPong(int seconds) override;
    void wantTicks() override;
    void wantTurn() override;
    std::vector<Pack> dealPacks(int packIndex, int count) override;
    void cardDataFailed() override;

    const HostOptions& options_;
    const quint16 port_;
    const std::function<double()> draw_;
    const Report report_;

    SocketLinks::Sockets sockets_;
    SocketLinks links_{sockets_};
    std::unique_ptr<RecordKeeper> record_;
    std::unique_ptr<DraftServer> server_;
    QTimer* seconds_;
    QTimer* ticks_;    // every two seconds, once wanted
    QTimer* turns_;    // at the next turn of the event loop
    QTimer* pings_;    // every second from a ping on
    QTimer* leaving_;  // until the players have closed

    Phase phase_ = Phase::Closed;
    bool quits_ = false;
    bool hasFailed_ = false;
    bool dealsAlongLists_ = false;
    DraftServer::State told_ = DraftServer::State::Lobby;  // the last state that was reported

    int secondsToStart_ = 0;  // 0 while none are counted
    QString whoLeftTheCount_;
    bool startIsRefused_ = false;  // by the card data, until another player comes
    int secondsInStep_ = 0;        // since the draft waits for what it waits for
    int step_ = 0;
    int secondsSinceDraft_ = 0;
    int linesThisSecond_ = 0;
    int linesLeftOut_ = 0;

    int pinged_ = 0;  // the socket number whose answer is awaited
    QElapsedTimer sincePing_;

    std::array<QString, kSeats> names_;  // by seat index; of a draft's players to its end
    std::array<std::optional<std::int32_t>, kSeats> codes_;
};

}  // namespace packwise
