// The time stamps of a deck file and of picks, and their names.
#pragma once

#include "engine/picktext.h"

#include <QString>

class QDateTime;
class QLocale;

namespace packwise {

// The date and the time with seconds in the short forms of that locale, split by a blank. Its year
// has four digits and its characters are all of the code page, so that a file gives the same code
// on every machine.
QString timeStamp(const QDateTime& when, const QLocale& locale);

// "draft-", the date as month, day and year, and the time as hour and minute, all digits: the name
// of a deck file without ending, unless the user chooses another.
QString deckName(const QDateTime& when);

// Gives what a player saw of a draft the number and the time of that draft.
void stampPicks(PickLog& log, const QDateTime& when);

// The path or name of a deck file less its ".dec", if it has one: the files that belong to it begin
// alike.
QString deckBase(const QString& deckFile);

}  // namespace packwise
