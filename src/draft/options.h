// The command line.
#pragma once

#include "platform/commandline.h"

#include <QString>
#include <QStringList>

namespace packwise {

struct DraftOptions {
    enum class Command { Show, Check, Picks };
    Command command = Command::Show;
    QString record;     // its path
    QString player;     // show: whose picks; empty for nobody's
    int pack = 0;       // show: from 1; 0 for none
    QStringList decks;  // check
    QStringList picks;  // check
    QString cards;      // check: the folder of the card files; empty when none was named
    QString into;       // picks: the folder that is written to
};

// `arguments` begins with the program's name.
CommandLine<DraftOptions> readDraftCommandLine(const QStringList& arguments);

}  // namespace packwise
