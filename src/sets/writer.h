// Puts the files of a set into a folder.
#pragma once

#include "sets/setsource.h"

#include <filesystem>
#include <string>

namespace packwise::sets {

enum class WriteResult { Written, UpToDate, Failed };

// Writes the .pw and the .ord file of a set that has an order and keeps the rules. Both stand
// complete or what was there before stands untouched; then `error` says why. Files that hold these
// bytes already are left alone.
WriteResult writeSetFiles(const SetSource& source, const std::filesystem::path& folder,
                          std::string& error);

// The whole of a file; false when it cannot be read.
bool readWhole(const std::filesystem::path& file, std::string& bytes);

}  // namespace packwise::sets
