#include "engine/utf8.h"

#include "engine/cp1252.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace packwise {

namespace {

// The bytes of a character: how many follow the first, by what that begins with, and the least
// that needs so many.
struct Length {
    unsigned mask;
    unsigned mark;
    std::size_t following;
    std::uint32_t least;
};
constexpr std::array<Length, 4> kLengths = {
    {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}}};

// Takes the first character off the text; nothing where that is none.
std::optional<std::uint32_t> takeCharacter(std::string_view& utf8) {
    const auto first = static_cast<unsigned char>(utf8.front());
    for (const Length& length : kLengths) {
        if ((first & length.mask) != length.mark) {
            continue;
        }
        if (utf8.size() <= length.following) {
            return std::nullopt;
        }
        std::uint32_t character = first & ~length.mask;
        for (std::size_t i = 1; i <= length.following; ++i) {
            const auto byte = static_cast<unsigned char>(utf8[i]);
            if ((byte & 0xC0U) != 0x80U) {
                return std::nullopt;
            }
            character = character << 6U | (byte & 0x3FU);
        }
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < length.least || character > 0x10FFFF || isSurrogate) {
            return std::nullopt;
        }
        utf8.remove_prefix(length.following + 1);
        return character;
    }
    return std::nullopt;
}

}  // namespace

std::string toUtf8(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char byte : bytes) {
        const unsigned character = cp1252::characterOf(byte);
        if (character < 0x80) {
            utf8 += byte;
        } else if (character < 0x800) {
            utf8 += static_cast<char>(0xC0U | character >> 6U);
            utf8 += static_cast<char>(0x80U | (character & 0x3FU));
        } else {
            utf8 += static_cast<char>(0xE0U | character >> 12U);
            utf8 += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
            utf8 += static_cast<char>(0x80U | (character & 0x3FU));
        }
    }
    return utf8;
}

std::optional<std::string> fromUtf8(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::optional<std::uint32_t> character = takeCharacter(utf8);
        if (!character) {
            return std::nullopt;
        }
        const int byte =
            *character > 0xFFFF ? -1 : cp1252::byteOf(static_cast<char16_t>(*character));
        bytes += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace packwise
