// One player on a real socket, with real timers.
#pragma once

#include "bot/options.h"
#include "bot/player.h"
#include "platform/socket.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace packwise {

class BotSeat : public QObject, private PlayerLink {
    Q_OBJECT
public:
    using Say = std::function<void(const QString& line)>;

    // `say` takes each line that the player has to tell.
    BotSeat(const BotOptions& options, CardBook& book, std::uint64_t seed, Say say,
            QObject* parent = nullptr);

    // Connects to the server and gives that name.
    void join(const std::string& name);

    // Says good-bye and closes half a second later; then ends as for a player whose link is lost.
    void leave();

    const Player& player() const { return player_; }
    bool isAlive() const { return alive_; }
    // Whether there has been a connection since join().
    bool hasConnected() const { return hasConnected_; }
    // Whether a deck, or the picks that were to go with it, could not be saved.
    bool hasFailed() const { return hasFailed_; }

Q_SIGNALS:
    // The player sits, and knows who else does.
    void settled();
    // The connection is closed. See Player::ending().
    void over();

private:
    void send(std::string_view message) override;
    void startTimer(int milliseconds) override;
    void stopTimer() override;
    void report(std::string_view line) override;
    void began() override { begun_ = QDateTime::currentDateTime(); }
    std::optional<std::int32_t> saveDeck(std::string_view name,
                                         const std::vector<std::string>& deck,
                                         const std::vector<std::string>& sideboard,
                                         const PickLog& picks) override;
    void savePicks(const QString& deckPath, PickLog picks);
    void ended() override;

    void onData();
    void onGone();

    const BotOptions& options_;
    Say say_;
    Player player_;
    Socket socket_;
    QTimer thinking_;
    QTimer keepAlive_{this};
    QTimer patience_;  // for a server that does not answer
    QTimer farewell_;
    bool alive_ = false;
    bool hasConnected_ = false;
    bool hasFailed_ = false;
    bool settled_ = false;
    QDateTime begun_;  // the draft
};

}  // namespace packwise
