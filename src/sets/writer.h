// Puts the files of a set into a folder.
#pragma once

#include "sets/setsource.h"

#include <filesystem>
#include <string>

namespace packwise::sets {

enum class WriteResult { Written, WrittenWithoutOrder, UpToDate, Failed };

// Writes the .pw and the .ord file of a set that keeps the rules; the .pw file alone, with an older
// .ord file taken away, when it has no order or none that can be dealt along. Both stand complete
// or what was there before stands untouched; then `error` says why. Files that hold these bytes
// already are left alone.
WriteResult writeSetFiles(const SetSource& source, const std::filesystem::path& folder,
                          std::string& error);

// The whole of a file; false when it cannot be read.
bool readWhole(const std::filesystem::path& file, std::string& bytes);

}  // namespace packwise::sets
