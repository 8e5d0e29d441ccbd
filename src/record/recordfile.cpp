// The form of a record's file: the only place that knows it.
#include "engine/utf8.h"
#include "protocol/framing.h"
#include "record/draftrecord.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kForm = 1;  // goes up when old readers would get it wrong
constexpr std::size_t kFewestSets = 3;

template <class Value, std::size_t count>
using Words = std::array<std::pair<Value, std::string_view>, count>;

constexpr Words<PickMaker, 3> kMakers = {
    {{PickMaker::Player, "player"}, {PickMaker::Clock, "clock"}, {PickMaker::Chance, "chance"}}};
constexpr Words<Oddity, kOddities> kOddityWords = {{{Oddity::OutOfTurn, "out of turn"},
                                                    {Oddity::UnsoundPick, "unsound pick"},
                                                    {Oddity::OtherCard, "other card"},
                                                    {Oddity::SecondCode, "second code"}}};
constexpr Words<DraftEnd, 4> kEnds = {{{DraftEnd::Over, "over"},
                                       {DraftEnd::Halted, "halted"},
                                       {DraftEnd::Failed, "failed"},
                                       {DraftEnd::GivenUp, "given up"}}};
constexpr Words<bool, 2> kFormats = {{{true, "Rochester"}, {false, "Booster"}}};
constexpr Words<bool, 2> kSeatings = {{{true, "chance"}, {false, "hand"}}};
constexpr Words<bool, 2> kWays = {{{true, "lists"}, {false, "pools"}}};

template <class Value, std::size_t count>
std::string_view wordOf(const Words<Value, count>& words, Value value) {
    return std::find_if(words.begin(), words.end(),
                        [&](const auto& each) { return each.first == value; })
        ->second;
}

// A line of a file.
class Line {
public:
    explicit Line(std::string_view what) : text_("{") { word("what", what); }

    Line& number(std::string_view key, std::int64_t value) {
        begin(key);
        text_ += std::to_string(value);
        return *this;
    }
    Line& word(std::string_view key, std::string_view bytes) {
        begin(key);
        add(bytes);
        return *this;
    }
    Line& words(std::string_view key, const std::vector<std::string>& all) {
        begin(key);
        text_ += '[';
        for (const std::string& each : all) {
            text_ += text_.back() == '[' ? "" : ",";
            add(each);
        }
        text_ += ']';
        return *this;
    }
    Line& players(const std::vector<RecordPlayer>& all) {
        begin("players");
        text_ += '[';
        for (const RecordPlayer& each : all) {
            text_ += text_.back() == '[' ? "{\"name\":" : ",{\"name\":";
            add(each.name);
            text_ += ",\"seat\":" + std::to_string(each.seat + 1) + '}';
        }
        text_ += ']';
        return *this;
    }
    std::string done() const { return text_ + "}\n"; }

private:
    void begin(std::string_view key) {
        text_ += text_.size() > 1 ? "," : "";
        text_.append("\"").append(key).append("\":");
    }
    void add(std::string_view bytes) {
        static constexpr std::string_view kDigits = "0123456789abcdef";
        text_ += '"';
        for (const char c : toUtf8(bytes)) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x20) {
                text_.append("\\u00").append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
                continue;
            }
            text_ += c == '"' || c == '\\' ? "\\" : "";
            text_ += c;
        }
        text_ += '"';
    }

    std::string text_;
};

// Writes an event.
struct Writer {
    const DraftRecord& record;

    std::string operator()(const PackDealt& event) const {
        Line line("pack");
        line.number("round", event.packIndex + 1);
        if (!record.isRochester) {
            line.number("place", event.position + 1);
        }
        return line.word("dealt", wordOf(kWays, event.alongLists))
            .words("cards", event.pack.cards())
            .done();
    }
    std::string operator()(const CardTaken& event) const {
        return placed("pick", event.position)
            .word("card", event.card)
            .word("by", wordOf(kMakers, event.by))
            .done();
    }
    std::string operator()(const PlayerLost& event) const {
        return placed("loss", event.position).done();
    }
    std::string operator()(const OddityNoted& event) const {
        return placed("odd", event.position).word("how", wordOf(kOddityWords, event.what)).done();
    }
    std::string operator()(const CodeReported& event) const {
        return placed("code", event.position).number("code", event.code).done();
    }
    std::string operator()(const DraftEnded& event) const {
        return Line("end").word("how", wordOf(kEnds, event.how)).word("time", event.time).done();
    }

