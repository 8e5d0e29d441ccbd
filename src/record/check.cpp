#include "record/check.h"

#include "engine/deckfile.h"
#include "engine/picktext.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

namespace packwise {

namespace {

constexpr std::string_view kFreeLands[] = {"Plains", "Island", "Swamp", "Mountain", "Forest"};
constexpr std::string_view kSnow = "Snow-Covered ";
constexpr std::size_t kMostNamed = 5;  // cards in one sentence

// "Forest, 2 Swamp and 3 more"; the names are sorted.
std::string listed(const std::vector<std::string>& names) {
    std::map<std::string, int> counted;
    for (const std::string& name : names) {
        ++counted[name];
    }
    std::string text;
    std::size_t told = 0;
    for (const auto& [name, count] : counted) {
        if (told++ == kMostNamed) {
            return text + " and " + std::to_string(counted.size() - kMostNamed) + " more";
        }
        text += text.empty() ? "" : ", ";
        text += (count > 1 ? std::to_string(count) + " " : "") + name;
    }
    return text;
}

std::vector<std::string> sorted(std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    return names;
}

// What of `all` is not in `some`, both sorted.
std::vector<std::string> lessThese(const std::vector<std::string>& all,
                                   const std::vector<std::string>& some) {
    std::vector<std::string> left;
    std::set_difference(all.begin(), all.end(), some.begin(), some.end(), std::back_inserter(left));
    return left;
}

// A player's name as a file of picks spells it.
std::string inPicks(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\r' || c == '\n'; }, '?');
    return name;
}

std::string lettersOf(std::string_view text) {
    std::string letters;
    for (const char c : text) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || isCapital;
        letters += isPlain ? static_cast<char>(isCapital ? c + ('a' - 'A') : c) : '-';
    }
    return letters;
}

}  // namespace

DraftCheck::DraftCheck(const DraftRecord& record) : record_(record) {
    Replayed replayed = replay(record, [this](const PlayedTurn& turn) {
        std::vector<std::string> cards = turn.cards.cards();
        for (std::string& card : cards) {
            card.erase(0, 1);
        }
        std::string taken = cards[static_cast<std::size_t>(turn.row)];
        turns_.push_back(Turn{turn.packIndex, turn.pack, turn.pick, turn.position,
                              sorted(std::move(cards)), std::move(taken)});
    });
    isFollowed_ = replayed.isFollowed;
    report_.findings = std::move(replayed.findings);
    report_.checked.push_back(std::to_string(turns_.size()) +
                              " picks stood in their packs as they went round.");
    if (!isFollowed_) {
        report_.unchecked.emplace_back("What comes behind that cannot be followed.");
    }
}

void DraftCheck::find(Finding::About about, const std::string& place, std::string what) {
    report_.findings.push_back({about, place, std::move(what)});
}

const std::string& DraftCheck::nameAt(int position) const {
    return record_.players.at(static_cast<std::size_t>(position)).name;
}

std::vector<std::string> DraftCheck::takenBy(int position) const {
    std::vector<std::string> names;
    for (const RecordEvent& event : record_.events) {
        const auto* const taken = std::get_if<CardTaken>(&event);
        if (taken && taken->position == position) {
            names.emplace_back(nameOfToken(taken->card));
        }
    }
    return sorted(std::move(names));
}

std::vector<std::int32_t> DraftCheck::codesOf(int position) const {
    std::vector<std::int32_t> codes;
    for (const RecordEvent& event : record_.events) {
        const auto* const reported = std::get_if<CodeReported>(&event);
        if (reported && reported->position == position) {
            codes.push_back(reported->code);
        }
    }
    return codes;
}

// As the deck builder gives them.
bool DraftCheck::isFreeLand(std::string_view card) const {
    const bool hasSnow =
        !record_.isRochester &&
        std::any_of(record_.sets.begin(), record_.sets.end(),
                    [](const std::string& set) { return set == "Ice Age" || set == "Alliances"; });
    if (hasSnow && card.starts_with(kSnow)) {
        card.remove_prefix(kSnow.size());
    }
    return std::find(std::begin(kFreeLands), std::end(kFreeLands), card) != std::end(kFreeLands);
}

// The table position of a deck's player: by the code that he alone reported, by the file's name,
// or who took most of its cards; -1 when nothing tells.
int DraftCheck::ownerOf(const std::string& file, const std::vector<std::string>& cards,
                        std::int32_t code) const {
    const int players = static_cast<int>(record_.players.size());
    const std::size_t folder = file.find_last_of("/\\") + 1;
    const std::string base = lettersOf(file.substr(folder, file.rfind('.') - folder));
    std::vector<int> byCode;
    int byName = -1;
    int byCards = -1;
    std::size_t most = 0;
    for (int position = 0; position < players; ++position) {
        const std::vector<std::int32_t> codes = codesOf(position);
        if (std::find(codes.begin(), codes.end(), code) != codes.end()) {
            byCode.push_back(position);
        }
        const std::string name = lettersOf(nameAt(position));
        const bool isNamed =
            base == name || base.ends_with('-' + name) || base.starts_with(name + '-');
        if (isNamed && (byName < 0 || name.size() > nameAt(byName).size())) {
            byName = position;
        }
        const std::size_t own = cards.size() - lessThese(cards, takenBy(position)).size();
        if (own > most) {
            most = own;
            byCards = position;
        }
    }
    return byCode.size() == 1 ? byCode.front() : byName >= 0 ? byName : byCards;
}

