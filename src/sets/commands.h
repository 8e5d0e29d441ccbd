// The commands of packwise-sets.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace packwise::sets {

// Runs the command that `arguments` (the program's name first) ask for. Returns the exit status:
// 0 done, 1 a fault was found or something could not be done, 2 the command line is wrong.
int run(const QStringList& arguments, QTextStream& out, QTextStream& err);

}  // namespace packwise::sets
