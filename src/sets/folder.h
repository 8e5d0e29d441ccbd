// What a folder of card set files holds, and what is wrong with it.
#pragma once

#include "sets/setsource.h"

#include <filesystem>
#include <vector>

namespace packwise::sets {

struct FileFault {
    std::filesystem::path file;
    Fault fault;
};

struct HeldSet {
    std::string base;             // of its files' names
    std::array<int, 3> counts{};  // by Pool: cards in one pack
    std::array<int, 3> cards{};   // by Pool: cards of that mark
    int undealt = 0;              // cards of the mark "."
    bool hasOrder = false;
    bool sound = false;  // the card file can be dealt from
};

// The sets of a folder by name. Throws std::filesystem::filesystem_error when it cannot be read.
std::vector<HeldSet> listFolder(const std::filesystem::path& folder);

// Every fault of every .pw and .ord file of a folder, file by file. Throws like listFolder().
std::vector<FileFault> checkFolder(const std::filesystem::path& folder);

}  // namespace packwise::sets
