#include "engine/cardset.h"

#include "engine/cp1252.h"
#include "protocol/framing.h"
#include "protocol/pack.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <unordered_set>

namespace packwise {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kShortestWalkedList = 21;
constexpr std::size_t kFieldsInRecord = 7;
constexpr std::uintmax_t kMostFileBytes = std::uintmax_t{64} * 1024 * 1024;

// The bytes of a file; none of one that is too large to be a card file. Nothing when it cannot be
// opened.
std::optional<std::string> readWhole(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        return std::nullopt;
    }
    const std::uintmax_t size = fs::file_size(file, error);
    std::ifstream in(file, std::ios::binary);
    if (error || !in) {
        return std::nullopt;
    }
    if (size > kMostFileBytes) {
        return std::string();
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

// The seven strings of a record, as views into the file's bytes.
struct RecordView {
    std::string_view name, rarity, color, cost, type, text, pt;
};

// Walks a card file from its front. Behind the last byte all fields are empty.
class CardFileReader {
public:
    explicit CardFileReader(std::string_view bytes) : rest_(bytes) {}

    // A signed little-endian 16-bit number; 0 behind the end.
    int number() {
        if (rest_.size() < 2) {
            rest_ = {};
            return 0;
        }
        const unsigned low = static_cast<unsigned char>(rest_[0]);
        const unsigned high = static_cast<unsigned char>(rest_[1]);
        rest_.remove_prefix(2);
        return static_cast<std::int16_t>(low | high << 8U);
    }

    // The next record. A field that is not there to its end is empty, and so are all behind it.
    RecordView record() {
        std::array<std::string_view, kFieldsInRecord> fields;
        for (std::string_view& field : fields) {
            const std::size_t length = static_cast<std::uint16_t>(number());
            if (length > rest_.size()) {
                rest_ = {};
            }
            field = rest_.substr(0, length);
            rest_.remove_prefix(field.size());
        }
        return {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5], fields[6]};
    }

private:
    std::string_view rest_;
};

bool isOneOf(std::string_view field, std::string_view letters) {
    return field.size() == 1 && letters.find(field[0]) != std::string_view::npos;
}

bool isMark(std::string_view rarity) {
    return isOneOf(rarity, "-=+.");
}

Pool poolOf(char mark) {
    return mark == '+' ? Pool::Rare : mark == '=' ? Pool::Uncommon : Pool::Common;
}

bool isToken(std::string_view text) {
    // One pass over the bytes: find_first_of() would search its set anew for each, which is half
    // of the time that a list takes.
    return text.size() >= kShortestToken && text.size() <= kMostTokenBytes &&
           std::none_of(text.begin(), text.end(),
                        [](char c) { return c == '|' || c == '~' || c == '\r' || c == '\n'; });
}

// A blank line is never dealt.
bool canStandInList(std::string_view line) {
    return line.empty() || isToken(line);
}

bool soundCounts(const std::array<int, 3>& counts) {
    int sum = 0;
    for (const int count : counts) {
        if (count < 0 || count > kMostCardsInPack) {
            return false;
        }
        sum += count;
    }
    return sum > 0 && sum <= kMostCardsInPack;
}

// Whether a list holds at least `count` different tokens.
bool holdsDifferent(const std::vector<std::string>& tokens, int count) {
    std::unordered_set<std::string_view> seen;
    for (auto token = tokens.begin();
         token != tokens.end() && seen.size() < static_cast<std::size_t>(count); ++token) {
        if (!token->empty()) {
            seen.insert(*token);
        }
    }
    return seen.size() >= static_cast<std::size_t>(count);
}

fs::path fileNameFromCodePage(std::string_view bytes) {
    std::u16string wide;
    std::transform(bytes.begin(), bytes.end(), std::back_inserter(wide), cp1252::characterOf);
    return wide;
}

// A file name without the difference of capital and small letters; empty for one that is no text.
std::u16string folded(const fs::path& name) {
    std::u16string wide;
    try {
        wide = name.u16string();
    } catch (const std::system_error&) {
        return {};
    }
    std::transform(wide.begin(), wide.end(), wide.begin(), cp1252::lower);
    return wide;
}

// Takes lines, ended by LF or CR LF or by the end of the text, off the front of a text.
class LineReader {
public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    std::optional<std::string_view> line() {
        if (rest_.empty()) {
            return std::nullopt;
        }
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        return line;
    }

    // Three numbers, separated by commas and blanks; the line of the third holds nothing more.
    std::optional<std::array<int, 3>> numbers() {
        std::array<int, 3> numbers{};
        std::size_t have = 0;
        while (have < numbers.size()) {
            std::optional<std::string_view> text = line();
            if (!text) {
                return std::nullopt;
            }
            static constexpr std::string_view kSeparators = ", \t";
            std::size_t at = 0;
            while ((at = text->find_first_not_of(kSeparators, at)) != std::string_view::npos) {
                const std::size_t end =
                    std::min(text->find_first_of(kSeparators, at), text->size());
                std::string_view digits = text->substr(at, end - at);
                while (digits.size() > 1 && digits.front() == '0') {
                    digits.remove_prefix(1);
                }
                const std::optional<int> number = readNumber(digits);
                if (!number || have == numbers.size()) {
                    return std::nullopt;
                }
                numbers[have++] = *number;
                at = end;
            }
        }
        return numbers;
    }

private:
    std::string_view rest_;
};

}  // namespace

