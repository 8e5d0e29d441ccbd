// Reads a set from a table with a header line: name, rarity, colour, cost, type, text, power and
// toughness, in any order. Fields may be quoted; a tab, comma or semicolon parts them, whichever
// the header line has.
#pragma once

#include "sets/textsource.h"

#include <QByteArray>
#include <QString>

namespace packwise::sets {

// `utf8` is the whole file. The pack holds 1 rare, 3 uncommon and 11 common cards.
ReadSource readTable(const QByteArray& utf8, const QString& displayName);

}  // namespace packwise::sets
