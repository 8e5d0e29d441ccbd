// The commands that look at what is there: "show", "deal" and "remove". Each returns the exit
// status.
#pragma once

#include "sets/console.h"

namespace packwise::sets {

int showSet(const QStringList& arguments, const Streams& io);
int dealSet(const QStringList& arguments, const Streams& io);
int removeSet(const QStringList& arguments, const Streams& io);

}  // namespace packwise::sets
