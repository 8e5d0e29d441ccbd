// The command "import": card files from MTGJSON files, tables and cube lists.
#pragma once

#include "sets/console.h"

namespace packwise::sets {

// Returns the exit status.
int importSets(const QStringList& arguments, const Streams& io);

}  // namespace packwise::sets
