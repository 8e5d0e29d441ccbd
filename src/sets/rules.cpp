#include "sets/rules.h"

#include "protocol/pack.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <set>

namespace packwise::sets {

namespace {

constexpr std::string_view kMarkLetters = "-=+.";
constexpr std::size_t kLongestDisplayName = 100;
constexpr std::size_t kLongestField = std::numeric_limits<std::int16_t>::max();

bool isOneOf(std::string_view text, std::string_view letters) {
    return text.size() == 1 && letters.find(text[0]) != std::string_view::npos;
}

bool hasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20; });
}

bool isKeptOutOfFileNames(char c) {
    return hasControl({&c, 1}) || c == 0x7F ||
           std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
}

std::vector<std::string> faultsOfCard(const CardRecord& card) {
    std::vector<std::string> faults;
    if (card.name.empty()) {
        faults.emplace_back("a card has no name");
    } else if (card.name == "END") {
        faults.emplace_back("no card can be called END, which closes the file");
    }
    if (card.name.find_first_of("|~") != std::string::npos) {
        faults.push_back("\"" + card.name + "\" holds a reserved character, \"|\" or \"~\"");
    }
    if (card.color.size() + card.name.size() > kMostTokenBytes) {
        faults.push_back("the name is longer than " + std::to_string(kMostTokenBytes - 1) +
                         " characters");
    }
    if (hasControl(card.name)) {
        faults.emplace_back("the name holds a line end or another control character");
    }
    if (!isOneOf(card.rarity, kMarkLetters)) {
        faults.push_back("the mark \"" + card.rarity + "\" is none of - = + .");
    }
    if (!isOneOf(card.color, kTokenColors)) {
        faults.push_back("the colour \"" + card.color + "\" is none of B U G R W A M L");
    }
    for (const std::string* field : {&card.name, &card.cost, &card.type, &card.text, &card.pt}) {
        if (field->size() > kLongestField) {
            faults.push_back("a text is longer than " + std::to_string(kLongestField) +
                             " characters");
        }
    }
    return faults;
}

}  // namespace

std::vector<Fault> cardFaults(const std::vector<CardRecord>& cards, const PlaceOf& placeOf) {
    std::vector<Fault> faults;
    std::map<std::string_view, std::size_t> firstOf;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        for (std::string& what : faultsOfCard(cards[i])) {
            faults.push_back({std::move(what), placeOf(i)});
        }
        const auto [first, isNew] = firstOf.emplace(cards[i].name, i);
        if (!isNew && !cards[i].name.empty()) {
            faults.push_back(
                {"\"" + cards[i].name + "\" stands twice, first at " + placeOf(first->second),
                 placeOf(i)});
        }
    }
    return faults;
}

std::vector<Fault> shadowWarning(const std::vector<CardRecord>& cards, const PlaceOf& placeOf) {
    std::map<std::string, std::size_t> tokens;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (cards[i].rarity != "." && !cards[i].name.empty()) {
            tokens.emplace(cards[i].color + cards[i].name, i);
        }
    }
    if (tokens.size() > kMostCardsInPool * kPools.size()) {
        return {};  // refused for that, and too many to compare
    }
    std::vector<Fault> warning;
    int others = -1;
    for (const auto& [token, card] : tokens) {
        const auto longer =
            std::find_if(tokens.begin(), tokens.end(), [&token = token](const auto& other) {
                return other.first.size() > token.size() &&
                       other.first.find(token) != std::string::npos;
            });
        if (longer != tokens.end() && ++others == 0) {
            warning = {{"a pack never gets \"" + cards[card].name + "\" once it holds \"" +
                            cards[longer->second].name + "\", which begins alike",
                        placeOf(card), true}};
        }
    }
    if (others > 0) {
        warning.front().what += ", and so with " + std::to_string(others) + " more";
    }
    return warning;
}

