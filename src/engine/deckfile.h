// The deck file's text and the deck's security code. Text is bytes in Windows-1252.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// The signed 16-bit sum of the characters' codes.
std::int16_t stringVal(std::string_view text);

struct DeckFile {
    std::string text;   // the whole file, lines ended by CR LF
    std::int32_t code;  // the security code of what the text holds
};

// The file of a deck. `stamp` is the local date and time as text; the names carry no colour code.
DeckFile makeDeckFile(std::string_view stamp, const std::vector<std::string>& deck,
                      const std::vector<std::string>& sideboard);

struct DeckList {
    std::string name;               // of the deck; may be empty
    std::vector<std::string> deck;  // a name for each card, in the order of the file
    std::vector<std::string> sideboard;
};

// The cards of a deck file's bytes, also of one in which a line counts several cards of a name.
// Blank lines and further lines that begin with "//" are passed over. Nothing for text without a
// header line, and where any other line tells no card: `faultyLine` is then its number, from 1.
std::optional<DeckList> readDeckFile(std::string_view text, int& faultyLine);

// The security code worked out again from a deck file's bytes. Nothing for text without a header
// line.
std::optional<std::int32_t> codeOfDeckFile(std::string_view text);

}  // namespace packwise
