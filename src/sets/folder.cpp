#include "sets/folder.h"

#include "protocol/pack.h"
#include "sets/cardfile.h"
#include "sets/rules.h"
#include "sets/writer.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace packwise::sets {

namespace fs = std::filesystem;

namespace {

// A shorter list cannot be walked: one step is up to 21 lines long.
constexpr std::size_t kShortestList = 21;

std::string inLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::vector<fs::path> filesWith(const fs::path& folder, std::string_view extension) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (inLowerCase(entry.path().extension().string()) == extension) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The set's other file; as spelled when there is none.
fs::path partner(const fs::path& file, std::string_view extension) {
    fs::path other = file;
    other.replace_extension(fs::path(extension));
    if (!fs::exists(other)) {
        for (const fs::path& candidate : filesWith(file.parent_path(), extension)) {
            if (inLowerCase(candidate.stem().string()) == inLowerCase(file.stem().string())) {
                return candidate;
            }
        }
    }
    return other;
}

std::vector<Fault> faultsOfCards(const fs::path& file) {
    std::string bytes;
    if (!readWhole(file, bytes)) {
        return {{"the file cannot be read", {}}};
    }
    const ReadCardFile read = parseCardFile(bytes);
    std::vector<Fault> faults = read.faults;
    const auto add = [&faults](const std::vector<Fault>& more) {
        faults.insert(faults.end(), more.begin(), more.end());
    };
    add(cardFaults(read.cards, [&](std::size_t card) {
        return "record " + std::to_string(card + 1) + " (" + read.cards[card].name + ")";
    }));
    if (read.faults.empty()) {
        add(packFaults(read.counts, read.cards));
    }
    const bool clean =
        std::all_of(faults.begin(), faults.end(), [](const Fault& fault) { return fault.warning; });
    if (clean && !readCardPools(file)) {
        faults.push_back({"no pack can be dealt from this file", {}});
    }
    return faults;
}

std::vector<Fault> faultsOfLists(const ReadOrderFile& read) {
    std::vector<Fault> faults;
    long long packSize = 0;
    for (std::size_t list = 0; list < read.order.lists.size(); ++list) {
        const std::vector<std::string>& lines = read.order.lists.at(list);
        const int count = read.order.counts.at(list);
        const std::string name = "list " + std::to_string(list + 1);
        const std::string where = "line " + std::to_string(read.firstLines.at(list));
        const std::set<std::string> different(lines.begin(), lines.end());
        packSize += count;
        if (count < 0) {
            faults.push_back(
                {name + " is asked for " + std::to_string(count) + " cards", "line 1"});
        } else if (count > 0 && lines.size() < kShortestList) {
            faults.push_back({name + " has " + std::to_string(lines.size()) +
                                  " lines, and a list that is dealt from needs " +
                                  std::to_string(kShortestList),
                              where});
        } else if (different.size() < static_cast<std::size_t>(count)) {
            faults.push_back({name + " has " + std::to_string(different.size()) +
                                  " different cards, and a pack asks it for " +
                                  std::to_string(count),
                              where});
        }
    }
    if (packSize == 0 || packSize > kMostCardsInPack) {
        faults.push_back({"a pack of " + std::to_string(packSize) + " cards; it holds 1 to " +
                              std::to_string(kMostCardsInPack),
                          "line 1"});
    }
    return faults;
}

std::vector<Fault> unknownTokens(const ReadOrderFile& read, const fs::path& cardFile) {
    std::string bytes;
    if (!readWhole(cardFile, bytes)) {
        return {{"there is no " + cardFile.filename().string() + " beside it", {}}};
    }
    std::set<std::string> known;
    for (const CardRecord& card : parseCardFile(bytes).cards) {
        known.insert(card.color + card.name);
    }
    std::vector<Fault> faults;
    for (std::size_t list = 0; list < read.order.lists.size(); ++list) {
        for (std::size_t i = 0; i < read.order.lists.at(list).size(); ++i) {
            const std::string& token = read.order.lists.at(list)[i];
            if (!known.contains(token)) {
                faults.push_back(
                    {"\"" + token + "\" is no card of " + cardFile.filename().string(),
                     "line " + std::to_string(read.firstLines.at(list) + static_cast<int>(i))});
            }
        }
    }
    return faults;
}

std::vector<Fault> faultsOfOrder(const fs::path& file) {
    std::string bytes;
    if (!readWhole(file, bytes)) {
        return {{"the file cannot be read", {}}};
    }
    const ReadOrderFile read = parseOrderFile(bytes);
    std::vector<Fault> faults = read.faults;
    if (faults.empty()) {
        faults = faultsOfLists(read);
        for (Fault& fault : unknownTokens(read, partner(file, kCardFileExtension))) {
            faults.push_back(std::move(fault));
        }
        if (faults.empty() && !readOrderFile(file)) {
            faults.push_back({"no pack can be dealt along this file", {}});
        }
    }
    return faults;
}

}  // namespace

std::vector<HeldSet> listFolder(const fs::path& folder) {
    std::vector<HeldSet> sets;
    for (const fs::path& file : filesWith(folder, kCardFileExtension)) {
        HeldSet set;
        set.base = file.stem().string();
        set.hasOrder = readOrderFile(partner(file, kOrderFileExtension)).has_value();
        set.sound = readCardPools(file).has_value();
        std::string bytes;
        readWhole(file, bytes);
        const ReadCardFile read = parseCardFile(bytes);
        set.counts = read.counts;
        for (const CardRecord& card : read.cards) {
            set.undealt += card.rarity == "." ? 1 : 0;
            for (const Pool pool : kPools) {
                set.cards.at(static_cast<std::size_t>(pool)) +=
                    card.rarity == poolMark(pool) ? 1 : 0;
            }
        }
        sets.push_back(std::move(set));
    }
    return sets;
}

std::vector<FileFault> checkFolder(const fs::path& folder) {
    std::vector<FileFault> all;
    for (const fs::path& file : filesWith(folder, kCardFileExtension)) {
        for (Fault& fault : faultsOfCards(file)) {
            all.push_back({file, std::move(fault)});
        }
    }
    for (const fs::path& file : filesWith(folder, kOrderFileExtension)) {
        for (Fault& fault : faultsOfOrder(file)) {
            all.push_back({file, std::move(fault)});
        }
    }
    return all;
}

}  // namespace packwise::sets
