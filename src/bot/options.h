// The command line.
#pragma once

#include "platform/commandline.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace packwise {

struct BotOptions {
    int seats = 1;  // 1 to 8
    QString host = QStringLiteral("127.0.0.1");
    quint16 port = 5252;
    QString cards;                        // the folder of the card files; empty when none was named
    QString decks = QStringLiteral(".");  // the folder to save decks in
    bool picks = false;                   // save what each player saw beside the deck
    std::optional<std::uint64_t> seed;    // none for one from the system
    int delay = 800;  // milliseconds before each answer; with the link, still under a second
};

// `arguments` begins with the program's name.
CommandLine<BotOptions> readCommandLine(const QStringList& arguments);

}  // namespace packwise
