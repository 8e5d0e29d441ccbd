// Reads a set written as plain text; data/README.md tells the form.
#pragma once

#include "sets/setsource.h"

#include <QByteArray>

#include <vector>

namespace packwise::sets {

struct ReadSource {
    SetSource source;           // without an order
    std::vector<Fault> faults;  // with "line N"; any that is no warning makes the source unusable
};

// `utf8` is the whole file.
ReadSource readTextSource(const QByteArray& utf8);

}  // namespace packwise::sets
