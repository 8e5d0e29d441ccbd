#include "common/codepage.h"

#include <algorithm>
#include <array>

namespace packwise {

namespace {

// Bytes 0x80 to 0x9F; all others are the character of the same number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The byte of a character, or -1.
int byteOf(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return character;
    }
    const auto* const found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    return found == kUpperControls.end()
               ? -1
               : static_cast<int>(0x80 + (found - kUpperControls.begin()));
}

}  // namespace

QString fromBytes(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        *out++ = byte >= 0x80 && byte < 0xA0 ? QChar(kUpperControls.at(byte - 0x80U))
                                             : QChar(char16_t{byte});
    }
    return text;
}

std::string toBytes(const QString& input) {
    const QString text = input.normalized(QString::NormalizationForm_C);
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        if (character.isLowSurrogate()) {
            continue;  // its high half has become the "?"
        }
        const int byte = byteOf(character.unicode());
        bytes += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return bytes;
}

bool fitsCodePage(const QString& input) {
    const QString text = input.normalized(QString::NormalizationForm_C);
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return byteOf(character.unicode()) >= 0; });
}

}  // namespace packwise
