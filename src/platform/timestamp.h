// The time stamp of a deck file and the name that is made from the time.
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

}  // namespace packwise
