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

// The security code worked out again from a deck file's bytes. Nothing for text without a header
// line.
std::optional<std::int32_t> codeOfDeckFile(std::string_view text);

}  // namespace packwise
