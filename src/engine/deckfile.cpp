#include "engine/deckfile.h"

#include "protocol/framing.h"

#include <algorithm>
#include <cstddef>

namespace packwise {

namespace {

constexpr std::string_view kHeader = "//NAME: ";
constexpr std::string_view kDeckLine = "    1 ";
constexpr std::string_view kSideboardLine = "SB: 1 ";
constexpr std::string_view kLineEnd = "\r\n";

// A deck card counts double, in 16 bits.
std::int32_t deckValue(std::string_view name) {
    return static_cast<std::int16_t>(2 * stringVal(name));
}

constexpr std::string_view kComment = "//";
constexpr std::string_view kSideboardMark = "SB:";
constexpr std::size_t kMostCards = 10'000;  // in a deck or a sideboard
// Of all names together: a short line can count thousands of a long one.
constexpr std::size_t kMostNameBytes = std::size_t{16} * 1024 * 1024;

// Takes the first line, without its end, off the text.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

void skipBlanks(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
}

// Adds the cards of a line "4 Name" to the list. Whether it is one, and its names are no more than
// `bytesLeft`.
bool addCards(std::string_view line, std::vector<std::string>& cards, std::size_t& bytesLeft) {
    skipBlanks(line);
    const std::size_t end = std::min(line.find(' '), line.size());
    const auto count =
        static_cast<std::size_t>(std::max(readNumber(line.substr(0, end)).value_or(0), 0));
    const std::string_view name = line.substr(std::min(end + 1, line.size()));
    if (count == 0 || count > kMostCards - cards.size() || name.empty() ||
        name.size() > bytesLeft / count) {
        return false;
    }
    bytesLeft -= count * name.size();
    cards.insert(cards.end(), count, std::string(name));
    return true;
}

}  // namespace

std::int16_t stringVal(std::string_view text) {
    std::uint32_t sum = 0;
    for (const char c : text) {
        sum += static_cast<unsigned char>(c);
    }
    return static_cast<std::int16_t>(sum);
}

DeckFile makeDeckFile(std::string_view stamp, const std::vector<std::string>& deck,
                      const std::vector<std::string>& sideboard) {
    const std::string name = "Packwise deck " + std::string(stamp);
    DeckFile file{std::string(kHeader).append(name).append(kLineEnd), -stringVal(name)};
    for (const std::string& card : deck) {
        file.text.append(kDeckLine).append(card).append(kLineEnd);
        file.code += deckValue(card);
    }
    for (const std::string& card : sideboard) {
        file.text.append(kSideboardLine).append(card).append(kLineEnd);
        file.code += stringVal(card);
    }
    return file;
}

std::optional<DeckList> readDeckFile(std::string_view text, int& faultyLine) {
    faultyLine = 1;
    if (!text.starts_with(kHeader)) {
        return std::nullopt;
    }
    DeckList list{std::string(takeLine(text).substr(kHeader.size())), {}, {}};
    std::size_t bytesLeft = kMostNameBytes;
    while (!text.empty()) {
        ++faultyLine;
        std::string_view line = takeLine(text);
        const bool isSideboard = line.starts_with(kSideboardMark);
        line.remove_prefix(isSideboard ? kSideboardMark.size() : 0);
        const bool isCard = addCards(line, isSideboard ? list.sideboard : list.deck, bytesLeft);
        if (!isCard && !line.starts_with(kComment) &&
            (isSideboard || line.find_first_not_of(' ') != std::string_view::npos)) {
            return std::nullopt;
        }
    }
    return list;
}

std::optional<std::int32_t> codeOfDeckFile(std::string_view text) {
    if (!text.starts_with(kHeader)) {
        return std::nullopt;
    }
    std::int32_t code = 0;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (line.starts_with(kHeader)) {
            code -= stringVal(line.substr(kHeader.size()));
        } else if (line.starts_with(kDeckLine)) {
            code += deckValue(line.substr(kDeckLine.size()));
        } else if (line.starts_with(kSideboardLine)) {
            code += stringVal(line.substr(kSideboardLine.size()));
        }
    }
    return code;
}

}  // namespace packwise
