// The eight colours of cards: the letter that opens a card token, and how each is shown.
#pragma once

#include <QColor>
#include <QString>

#include <array>
#include <optional>

namespace packwise {

inline constexpr int kColors = 8;

struct CardColor {
    char letter;
    const char16_t* name;
    const char16_t* heading;  // of the colour's group in the sorted list
    QColor dot;
    QColor bar;

    QString spokenName() const { return QString::fromUtf16(name); }
    QString headingText() const { return QString::fromUtf16(heading); }
};

// By colour index.
extern const std::array<CardColor, kColors> kCardColors;

// The colour index of a token's letter, or nothing for a letter outside the eight.
std::optional<int> colorIndexOf(char letter);

// What a light, a dot or a border can say.
namespace shade {
inline constexpr QColor black{0, 0, 0};
inline constexpr QColor white{255, 255, 255};
inline constexpr QColor grey{128, 128, 128};
inline constexpr QColor noDot{192, 192, 192};
inline constexpr QColor emptySeat{224, 224, 224};
inline constexpr QColor red{255, 0, 0};
inline constexpr QColor green{0, 255, 0};
inline constexpr QColor darkGreen{0, 192, 0};
}  // namespace shade

}  // namespace packwise
