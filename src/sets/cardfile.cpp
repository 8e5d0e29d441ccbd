#include "sets/cardfile.h"

#include "protocol/framing.h"

#include <algorithm>
#include <optional>

namespace packwise::sets {

namespace {

void putWord(std::string& out, int value) {
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>((value >> 8) & 0xFF);
}

void putText(std::string& out, const std::string& text) {
    putWord(out, static_cast<int>(text.size()));
    out += text;
}

void putRecord(std::string& out, const CardRecord& card) {
    for (const std::string* field :
         {&card.name, &card.rarity, &card.color, &card.cost, &card.type, &card.text, &card.pt}) {
        putText(out, *field);
    }
}

std::optional<int> takeWord(std::string_view& bytes) {
    if (bytes.size() < 2) {
        return std::nullopt;
    }
    const int value =
        static_cast<unsigned char>(bytes[0]) | (static_cast<unsigned char>(bytes[1]) << 8);
    bytes.remove_prefix(2);
    return value;
}

bool takeText(std::string_view& bytes, std::string& text) {
    const std::optional<int> length = takeWord(bytes);
    if (!length || bytes.size() < static_cast<std::size_t>(*length)) {
        return false;
    }
    text = bytes.substr(0, static_cast<std::size_t>(*length));
    bytes.remove_prefix(static_cast<std::size_t>(*length));
    return true;
}

bool takeRecord(std::string_view& bytes, CardRecord& card) {
    return takeText(bytes, card.name) && takeText(bytes, card.rarity) &&
           takeText(bytes, card.color) && takeText(bytes, card.cost) &&
           takeText(bytes, card.type) && takeText(bytes, card.text) && takeText(bytes, card.pt);
}

// Gives out an order file line by line and knows the number of the line.
class Lines {
public:
    explicit Lines(std::string_view bytes) : rest_(bytes) {}

    std::optional<std::string_view> next() {
        if (rest_.empty()) {
            return std::nullopt;
        }
        const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : rest_.empty() ? 0 : 1);
        ++number_;
        return line;
    }
    int number() const { return number_; }

private:
    std::string_view rest_;
    int number_ = 0;
};

// Three whole numbers, split by commas or blanks; what stands behind the third is a fault too.
std::optional<std::array<int, 3>> takeTriple(Lines& lines) {
    std::array<int, 3> triple{};
    std::size_t taken = 0;
    while (taken < triple.size()) {
        const std::optional<std::string_view> line = lines.next();
        if (!line) {
            return std::nullopt;
        }
        std::size_t at = 0;
        while ((at = line->find_first_not_of(", \t", at)) != std::string_view::npos) {
            const std::size_t end = std::min(line->find_first_of(", \t", at), line->size());
            const std::optional<int> number = readNumber(line->substr(at, end - at));
            if (!number || taken == triple.size()) {
                return std::nullopt;
            }
            triple.at(taken++) = *number;
            at = end;
        }
    }
    return triple;
}

}  // namespace

std::string cardFileBytes(const SetSource& source) {
    std::string out;
    for (const int count : source.counts) {
        putWord(out, count);
    }
    for (const CardRecord& card : source.cards) {
        putRecord(out, card);
    }
    putRecord(
        out,
        {.name = "END", .rarity = ".", .color = {}, .cost = {}, .type = {}, .text = {}, .pt = {}});
    return out;
}

std::string orderFileBytes(const OrderFile& order) {
    std::string counts;
    std::string lengths;
    std::string lines;
    for (std::size_t list = 0; list < order.lists.size(); ++list) {
        const char* const behind = list + 1 < order.lists.size() ? "," : "\r\n";
        counts += std::to_string(order.counts.at(list)) + behind;
        lengths += std::to_string(order.lists.at(list).size()) + behind;
        for (const std::string& token : order.lists.at(list)) {
            lines += token + "\r\n";
        }
    }
    return counts + lengths + lines;
}

ReadCardFile parseCardFile(std::string_view bytes) {
    ReadCardFile read;
    std::string_view rest = bytes;
    for (int& count : read.counts) {
        const std::optional<int> word = takeWord(rest);
        if (!word) {
            read.faults.push_back({bytes.empty() ? "the file is empty" : "the header is cut off",
                                   "byte " + std::to_string(bytes.size())});
            return read;
        }
        count = static_cast<std::int16_t>(*word);
    }
    while (true) {
        const std::size_t offset = bytes.size() - rest.size();
        const std::string where = "record " + std::to_string(read.cards.size() + 1) + " at byte " +
                                  std::to_string(offset);
        if (rest.empty()) {
            read.faults.push_back({"the END record is missing", where});
            return read;
        }
        CardRecord card;
        if (!takeRecord(rest, card)) {
            read.faults.push_back({"the record is cut off", where});
            return read;
        }
        if (card.name == "END") {
            if (card.rarity != ".") {
                read.faults.push_back(
                    {"the END record carries the mark \"" + card.rarity + "\" in place of \".\"",
                     where});
            }
            return read;
        }
        read.cards.push_back(std::move(card));
    }
}

ReadOrderFile parseOrderFile(std::string_view bytes) {
    ReadOrderFile read;
    Lines lines(bytes);
    const auto counts = takeTriple(lines);
    const auto lengths = counts ? takeTriple(lines) : std::nullopt;
    if (!lengths) {
        read.faults.push_back(
            {bytes.empty() ? "the file is empty" : "three whole numbers are wanted here",
             "line " + std::to_string(std::max(lines.number(), 1))});
        return read;
    }
    read.order.counts = *counts;
    for (std::size_t list = 0; list < read.order.lists.size(); ++list) {
        read.firstLines.at(list) = lines.number() + 1;
        for (int i = 0; i < lengths->at(list); ++i) {
            const auto line = lines.next();
            if (!line) {
                read.faults.push_back({"list " + std::to_string(list + 1) + " has " +
                                           std::to_string(i) + " of " +
                                           std::to_string(lengths->at(list)) + " lines",
                                       "line " + std::to_string(lines.number())});
                return read;
            }
            read.order.lists.at(list).emplace_back(*line);
        }
    }
    return read;
}

}  // namespace packwise::sets
