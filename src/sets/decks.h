// The commands for deck files: "code" and "export". Each returns the exit status.
#pragma once

#include "sets/console.h"

namespace packwise::sets {

int codeDecks(const QStringList& arguments, const Streams& io);
int exportDecks(const QStringList& arguments, const Streams& io);

}  // namespace packwise::sets