bool DraftCheck::checkDeck(const std::string& file, std::string_view bytes) {
    int faulty = 0;
    const std::optional<DeckList> deck = readDeckFile(bytes, faulty);
    if (!deck) {
        report_.unchecked.push_back(
            file + ": it is no deck file" +
            (faulty > 0 ? ", line " + std::to_string(faulty) + '.' : std::string(".")));
        return false;
    }
    std::vector<std::string> cards = deck->deck;
    cards.insert(cards.end(), deck->sideboard.begin(), deck->sideboard.end());
    cards = sorted(std::move(cards));
    const std::int32_t code = codeOfDeckFile(bytes).value_or(0);
    const int owner = ownerOf(file, cards, code);
    if (owner < 0) {
        report_.unchecked.push_back(file + ": it is nobody's deck of this draft.");
        return false;
    }
    const std::string& name = nameAt(owner);
    std::vector<std::string> foreign = lessThese(cards, takenBy(owner));
    std::erase_if(foreign, [this](const std::string& card) { return isFreeLand(card); });
    if (!foreign.empty()) {
        find(
            Finding::About::Player, file,
            "Cards of this deck are not among the picks of " + name + ": " + listed(foreign) + '.');
    }
    const std::vector<std::int32_t> codes = codesOf(owner);
    if (codes.empty()) {
        report_.unchecked.push_back(file + ": " + name + " has reported no code.");
    } else if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
        find(Finding::About::Player, file,
             "The code of this deck is " + std::to_string(code) + ", and " + name +
                 " has reported " + std::to_string(codes.back()) + '.');
    }
    report_.checked.push_back(file + ": " + std::to_string(cards.size()) + " cards of " + name +
                              '.');
    return true;
}

bool DraftCheck::checkPicks(const std::string& file, std::string_view utf8) {
    PickTextFault fault;
    const std::optional<PickLog> log = readPicks(utf8, fault);
    if (!log) {
        report_.unchecked.push_back(
            file + ": it is no file of picks; " +
            (fault.line > 0 ? "line " + std::to_string(fault.line) + ": " : std::string()) +
            fault.what + '.');
        return false;
    }
    const auto self = static_cast<std::size_t>(log->self);
    const auto player =
        std::find_if(record_.players.begin(), record_.players.end(), [&](const RecordPlayer& each) {
            return self < log->players.size() && inPicks(each.name) == log->players[self];
        });
    if (player == record_.players.end()) {
        report_.unchecked.push_back(file + ": it is by nobody who played here.");
        return false;
    }
    const int position = static_cast<int>(player - record_.players.begin());
    std::map<std::pair<int, int>, const Turn*> turns;
    for (const Turn& turn : turns_) {
        if (record_.isRochester || turn.position == position) {
            turns[{turn.pack, turn.pick}] = &turn;
        }
    }
    std::size_t agree = 0;
    for (const SeenPack& seen : log->packs) {
        const std::string place =
            file + ", pack " + std::to_string(seen.pack) + " pick " + std::to_string(seen.pick);
        const auto found = turns.find({seen.pack, seen.pick});
        if (found == turns.end()) {
            if (isFollowed_) {
                find(Finding::About::Player, place, "The record knows of no such pick.");
            }
            continue;
        }
        const std::vector<std::string> differences = differencesOf(seen, *found->second);
        for (const std::string& what : differences) {
            find(Finding::About::Player, place, what);
        }
        agree += differences.empty() ? 1 : 0;
    }
    report_.checked.push_back(file + ": " + std::to_string(agree) + " of " +
                              std::to_string(turns.size()) + " picks agree with what " +
                              player->name + " saw.");
    return true;
}

// Between what a player saw and what the record says of it, a sentence for each.
std::vector<std::string> DraftCheck::differencesOf(const SeenPack& seen, const Turn& turn) const {
    std::vector<std::string> differences;
    const std::vector<std::string> cards = sorted(seen.cards);
    const std::vector<std::string> more = lessThese(cards, turn.cards);
    const std::vector<std::string> less = lessThese(turn.cards, cards);
    if (!more.empty()) {
        differences.push_back("The player saw, and the record has not: " + listed(more) + '.');
    }
    if (!less.empty()) {
        differences.push_back("The record has, and the player did not see: " + listed(less) + '.');
    }
    if (seen.taken >= 0 && seen.cards[static_cast<std::size_t>(seen.taken)] != turn.taken) {
        differences.push_back("The player saw " + seen.cards[static_cast<std::size_t>(seen.taken)] +
                              " taken, the record says " + turn.taken + '.');
    }
    if (!seen.player.empty() && seen.player != inPicks(nameAt(turn.position))) {
        differences.push_back("The player saw " + seen.player + " pick, the record says " +
                              nameAt(turn.position) + '.');
    }
    const std::string& set = record_.sets.at(static_cast<std::size_t>(turn.packIndex));
    if (!seen.set.empty() && seen.set != set) {
        differences.push_back("The player saw a pack of " + seen.set + ", the record says " + set +
                              '.');
    }
    return differences;
}

}  // namespace packwise
