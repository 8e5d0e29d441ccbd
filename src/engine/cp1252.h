// Windows-1252, character by character.
#pragma once

#include <algorithm>
#include <array>

namespace packwise::cp1252 {

// Bytes 0x80 to 0x9F; all others are the character of the same number. The five that the code page
// leaves open are control characters.
inline constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t characterOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xA0 ? kUpperControls.at(byte - 0x80U) : char16_t{byte};
}

// The byte of a character, 0 to 255, or -1 when the code page lacks it.
constexpr int byteOf(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return character;
    }
    const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    return found == kUpperControls.end()
               ? -1
               : static_cast<int>(0x80 + (found - kUpperControls.begin()));
}

// The small letter of a capital of the code page; any other character as it is.
constexpr char16_t lower(char16_t character) {
    if ((character >= u'A' && character <= u'Z') ||
        (character >= 0xC0 && character <= 0xDE && character != 0xD7)) {
        return static_cast<char16_t>(character + 0x20);
    }
    switch (character) {
        case 0x0152:  // OE
        case 0x0160:  // S with caron
        case 0x017D:  // Z with caron
            return static_cast<char16_t>(character + 1);
        case 0x0178:  // Y with diaeresis
            return 0xFF;
        default:
            return character;
    }
}

}  // namespace packwise::cp1252
