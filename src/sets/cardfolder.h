// Where the card sets lie when nobody has named a folder.
#pragma once

#include <QString>

namespace packwise::sets {

struct CardFolder {
    QString path;   // absolute
    QString words;  // one line that says which folder it is, or what could not be made
};

// The current folder if it holds a card file, else the user's card folder. That one is made, with
// the sample sets, which are registered, only while it is not there: sets that the user has deleted
// from it stay away. The current folder when it cannot be made.
CardFolder findCardFolder();

}  // namespace packwise::sets
