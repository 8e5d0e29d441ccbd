#include "engine/deckexport.h"

#include "engine/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace packwise {

namespace {

struct FormatRow {
    std::string_view word;
    std::string_view ending;
};
// By DeckFormat.
constexpr std::array<FormatRow, 4> kFormats = {
    {{"cod", ".cod"}, {"txt", ".txt"}, {"dek", ".dek"}, {"arena", ".arena.txt"}}};

using Counted = std::vector<std::pair<std::string, int>>;

std::string printable(std::string_view text) {
    std::string kept(text);
    std::replace_if(
        kept.begin(), kept.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, '?');
    return toUtf8(kept);
}

// A card's name as other programs spell it, in UTF-8.
std::string spellingOf(std::string_view name) {
    std::string spelling;
    while (true) {
        const std::size_t slash = std::min(name.find('/'), name.size());
        const std::size_t next = std::min(name.find_first_not_of(" /", slash), name.size());
        const std::string_view half =
            name.substr(0, name.substr(0, slash).find_last_not_of(' ') + 1);
        if (half.empty() || next == name.size()) {
            return printable(spelling.append(name));  // no slash between two halves
        }
        spelling.append(half).append(" // ");
        name.remove_prefix(next);
    }
}

Counted counted(const std::vector<std::string>& names) {
    Counted cards;
    std::unordered_map<std::string, std::size_t> rows;
    for (const std::string& name : names) {
        std::string spelling = spellingOf(name);
        const auto [row, isNew] = rows.emplace(spelling, cards.size());
        if (isNew) {
            cards.emplace_back(std::move(spelling), 0);
        }
        ++cards[row->second].second;
    }
    return cards;
}

std::string escaped(std::string_view text) {
    std::string xml;
    for (const char c : text) {
        switch (c) {
            case '&':
                xml += "&amp;";
                break;
            case '<':
                xml += "&lt;";
                break;
            case '>':
                xml += "&gt;";
                break;
            case '"':
                xml += "&quot;";
                break;
            default:
                xml += c;
        }
    }
    return xml;
}

void addLines(std::string& text, const Counted& cards) {
    for (const auto& [name, count] : cards) {
        text.append(std::to_string(count)).append(" ").append(name).append("\n");
    }
}

std::string txt(const Counted& deck, const Counted& sideboard) {
    std::string text;
    addLines(text, deck);
    text.append(sideboard.empty() ? "" : "\n");
    addLines(text, sideboard);
    return text;
}

std::string arena(const Counted& deck, const Counted& sideboard) {
    std::string text = "Deck\n";
    addLines(text, deck);
    text.append(sideboard.empty() ? "" : "\nSideboard\n");
    addLines(text, sideboard);
    return text;
}

void addZone(std::string& text, std::string_view zone, const Counted& cards) {
    text.append("    <zone name=\"").append(zone).append("\">\n");
    for (const auto& [name, count] : cards) {
        text.append("        <card number=\"").append(std::to_string(count));
        text.append("\" name=\"").append(escaped(name)).append("\"/>\n");
    }
    text.append("    </zone>\n");
}

std::string cod(std::string_view name, const Counted& deck, const Counted& sideboard) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<cockatrice_deck version=\"1\">\n"
        "    <deckname>" +
        escaped(name) +
        "</deckname>\n"
        "    <comments></comments>\n";
    addZone(text, "main", deck);
    addZone(text, "side", sideboard);
    return text + "</cockatrice_deck>\n";
}

void addRows(std::string& text, std::string_view isSideboard, const Counted& cards) {
    for (const auto& [name, count] : cards) {
        // Its number in that program's catalogue is not known; the name serves without it.
        text.append("  <Cards CatID=\"0\" Quantity=\"").append(std::to_string(count));
        text.append("\" Sideboard=\"").append(isSideboard);
        text.append("\" Name=\"").append(escaped(name)).append("\" />\n");
    }
}

std::string dek(const Counted& deck, const Counted& sideboard) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<Deck xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
        "  <NetDeckID>0</NetDeckID>\n"
        "  <PreconstructedDeckID>0</PreconstructedDeckID>\n";
    addRows(text, "false", deck);
    addRows(text, "true", sideboard);
    return text + "</Deck>\n";
}

}  // namespace

std::optional<DeckFormat> deckFormatOf(std::string_view word) {
    const auto* const row = std::ranges::find(kFormats, word, &FormatRow::word);
    return row == kFormats.end()
               ? std::nullopt
               : std::optional(static_cast<DeckFormat>(std::distance(kFormats.begin(), row)));
}

std::string_view endingOf(DeckFormat format) {
    return kFormats.at(static_cast<std::size_t>(format)).ending;
}

std::string exportDeck(DeckFormat format, const DeckList& deck) {
    const Counted main = counted(deck.deck);
    const Counted side = counted(deck.sideboard);
    switch (format) {
        case DeckFormat::Cod:
            return cod(printable(deck.name), main, side);
        case DeckFormat::Txt:
            return txt(main, side);
        case DeckFormat::Dek:
            return dek(main, side);
        case DeckFormat::Arena:
            return arena(main, side);
    }
    return {};
}

}  // namespace packwise
