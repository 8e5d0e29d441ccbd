// The commands of packwise-draft.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace packwise {

// Runs the command that `arguments` (the program's name first) ask for. Returns the exit status:
// 0 all is well, 1 something is not as it should be, 2 something could not be read or written, or
// the command line is wrong.
int runDraftCommand(const QStringList& arguments, QTextStream& out, QTextStream& errors);

}  // namespace packwise
