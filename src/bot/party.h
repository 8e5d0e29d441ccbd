// The players of one run: they join one after another, and leave together.
#pragma once

#include "bot/botseat.h"

#include <QObject>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace packwise {

class Party : public QObject {
    Q_OBJECT
public:
    // `say` takes each line for the user.
    Party(BotOptions options, BotSeat::Say say, QObject* parent = nullptr);

    // Begins to join.
    void start();

    // Everybody leaves in order.
    void leave();

Q_SIGNALS:
    // Nobody is left. `status` is the exit status: 0, or 1 when no player ever sat or a file could
    // not be saved.
    void finished(int status);

private:
    void joinNext();
    void onSettled();
    void onOver(BotSeat& seat);
    void stopJoining(const QString& why);
    void tellEnding(const BotSeat& seat);
    void finishIfEmpty();
    std::set<std::string> takenNames() const;
    int freeSeats() const;

    BotOptions options_;
    BotSeat::Say say_;
    CardBook book_;
    std::uint64_t seed_;
    std::vector<std::unique_ptr<BotSeat>> seats_;
    std::set<std::string> refused_;  // names that sit already
    bool joining_ = true;
    bool leaving_ = false;
    bool everSat_ = false;
    bool finished_ = false;
};

}  // namespace packwise
