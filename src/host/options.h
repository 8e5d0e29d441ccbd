// The command line and the settings file.
#pragma once

#include "platform/commandline.h"

#include <QString>
#include <QStringList>

#include <filesystem>

namespace packwise {

struct HostOptions {
    bool isRochester = false;
    bool isTimed = false;  // Rochester
    int pickSeconds = 5;   // 1 to 30
    QStringList sets;      // display name of the set of each pack, 3 to 6, all of the code page
    bool triesRealPacks = false;
    bool haltsOnDrop = false;
    bool isSilent = false;

    QString cards;        // the folder of the card files; empty when none was named
    QString address;      // to listen on, in dotted decimal; empty for all
    quint16 port = 5252;  // of the first table; each other has the next one
    int tables = 1;
    bool opensRouter = false;  // asks the router of a home network to let others in

    int players = 8;         // that start the draft, 1 to 8
    bool again = false;      // a table whose draft is over opens anew
    QString records;         // the folder of the drafts' records; there are none when it is empty
    int lingerMinutes = 60;  // that a table stays for the decks once its draft is over

    std::filesystem::path cardFolder() const { return cards.toStdU16String(); }
};

// `arguments` begins with the program's name. Options of the command line go before those of the
// settings file that it names.
CommandLine<HostOptions> readHostCommandLine(const QStringList& arguments);

// Why packs of some set cannot be dealt, and what to do; empty when all can be.
QString faultOfSets(const HostOptions& options);

}  // namespace packwise
