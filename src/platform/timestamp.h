// The time stamp of a deck file, and its name.
#pragma once

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

// The path or name of a deck file less its ".dec", if it has one: the files that belong to it begin
// alike.
QString deckBase(const QString& deckFile);

}  // namespace packwise
