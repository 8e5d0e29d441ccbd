// A host without a window: its tables and the commands that are typed to it.
#pragma once

#include "host/hosttable.h"
#include "platform/addresses.h"
#include "platform/routerport.h"

#include <QObject>

#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace packwise {

class Host : public QObject {
    Q_OBJECT
public:
    // Takes a line for the host to read.
    using Say = std::function<void(const QString&)>;

    Host(HostOptions options, Say say, QObject* parent = nullptr);

    // Tries the sets and opens all ports. Gives what is wrong and what to do; nothing is open then.
    // Empty when it went well.
    QString open();

    // A typed line.
    void onLine(const QString& line);

    // Tells all players to close, and ends.
    void quit();

    // Table 1 is at 0.
    const HostTable& table(int index) const { return *tables_.at(static_cast<std::size_t>(index)); }
    HostTable& table(int index) { return *tables_.at(static_cast<std::size_t>(index)); }

Q_SIGNALS:
    // All tables are over. `status` is the exit status: 0, or 1 when one has failed.
    void finished(int status);

private:
    // What was typed: "2 kick Ada" is the verb "kick" with the rest "Ada" for the table 2.
    struct Typed {
        std::vector<HostTable*> tables;  // one, or all where none is named
        QString verb;
        QString rest;
    };

    void report(int table, const QString& line) const;
    QList<OwnAddress> addresses() const;
    void openRouter(const QString& own);
    void finishIfOver();

    Typed read(const QString& line);
    void list(const Typed& typed) const;
    void start(const Typed& typed) const;
    void onPlayer(const Typed& typed) const;  // kick, ping
    void sayToAll(const Typed& typed) const;
    void quitTables(const Typed& typed);
    int numberOf(const HostTable* table) const;  // 1 for the first

    HostOptions options_;
    Say say_;
    std::mt19937_64 generator_;
    std::vector<std::unique_ptr<HostTable>> tables_;
    std::vector<std::unique_ptr<RouterPort>> routerPorts_;  // by table
    bool isFinished_ = false;
    QString sureOf_;  // the line that would end a draft, and was typed once
};

}  // namespace packwise
