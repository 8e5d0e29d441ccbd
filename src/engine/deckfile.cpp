#include "engine/deckfile.h"

#include <cstddef>

namespace packwise {

namespace {

constexpr std::string_view kHeader = "//NAME: ";
constexpr std::string_view kDeckLine = "    1 ";
constexpr std::string_view kSideboardLine = "SB: 1 ";
constexpr std::string_view kLineEnd = "\r\n";

// A deck card counts double, in 16 bits.
std::int32_t deckValue(std::string_view name) {
    return static_cast<std::int16_t>(2 * stringVal(name));
}

}  // namespace

std::int16_t stringVal(std::string_view text) {
    std::uint32_t sum = 0;
    for (const char c : text) {
        sum += static_cast<unsigned char>(c);
    }
    return static_cast<std::int16_t>(sum);
}

DeckFile makeDeckFile(std::string_view stamp, const std::vector<std::string>& deck,
                      const std::vector<std::string>& sideboard) {
    const std::string name = "Packwise deck " + std::string(stamp);
    DeckFile file{std::string(kHeader).append(name).append(kLineEnd), -stringVal(name)};
    for (const std::string& card : deck) {
        file.text.append(kDeckLine).append(card).append(kLineEnd);
        file.code += deckValue(card);
    }
    for (const std::string& card : sideboard) {
        file.text.append(kSideboardLine).append(card).append(kLineEnd);
        file.code += stringVal(card);
    }
    return file;
}

std::optional<std::int32_t> codeOfDeckFile(std::string_view text) {
    if (!text.starts_with(kHeader)) {
        return std::nullopt;
    }
    std::int32_t code = 0;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.starts_with(kHeader)) {
            code -= stringVal(line.substr(kHeader.size()));
        } else if (line.starts_with(kDeckLine)) {
            code += deckValue(line.substr(kDeckLine.size()));
        } else if (line.starts_with(kSideboardLine)) {
            code += stringVal(line.substr(kSideboardLine.size()));
        }
    }
    return code;
}

}  // namespace packwise
