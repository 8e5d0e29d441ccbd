// Sets that were read, on their way into a folder.
#pragma once

#include "sets/console.h"

namespace packwise::sets {

struct Job {
    QString file;  // it was read from
    SetSource source;
};

// Writes the files of every set into the folder `named`, or as folderOr() has it, which is made if
// need be, and registers their names unless told not to. Nothing is written when two sets, or a set
// and another registered one, lead to the same files; `renaming` then tells where to give another
// name. The exit status.
int writeSets(const std::vector<Job>& jobs, const QString& named, bool registering,
              const QString& renaming, const Streams& io);

}  // namespace packwise::sets
