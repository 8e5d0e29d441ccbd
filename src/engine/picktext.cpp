#include "engine/picktext.h"

#include "engine/utf8.h"

#include <algorithm>
#include <utility>

namespace packwise {

namespace {

constexpr std::string_view kEvent = "Event #:";
constexpr std::string_view kTime = "Time:";
constexpr std::string_view kPlayers = "Players:";
constexpr std::string_view kPack = "Pack ";
constexpr std::string_view kPick = " pick ";
constexpr std::string_view kRule = "------";
constexpr std::string_view kOther = "    ";
constexpr std::string_view kMark = "--> ";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string oneLine(std::string_view bytes) {
    std::string line = toUtf8(bytes);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, '?');
    return line;
}

void writeNames(std::string& text, const std::vector<std::string>& names, int marked) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        text.append(static_cast<int>(i) == marked ? kMark : kOther);
        text.append(names[i].empty() ? "?" : oneLine(names[i])).append("\n");
    }
    text.append("\n");
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// Takes a number from 1 to `most` off the front of the text; 0 when none stands there.
int takeNumber(std::string_view& text, int most) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    const int number = readNumber(text.substr(0, end)).value_or(0);
    text.remove_prefix(end);
    return number <= most ? number : 0;
}

class Reader {
public:
    // The fault of a line, or "".
    std::string_view take(std::string_view line) {
        if (line.size() <= kOther.size() && line.find_first_not_of(' ') == std::string_view::npos) {
            place_ = log.packs.empty() ? Place::Head : Place::Between;
            return {};
        }
        if (line.starts_with(kPack)) {
            return takePack(line.substr(kPack.size()));
        }
        if (line.starts_with(kRule) && line.ends_with(kRule) && line.size() > 2 * kRule.size()) {
            set_ = trimmed(line.substr(kRule.size(), line.size() - 2 * kRule.size()));
            return {};
        }
        switch (place_) {
            case Place::Players:
                return takeName(line, log.players, log.self, kSeats);
            case Place::Pack:
                return takeName(line, log.packs.back().cards, log.packs.back().taken,
                                kMostCardsInPack);
            case Place::Between:
                return "neither the head of a pack nor a card of one";
            case Place::Head:
                break;
        }
        takeHead(line);
        return {};
    }

    PickLog log;

private:
    enum class Place { Head, Players, Pack, Between };

    void takeHead(std::string_view line) {
        if (line.starts_with(kEvent)) {
            log.event = trimmed(line.substr(kEvent.size()));
        } else if (line.starts_with(kTime)) {
            log.time = trimmed(line.substr(kTime.size()));
        } else if (line.starts_with(kPlayers)) {
            place_ = Place::Players;
        }
    }

    std::string_view takePack(std::string_view rest) {
        SeenPack seen;
        seen.pack = takeNumber(rest, kMostSeenPacks);
        if (seen.pack == 0 || !rest.starts_with(kPick)) {
            return "no number of a pack";
        }
        rest.remove_prefix(kPick.size());
        seen.pick = takeNumber(rest, kMostCardsInPack);
        if (seen.pick == 0 || !rest.starts_with(':')) {
            return "no number of a pick";
        }
        rest.remove_prefix(1);
        if (rest.starts_with(' ')) {
            seen.player = rest.substr(1);
        }
        if (log.packs.size() == kMostTurns) {
            return "more packs than a draft has";
        }
        seen.set = set_;
        log.packs.push_back(std::move(seen));
        place_ = Place::Pack;
        return {};
    }

    static std::string_view takeName(std::string_view line, std::vector<std::string>& names,
                                     int& marked, int most) {
        const bool isMarked = line.starts_with(kMark);
        if (!isMarked && !line.starts_with(kOther)) {
            return "no name behind four blanks or \"-->\"";
        }
        if (isMarked && marked >= 0) {
            return "a second \"-->\"";
        }
        if (static_cast<int>(names.size()) == most) {
            return "too many names";
        }
        marked = isMarked ? static_cast<int>(names.size()) : marked;
        names.emplace_back(line.substr(kOther.size()));
        return {};
    }

    Place place_ = Place::Head;
    std::string set_;
};

}  // namespace

std::string writePicks(const PickLog& log) {
    std::string text;
    text.append(kEvent).append(" ").append(oneLine(log.event)).append("\n");
    text.append(kTime).append("    ").append(oneLine(log.time)).append("\n");
    text.append(kPlayers).append("\n");
    writeNames(text, log.players, log.self);
    int pack = 0;
    std::string_view set;
    for (const SeenPack& seen : log.packs) {
        if (seen.set != set || (seen.pack != pack && !seen.set.empty())) {
            text.append(kRule).append(" ").append(oneLine(seen.set)).append(" ").append(kRule);
            text.append("\n\n");
        }
        pack = seen.pack;
        set = seen.set;
        text.append(kPack).append(std::to_string(seen.pack)).append(kPick);
        text.append(std::to_string(seen.pick)).append(":");
        text.append(seen.player.empty() ? "" : " ").append(oneLine(seen.player)).append("\n");
        writeNames(text, seen.cards, seen.taken);
    }
    return text;
}

std::optional<PickLog> readPicks(std::string_view utf8, PickTextFault& fault) {
    if (utf8.size() > kMostPickText) {
        fault = {0, "too long for the picks of a draft"};
        return std::nullopt;
    }
    if (utf8.starts_with(kByteOrderMark)) {
        utf8.remove_prefix(kByteOrderMark.size());
    }
    Reader reader;
    for (int number = 1; !utf8.empty(); ++number) {
        const std::size_t end = utf8.find('\n');
        std::string_view line = utf8.substr(0, end);
        utf8.remove_prefix(end == std::string_view::npos ? utf8.size() : end + 1);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        const std::optional<std::string> bytes = fromUtf8(line);
        const std::string_view what = bytes ? reader.take(*bytes) : "not UTF-8";
        if (!what.empty()) {
            fault = {number, std::string(what)};
            return std::nullopt;
        }
    }
    if (reader.log.packs.empty()) {
        fault = {0, "holds no pack"};
        return std::nullopt;
    }
    return std::move(reader.log);
}

}  // namespace packwise
