// From the picks of a draft to a deck of 40.
#pragma once

#include "bot/cardfacts.h"

#include <array>
#include <string>
#include <vector>

namespace packwise {

inline constexpr int kDeckSize = 40;
inline constexpr int kSpells = 23;

// The free lands, by colour in the order of kColorLetters.
inline constexpr std::array<const char*, kManaColors> kBasicLands = {"Swamp", "Island", "Forest",
                                                                     "Mountain", "Plains"};

struct DeckPlan {
    ColorSet colors = 0;                 // the deck's two colours
    std::vector<std::string> deck;       // exactly kDeckSize names, the free land last
    std::vector<std::string> sideboard;  // the other picks, in the order in which they were taken
};

// Chooses the two colours that the picks are best in, kSpells of the cards that they can play along
// a curve of costs, and free land by the colours of the costs. Where two colours give too few, the
// best of the other picks fill up, and where there are no more picks, land does.
DeckPlan planDeck(const std::vector<CardFacts>& picks);

}  // namespace packwise
