#include "bot/cardfacts.h"

#include <algorithm>
#include <numeric>

namespace packwise {

namespace {

struct Cost {
    int total = 0;
    std::array<int, kManaColors> pips{};
};

void countSymbol(std::string_view symbol, Cost& cost) {
    int number = 0;
    bool hasNumber = false;
    bool hasColor = false;
    for (const char c : symbol) {
        if (c >= '0' && c <= '9') {
            number = std::min(number * 10 + (c - '0'), 99);
            hasNumber = true;
        } else if (const std::size_t color = kColorLetters.find(c);
                   color != std::string_view::npos) {
            ++cost.pips[color];
            hasColor = true;
        }
    }
    if (hasNumber) {
        cost.total += number;
    } else if (hasColor || symbol == "C" || symbol == "S") {
        ++cost.total;
    }
}

// Reads "2UU" and "{2}{U}{U}" alike. Of a card with two halves the first one counts.
Cost readCost(std::string_view text) {
    Cost cost;
    text = text.substr(0, text.find("//"));
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + 1;
        if (text[at] == '{' || text[at] == '(') {
            end = std::min(text.find(text[at] == '{' ? '}' : ')', at), text.size());
        } else if (text[at] >= '0' && text[at] <= '9') {
            end = std::min(text.find_first_not_of("0123456789", at), text.size());
        }
        countSymbol(text.substr(at, end - at), cost);
        at = end;
    }
    return cost;
}

bool holds(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

CardKind kindOf(char letter, const CardRecord* record) {
    if (!record || record->type.empty()) {
        return letter == 'L' ? CardKind::Land : CardKind::Unknown;
    }
    if (holds(record->type, "Creature") || holds(record->type, "Summon")) {
        return CardKind::Creature;
    }
    return letter == 'L' || holds(record->type, "Land") ? CardKind::Land : CardKind::Other;
}

Rarity rarityOf(const CardRecord* record) {
    if (!record || record->rarity.size() != 1) {
        return Rarity::Unknown;
    }
    switch (record->rarity[0]) {
        case '-':
            return Rarity::Common;
        case '=':
            return Rarity::Uncommon;
        case '+':
            return Rarity::Rare;
        default:
            return Rarity::Unknown;
    }
}

}  // namespace

CardFacts factsOf(std::string_view token, const CardRecord* record) {
    const char letter = token.empty() ? ' ' : token.front();
    CardFacts card;
    card.name = token.substr(token.empty() ? 0 : 1);
    card.rarity = rarityOf(record);
    card.kind = kindOf(letter, record);
    if (record && !record->cost.empty()) {
        const Cost cost = readCost(record->cost);
        card.cost = cost.total;
        card.pips = cost.pips;
    }
    const bool hasPips = std::any_of(card.pips.begin(), card.pips.end(), [](int n) { return n; });
    if (const std::size_t own = kColorLetters.find(letter); own != std::string_view::npos) {
        card.colors = colorBit(own);
        if (!hasPips) {
            card.pips[own] = 1;
        }
    } else if (letter == 'A' || letter == 'L') {
        card.pips = {};
    } else {
        for (std::size_t color = 0; color < kManaColors; ++color) {
            if (!hasPips) {
                card.pips[color] = 1;
            }
            card.colors |= card.pips[color] ? colorBit(color) : 0;
        }
    }
    return card;
}

double worthOf(const CardFacts& card) {
    static constexpr std::array<double, 4> kByRarity = {1.4, 1.0, 1.8, 3.0};
    double worth = kByRarity[static_cast<std::size_t>(card.rarity)];
    switch (card.kind) {
        case CardKind::Creature:
            worth += 0.4;
            break;
        case CardKind::Land:
            worth *= 0.3;
            break;
        default:
            break;
    }
    if (card.cost) {
        worth -= *card.cost >= 7 ? 0.6 : *card.cost == 6 ? 0.3 : *card.cost == 0 ? 0.2 : 0.0;
    }
    return std::max(worth, 0.1);
}

}  // namespace packwise
