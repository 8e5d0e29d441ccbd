#include "sets/table.h"

#include "sets/mtgcard.h"
#include "sets/mtgset.h"
#include "sets/nearest.h"
#include "sets/rules.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Column : std::size_t { Name, Rarity, Color, Cost, Type, Text, Pt, Power, Toughness, Columns };

constexpr std::pair<const char16_t*, Column> kHeadings[] = {
    {u"name", Name},
    {u"card", Name},
    {u"card name", Name},
    {u"rarity", Rarity},
    {u"mark", Rarity},
    {u"colour", Color},
    {u"colours", Color},
    {u"color", Color},
    {u"colors", Color},
    {u"cost", Cost},
    {u"mana cost", Cost},
    {u"manacost", Cost},
    {u"type", Type},
    {u"type line", Type},
    {u"text", Text},
    {u"rules text", Text},
    {u"power and toughness", Pt},
    {u"power/toughness", Pt},
    {u"p/t", Pt},
    {u"pt", Pt},
    {u"power", Power},
    {u"toughness", Toughness},
};

constexpr std::pair<const char16_t*, const char*> kRarities[] = {
    {u"c", "-"},       {u"u", "="}, {u"r", "+"},           {u"m", "+"}, {u"s", "."},
    {u"l", "."},       {u"-", "-"}, {u"=", "="},           {u"+", "+"}, {u".", "."},
    {u"undealt", "."}, {u"b", "."}, {u"mythic rare", "+"},
};

constexpr std::pair<const char16_t*, const char*> kColorWords[] = {
    {u"white", "W"},
    {u"blue", "U"},
    {u"black", "B"},
    {u"red", "R"},
    {u"green", "G"},
    {u"artifact", "A"},
    {u"colourless", ""},
    {u"colorless", ""},
    {u"multicolour", "M"},
    {u"multicolor", "M"},
    {u"multicoloured", "M"},
    {u"multicolored", "M"},
    {u"gold", "M"},
    {u"land", "L"},
    {u"a", "A"},
    {u"m", "M"},
    {u"l", "L"},
    {u"c", ""},
    {u"", ""},
};

template <typename Table>
auto find(const Table& table, const QString& word) {
    return std::find_if(std::begin(table), std::end(table),
                        [&](const auto& row) { return word == QString::fromUtf16(row.first); });
}

struct Row {
    int line = 0;  // at which it begins
    QStringList fields;
};

// Parts the text into rows. False when a quote is never closed; then the last row begins with it.
bool partRows(const QString& text, QChar separator, std::vector<Row>& rows) {
    int line = 1;
    Row row{line, {}};
    QString field;
    bool quoted = false;
    const auto endRow = [&] {
        row.fields.append(std::exchange(field, QString()));
        if (row.fields.size() > 1 || !row.fields.front().trimmed().isEmpty()) {
            rows.push_back(row);
        }
        row = {line + 1, {}};
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'"' && quoted && text.mid(i + 1, 1) == u"\"") {
            field += c;
            ++i;
        } else if (c == u'"' && (quoted || field.trimmed().isEmpty())) {
            field = quoted ? field : QString();
            quoted = !quoted;
        } else if (c == separator && !quoted) {
            row.fields.append(std::exchange(field, QString()));
        } else if (c == u'\n' && !quoted) {
            endRow();
        } else {
            field += c;
        }
        line += c == u'\n' ? 1 : 0;
    }
    endRow();
    if (quoted && rows.empty()) {
        rows.push_back({1, {}});
    }
    return !quoted;
}

QChar separatorOf(const QString& text) {
    const QString header = text.left(text.indexOf(u'\n'));
    return header.contains(u'\t') ? u'\t' : header.contains(u',') ? u',' : u';';
}

class TableReader {
public:
    explicit TableReader(const QString& displayName) {
        read_.source.displayName = nearest_.bytes(displayName);
        read_.source.counts = kUsualPack;
        column_.fill(-1);
    }

