// Lays a set's cards out on printed sheets: the lists of an order file.
#pragma once

#include "sets/setsource.h"

#include <string>
#include <vector>

namespace packwise::sets {

inline constexpr int kSheetWidth = 11;
inline constexpr int kSheetLines = kSheetWidth * kSheetWidth;

struct SheetCard {
    std::string token;  // colour letter and name
    double weight = 1;  // above 0: its share of the sheet
};

// `lines` tokens (at least one a card), row by row. A card's copies, as many as its weight asks
// for and never none, stand far apart; neighbours along a row and in the row below differ in
// colour where that can be had. The same cards always give the same sheet.
std::vector<std::string> layOutSheet(const std::vector<SheetCard>& cards, int lines);

// Gives the set an order: commons in the first list, uncommons in the second, rares in the third,
// each card with its weight (never below a trifle), on 121 lines or as many whole rows as there are
// cards.
void layOutSheets(SetSource& source);

}  // namespace packwise::sets