    static Line placed(std::string_view what, int position) {
        Line line(what);
        line.number("place", position + 1);
        return line;
    }
};

// What is wrong with a line, in words.
using Fault = std::string;

Fault missing(QLatin1StringView key) {
    return "its \"" + std::string(key.data(), static_cast<std::size_t>(key.size())) +
           "\" is missing or makes no sense";
}

// The reading of one line; the first thing that is not as it should be is kept.
class Fields {
public:
    explicit Fields(QJsonObject object) : object_(std::move(object)) {}

    const Fault& fault() const { return fault_; }

    std::int64_t number(QLatin1StringView key, std::int64_t least, std::int64_t most) {
        const double value = object_.value(key).toDouble(std::nan(""));
        if (!(value >= static_cast<double>(least) && value <= static_cast<double>(most)) ||
            value != std::floor(value)) {
            blame(key);
            return least;
        }
        return static_cast<std::int64_t>(value);
    }
    std::string word(QLatin1StringView key) { return bytes(object_.value(key), key); }
    template <class Value, std::size_t count>
    Value oneOf(const Words<Value, count>& words, QLatin1StringView key) {
        const std::string text = word(key);
        const auto* const found = std::find_if(
            words.begin(), words.end(), [&](const auto& each) { return each.second == text; });
        if (found == words.end()) {
            blame(key);
            return words.front().first;
        }
        return found->first;
    }
    std::vector<std::string> words(QLatin1StringView key, std::size_t least, std::size_t most) {
        std::vector<std::string> all;
        for (const auto& each : array(key, least, most)) {
            all.push_back(bytes(each, key));
        }
        return all;
    }
    std::vector<RecordPlayer> players() {
        const QLatin1StringView key("players");
        std::vector<RecordPlayer> all;
        for (const auto& each : array(key, 1, kSeats)) {
            Fields fields(each.toObject());
            all.push_back(
                {fields.word(QLatin1StringView("name")),
                 static_cast<int>(fields.number(QLatin1StringView("seat"), 1, kSeats)) - 1});
            if (!fields.fault().empty() || all.back().name.empty()) {
                blame(key);
            }
        }
        return all;
    }
    bool has(QLatin1StringView key) const { return object_.contains(key); }
    void blame(QLatin1StringView key) { fault_ = fault_.empty() ? missing(key) : fault_; }

private:
    std::string bytes(const QJsonValue& value, QLatin1StringView key) {
        if (!value.isString()) {
            blame(key);
            return {};
        }
        return fromUtf8(value.toString().toStdString()).value_or("?");
    }
    QJsonArray array(QLatin1StringView key, std::size_t least, std::size_t most) {
        QJsonArray all = object_.value(key).toArray();
        const auto size = static_cast<std::size_t>(all.size());
        if (size < least || size > most) {
            blame(key);
            return {};
        }
        return all;
    }

    QJsonObject object_;
    Fault fault_;
};

class Reader {
public:
    DraftRecord record;
    bool hasHead = false;
    bool isWhole = false;  // its last line has been read

    // What is wrong with a line; empty when nothing is.
    Fault take(std::string_view text, int number) {
        if (isWhole) {
            return "stands behind the last line";
        }
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(
            QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())), &error);
        if (!document.isObject()) {
            return "no JSON object";
        }
        Fields fields(document.object());
        const std::string what = fields.word("what"_L1);
        if (!hasHead) {
            return what == "draft" ? takeHead(fields) : Fault("no beginning of a draft's record");
        }
        if (what == "last") {
            isWhole = fields.number("lines"_L1, number, number) == number;
            return fields.fault();
        }
        if (record.events.size() == static_cast<std::size_t>(kMostRecordEvents)) {
            return "more than a draft has";
        }
        if (what == "pack") {
            record.events.emplace_back(packOf(fields));
        } else if (what == "pick") {
            record.events.emplace_back(CardTaken{positionOf(fields), fields.word("card"_L1),
                                                 fields.oneOf(kMakers, "by"_L1)});
        } else if (what == "loss") {
            record.events.emplace_back(PlayerLost{positionOf(fields)});
        } else if (what == "odd") {
            record.events.emplace_back(
                OddityNoted{positionOf(fields), fields.oneOf(kOddityWords, "how"_L1)});
        } else if (what == "code") {
            record.events.emplace_back(CodeReported{
                positionOf(fields), static_cast<std::int32_t>(fields.number(
                                        "code"_L1, std::numeric_limits<std::int32_t>::min(),
                                        std::numeric_limits<std::int32_t>::max()))});
        } else if (what == "end") {
            record.events.emplace_back(
                DraftEnded{fields.oneOf(kEnds, "how"_L1), fields.word("time"_L1)});
        } else {
            fields.blame("what"_L1);
        }
        return fields.fault();
    }