std::vector<Fault> setFaults(const SetSource& set, const PlaceOf& placeOf) {
    std::vector<Fault> faults = displayNameFaults(set.displayName);
    for (std::vector<Fault>& more :
         std::array{cardFaults(set.cards, placeOf), shadowWarning(set.cards, placeOf)}) {
        std::move(more.begin(), more.end(), std::back_inserter(faults));
    }
    return faults;
}

std::vector<Fault> packFaults(const std::array<int, 3>& counts,
                              const std::vector<CardRecord>& cards) {
    std::vector<Fault> faults;
    long long packSize = 0;
    for (const Pool pool : kPools) {
        const int count = counts.at(static_cast<std::size_t>(pool));
        std::set<std::string_view> names;
        std::size_t size = 0;
        for (const CardRecord& card : cards) {
            if (card.rarity == poolMark(pool)) {
                names.insert(card.name);
                ++size;
            }
        }
        const std::string name(poolName(pool));
        packSize += count;
        if (count < 0) {
            faults.push_back(
                {"a pack cannot hold " + std::to_string(count) + " " + name + " cards", {}});
        } else if (names.size() < static_cast<std::size_t>(count)) {
            faults.push_back({"a pack asks for " + std::to_string(count) + " " + name +
                                  " cards, and the set has " + std::to_string(names.size()),
                              {}});
        }
        if (size > kMostCardsInPool) {
            faults.push_back({std::to_string(size) + " " + name + " cards, and at most " +
                                  std::to_string(kMostCardsInPool) + " can be dealt",
                              {}});
        }
    }
    if (packSize == 0) {
        faults.push_back({"a pack holds no cards", {}});
    } else if (packSize > kMostCardsInPack) {
        faults.push_back({"a pack of " + std::to_string(packSize) + " cards, and at most " +
                              std::to_string(kMostCardsInPack) + " fit",
                          {}});
    }
    return faults;
}

std::vector<Fault> displayNameFaults(std::string_view displayName) {
    const std::string base = setFileBase(displayName);
    if (base.empty()) {
        return {{"the set has no name", {}}};
    }
    if (displayName.size() > kLongestDisplayName) {
        return {
            {"the set's name is longer than " + std::to_string(kLongestDisplayName) + " characters",
             {}}};
    }
    if (displayName.find_first_of("|~") != std::string_view::npos || hasControl(displayName)) {
        return {
            {"the set's name holds a reserved character, \"|\", \"~\" or a control character", {}}};
    }
    const bool plain = std::all_of(base.begin(), base.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x7F && !isKeptOutOfFileNames(c);
    });
    if (!plain || base.front() == '.' || base.back() == '.') {
        return {{"\"" + base + "\", the start of the set's name, cannot be a file name everywhere",
                 {}}};
    }
    return {};
}

std::vector<Fault> mendDisplayName(std::string& displayName) {
    const std::string given = displayName;
    for (std::string base = setFileBase(displayName);
         std::any_of(base.begin(), base.end(), isKeptOutOfFileNames);
         base = setFileBase(displayName)) {
        const auto bad = std::find_if(displayName.begin(), displayName.end(), isKeptOutOfFileNames);
        const auto behind = displayName.erase(bad);
        // "Fire / Ice" keeps one blank.
        if (behind != displayName.end() && *behind == ' ' &&
            (behind == displayName.begin() || *(behind - 1) == ' ')) {
            displayName.erase(behind);
        }
    }
    if (displayName == given) {
        return {};
    }
    return {{"\"" + given + "\" cannot name a file; the set is called \"" + displayName +
                 "\", or as --name says",
             {},
             true}};
}

std::string_view poolName(Pool pool) {
    constexpr std::array<std::string_view, 3> names = {"rare", "uncommon", "common"};
    return names.at(static_cast<std::size_t>(pool));
}

std::string_view poolMark(Pool pool) {
    constexpr std::array<std::string_view, 3> marks = {"+", "=", "-"};
    return marks.at(static_cast<std::size_t>(pool));
}

}  // namespace packwise::sets
