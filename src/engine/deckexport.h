// Decks in the forms that other programs read, all of them UTF-8.
#pragma once

#include "engine/deckfile.h"

#include <optional>
#include <string>
#include <string_view>

namespace packwise {

enum class DeckFormat { Cod, Txt, Dek, Arena };

// The format of the word "cod", "txt", "dek" or "arena".
std::optional<DeckFormat> deckFormatOf(std::string_view word);

// What the name of a file of that format ends with, the point included.
std::string_view endingOf(DeckFormat format);

// The whole file. Cards of the same name stand together, in the order of the first of them. A card
// of two halves is spelled "A // B", whatever its slashes are like in the deck; control characters,
// which no card has, become "?".
std::string exportDeck(DeckFormat format, const DeckList& deck);

}  // namespace packwise