private:
    Fault takeHead(Fields& fields) {
        if (fields.number("form"_L1, 1, std::numeric_limits<int>::max()) != kForm) {
            return "a record of a form that this program does not know";
        }
        record.version = fields.word("version"_L1);
        record.time = fields.word("time"_L1);
        record.isRochester = fields.oneOf(kFormats, "format"_L1);
        record.isTimed = fields.has("seconds"_L1);
        record.pickSeconds =
            record.isTimed ? static_cast<int>(fields.number("seconds"_L1, 1, 30)) : 0;
        record.isSeatedByChance = fields.oneOf(kSeatings, "seating"_L1);
        record.sets = fields.words("sets"_L1, kFewestSets, kMostPacks);
        record.players = fields.players();
        hasHead = true;
        return fields.fault();
    }
    int positionOf(Fields& fields) const {
        return static_cast<int>(
                   fields.number("place"_L1, 1, static_cast<std::int64_t>(record.players.size()))) -
               1;
    }
    PackDealt packOf(Fields& fields) const {
        PackDealt dealt;
        dealt.packIndex = static_cast<int>(fields.number(
                              "round"_L1, 1, static_cast<std::int64_t>(record.sets.size()))) -
                          1;
        dealt.position = record.isRochester ? 0 : positionOf(fields);
        dealt.alongLists = fields.oneOf(kWays, "dealt"_L1);
        const std::vector<std::string> cards = fields.words("cards"_L1, 1, kMostCardsInPack);
        std::string text;
        for (const std::string& card : cards) {
            text.append(card).append(1, kFieldEnd);
        }
        dealt.pack = Pack::read(text).value_or(Pack());
        if (dealt.pack.cards() != cards) {
            fields.blame("cards"_L1);
        }
        return dealt;
    }
};

}  // namespace

std::string wordsFor(Oddity what, std::string_view name) {
    const std::string who(name);
    switch (what) {
        case Oddity::OutOfTurn:
            return who + " has sent a pick out of turn.";
        case Oddity::UnsoundPick:
            return who + " has sent back something else than the pack less one card.";
        case Oddity::OtherCard:
            return who + " has told another card than was taken.";
        case Oddity::SecondCode:
            return who + " has reported a second code.";
    }
    return {};
}

std::string writeRecord(const DraftRecord& record) {
    Line head("draft");
    head.number("form", kForm)
        .word("version", record.version)
        .word("time", record.time)
        .word("format", wordOf(kFormats, record.isRochester));
    if (record.isTimed) {
        head.number("seconds", record.pickSeconds);
    }
    head.word("seating", wordOf(kSeatings, record.isSeatedByChance))
        .words("sets", record.sets)
        .players(record.players);
    std::string text = head.done();
    const Writer writer{record};
    for (const RecordEvent& event : record.events) {
        text += std::visit(writer, event);
    }
    const auto lines = static_cast<std::int64_t>(record.events.size()) + 2;
    return text + Line("last").number("lines", lines).done();
}

std::optional<DraftRecord> readRecord(std::string_view utf8, RecordFault& fault) {
    if (utf8.size() > kMostRecordBytes) {
        fault = {0, "too long for the record of a draft"};
        return std::nullopt;
    }
    Reader reader;
    int number = 0;
    while (!utf8.empty()) {
        const std::size_t end = utf8.find('\n');
        const std::string_view line = utf8.substr(0, end);
        utf8.remove_prefix(end == std::string_view::npos ? utf8.size() : end + 1);
        if (std::string what = reader.take(line, ++number); !what.empty()) {
            fault = {number, std::move(what)};
            return std::nullopt;
        }
    }
    if (!reader.isWhole) {
        fault = {number, number == 0 ? "empty" : "it breaks off behind this line"};
        return std::nullopt;
    }
    return std::move(reader.record);
}

}  // namespace packwise
