#include "bot/cardbook.h"

#include <algorithm>

namespace packwise {

namespace {

constexpr std::size_t kMostRemembered = 10000;

}  // namespace

void CardBook::setSets(const std::vector<std::string>& sets) {
    if (sets == sets_) {
        return;
    }
    sets_ = sets;
    files_.clear();
    known_.clear();
    for (const std::string& set : sets) {
        // The names come from the server and must not lead out of the folder.
        if (set.empty() || set.find_first_of("/\\") != std::string::npos) {
            continue;
        }
        const std::filesystem::path file = setFilePath(folder_, set, kCardFileExtension);
        if (scanForCard(file, "") &&
            std::find(files_.begin(), files_.end(), file) == files_.end()) {
            files_.push_back(file);
        }
    }
}

const CardRecord* CardBook::find(const std::string& name) {
    if (known_.size() > kMostRemembered) {
        known_.clear();
    }
    auto [entry, isNew] = known_.try_emplace(name);
    if (isNew) {
        for (const std::filesystem::path& file : files_) {
            std::optional<CardRecord> record = scanForCard(file, name);
            if (record && record->name == name && name != "END") {
                entry->second = std::move(record);
                break;
            }
        }
    }
    return entry->second ? &*entry->second : nullptr;
}

}  // namespace packwise