    ReadSource read(const QByteArray& utf8) {
        if (const int line = lineOutsideUtf8(utf8); line > 0) {
            refuse("the text is not UTF-8; save it as UTF-8", line);
            return std::move(read_);
        }
        QString text = QString::fromUtf8(utf8);
        text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
        std::vector<Row> rows;
        if (!partRows(text, separatorOf(text), rows)) {
            refuse("a quote is opened and never closed", rows.back().line);
        } else if (rows.empty() || !readHeader(rows.front())) {
            refuse("the header line must name the columns; name, rarity and colour are needed",
                   rows.empty() ? 1 : rows.front().line);
        } else {
            std::for_each(rows.begin() + 1, rows.end(), [this](const Row& row) { card(row); });
            finish();
        }
        return std::move(read_);
    }

private:
    static std::string placeOf(int line) { return "line " + std::to_string(line); }
    void refuse(std::string what, int line) {
        read_.faults.push_back({std::move(what), line > 0 ? placeOf(line) : std::string()});
    }

    bool readHeader(const Row& row) {
        for (qsizetype i = 0; i < row.fields.size(); ++i) {
            const auto heading = find(kHeadings, row.fields[i].simplified().toLower());
            if (heading != std::end(kHeadings) && column_.at(heading->second) < 0) {
                column_.at(heading->second) = i;
            }
        }
        width_ = row.fields.size();
        return column_.at(Name) >= 0 && column_.at(Rarity) >= 0 && column_.at(Color) >= 0;
    }

    QString field(const Row& row, Column column) const {
        return column_.at(column) < 0 ? QString() : row.fields.value(column_.at(column)).trimmed();
    }

    std::string markOf(const QString& word) const {
        const auto letter = find(kRarities, word);
        return letter != std::end(kRarities) ? std::string(letter->second)
                                             : markOfRarity(word.toStdString());
    }

    // Nothing when the word names no colour.
    static std::optional<std::string> letterOf(const QString& word, bool isLand) {
        const auto known = find(kColorWords, word);
        if (known != std::end(kColorWords)) {
            return *known->second != '\0' ? std::string(known->second) : colorOf({}, isLand);
        }
        std::vector<std::string> letters;
        for (const QChar c : word) {
            if (u"wubrg"_s.contains(c)) {
                letters.emplace_back(1, c.toUpper().toLatin1());
            } else if (!u",/{} "_s.contains(c)) {
                return std::nullopt;
            }
        }
        return colorOf(letters, isLand);
    }

    void card(const Row& row) {
        if (row.fields.size() > width_) {
            refuse("more fields than the header has columns; quote a field that holds a separator",
                   row.line);
            return;
        }
        const QString type = field(row, Type);
        const std::string mark = markOf(field(row, Rarity).toLower());
        const auto letter =
            letterOf(field(row, Color).toLower(), type.contains(u"land"_s, Qt::CaseInsensitive));
        if (mark.empty()) {
            refuse("\"" + nearest_.bytes(field(row, Rarity)) +
                       "\" is no rarity such as common, uncommon, rare or mythic",
                   row.line);
        }
        if (!letter) {
            refuse("\"" + nearest_.bytes(field(row, Color)) +
                       "\" is no colour such as white, W, WU, artifact or land",
                   row.line);
        }
        const QString power = field(row, Power);
        const QString toughness = field(row, Toughness);
        const QString pt = power.isEmpty() && toughness.isEmpty()
                               ? field(row, Pt)
                               : QString(power + u'/' + toughness);
        read_.source.cards.push_back({.name = nearest_.bytes(field(row, Name)),
                                      .rarity = mark.empty() ? "." : mark,
                                      .color = letter.value_or("A"),
                                      .cost = nearest_.bytes(field(row, Cost)),
                                      .type = nearest_.bytes(type),
                                      .text = nearest_.bytes(field(row, Text)),
                                      .pt = nearest_.bytes(pt)});
        lines_.push_back(row.line);
    }

    void finish() {
        std::vector<Fault>& faults = read_.faults;
        const auto add = [&faults](std::vector<Fault> more) {
            std::move(more.begin(), more.end(), std::back_inserter(faults));
        };
        const bool clean = faults.empty();
        add(nearest_.warnings());
        add(mendDisplayName(read_.source.displayName));
        add(setFaults(read_.source, [this](std::size_t card) { return placeOf(lines_[card]); }));
        if (clean) {
            add(packFaults(read_.source.counts, read_.source.cards));
        }
    }

    ReadSource read_;
    Nearest nearest_;
    std::array<qsizetype, Columns> column_{};
    qsizetype width_ = 0;
    std::vector<int> lines_;  // by card
};

}  // namespace

ReadSource readTable(const QByteArray& utf8, const QString& displayName) {
    return TableReader(displayName).read(utf8);
}

}  // namespace packwise::sets
