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

}  // namespace packwise
