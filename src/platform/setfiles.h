// The files of card sets, in words for a host. Texts are Unicode.
#pragma once

#include "engine/dealing.h"

#include <QString>

#include <filesystem>
#include <string_view>

namespace packwise {

// The folder whose card files serve where none is named, absolute: the current one if it holds a
// card file, else the user's, which need not be there.
QString usualCardFolder();

// Whether a display name could not cross the wire as a field, or not as it is.
bool breaksMessages(const QString& setName);

// "IceAge.pw in the folder /home/ann/cards"
QString fileOfSet(const std::filesystem::path& folder, const QString& setName,
                  std::string_view extension);

// Whether a set can be dealt, found out by dealing a pack; with `alongLists` along the lists of its
// order file too.
SetFault tryFilesOf(const std::filesystem::path& folder, const QString& setName, bool alongLists);

// One sentence that says what is wrong and where; empty when nothing is.
QString wordsFor(SetFault fault, const std::filesystem::path& folder, const QString& setName);

}  // namespace packwise