std::string setFileBase(std::string_view displayName) {
    std::string base(displayName);
    std::erase(base, ' ');
    return base.substr(0, 8);
}

fs::path setFilePath(const fs::path& folder, std::string_view displayName,
                     std::string_view extension) {
    const std::string base = setFileBase(displayName);
    if (base.find_first_of(std::string_view("/\\\0", 3)) != std::string::npos) {
        return folder / ".";  // no file can be called this
    }
    const fs::path name = fileNameFromCodePage(base + std::string(extension));
    fs::path spelled = folder / name;
    std::error_code error;
    if (fs::is_regular_file(spelled, error)) {
        return spelled;
    }

    const std::u16string wanted = folded(name);
    std::optional<fs::path> found;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path other = entry->path().filename();
        std::error_code ignored;
        if (folded(other) == wanted && entry->is_regular_file(ignored)) {
            if (found) {
                return spelled;
            }
            found = folder / other;
        }
    }
    return found.value_or(spelled);
}

bool hasSetFile(const fs::path& folder, std::string_view displayName, std::string_view extension) {
    std::error_code error;
    return fs::is_regular_file(setFilePath(folder, displayName, extension), error);
}

std::optional<CardPools> readCardPools(const fs::path& file) {
    const std::optional<std::string> bytes = readWhole(file);
    if (!bytes || bytes->empty()) {
        return std::nullopt;
    }
    CardFileReader reader(*bytes);
    CardPools pools;
    const auto count = [&pools](Pool pool) -> int& {
        return pools.counts[static_cast<std::size_t>(pool)];
    };
    count(Pool::Rare) = reader.number();
    count(Pool::Uncommon) = reader.number();
    count(Pool::Common) = reader.number();
    if (!soundCounts(pools.counts)) {
        return std::nullopt;
    }

    RecordView record;
    do {
        record = reader.record();
        if (!isMark(record.rarity)) {
            return std::nullopt;
        }
        if (record.rarity == ".") {
            continue;
        }
        std::vector<std::string>& tokens =
            pools.tokens[static_cast<std::size_t>(poolOf(record.rarity[0]))];
        if (tokens.size() == kMostCardsInPool) {
            return std::nullopt;
        }
        tokens.reserve(kMostCardsInPool);
        std::string& token = tokens.emplace_back();
        token.reserve(record.color.size() + record.name.size());
        token.append(record.color).append(record.name);
        if (!isOneOf(record.color, kTokenColors) || !isToken(token)) {
            return std::nullopt;
        }
    } while (record.name != "END");

    for (std::size_t i = 0; i < pools.counts.size(); ++i) {
        if (!holdsDifferent(pools.tokens[i], pools.counts[i])) {
            return std::nullopt;
        }
    }
    return pools;
}

std::optional<CardRecord> scanForCard(const fs::path& file, std::string_view name) {
    const std::optional<std::string> bytes = readWhole(file);
    if (!bytes) {
        return std::nullopt;
    }
    CardFileReader reader(*bytes);
    for (int i = 0; i < 3; ++i) {
        reader.number();
    }
    RecordView record;
    record.rarity = ".";
    while (isMark(record.rarity) && record.name != "END" && record.name != name) {
        record = reader.record();
    }
    return CardRecord{std::string(record.name),  std::string(record.rarity),
                      std::string(record.color), std::string(record.cost),
                      std::string(record.type),  std::string(record.text),
                      std::string(record.pt)};
}

std::optional<OrderFile> readOrderFile(const fs::path& file) {
    const std::optional<std::string> bytes = readWhole(file);
    if (!bytes) {
        return std::nullopt;
    }
    LineReader reader(*bytes);
    const auto counts = reader.numbers();
    const auto lengths = reader.numbers();
    if (!counts || !lengths || !soundCounts(*counts)) {
        return std::nullopt;
    }

    OrderFile order;
    order.counts = *counts;
    for (std::size_t i = 0; i < order.lists.size(); ++i) {
        const int length = (*lengths)[i];
        const bool used = order.counts[i] > 0;
        if (length < 0 || static_cast<std::size_t>(length) > bytes->size()) {
            return std::nullopt;
        }
        std::vector<std::string>& list = order.lists[i];
        list.reserve(static_cast<std::size_t>(length));
        for (int k = 0; k < length; ++k) {
            const std::optional<std::string_view> line = reader.line();
            if (!line || (used && !canStandInList(*line))) {
                return std::nullopt;
            }
            list.emplace_back(*line);
        }
        if (used && (list.size() < kShortestWalkedList || !holdsDifferent(list, order.counts[i]))) {
            return std::nullopt;
        }
    }
    return order;
}

}  // namespace packwise
