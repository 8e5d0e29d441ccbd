// Where this user's own files of Packwise lie, apart from the settings.
#pragma once

#include <QString>

namespace packwise {

// The user's data folder for Packwise, absolute: `Packwise` in ~/.local/share, or in
// AppData/Local on Windows. It need not be there yet.
QString userDataFolder();

// `cards` in it: the card data that serve where no folder is named.
QString userCardFolder();

// `records` in it: the records of drafts that were hosted.
QString userRecordFolder();

}  // namespace packwise
