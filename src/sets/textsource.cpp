#include "sets/textsource.h"

#include "platform/codepage.h"
#include "sets/rules.h"

#include <QRegularExpression>
#include <QString>
#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::pair<const char16_t*, const char*> kSectionMarks[] = {
    {u"common", "-"}, {u"uncommon", "="}, {u"rare", "+"}, {u"undealt", "."}};

constexpr std::pair<const char16_t*, const char*> kSectionColors[] = {
    {u"black", "B"}, {u"blue", "U"},     {u"green", "G"},       {u"red", "R"},
    {u"white", "W"}, {u"artifact", "A"}, {u"multicolour", "M"}, {u"land", "L"}};

// The letter of a word in one of the tables above; empty when it is not there.
template <typename Table>
std::string letterOf(const Table& table, const QString& word) {
    const auto* const found =
        std::find_if(std::begin(table), std::end(table),
                     [&](const auto& row) { return word == QString::fromUtf16(row.first); });
    return found == std::end(table) ? std::string() : std::string(found->second);
}

class TextReader {
public:
    void line(const QString& text) {
        ++number_;
        if (text.trimmed().isEmpty() || text.startsWith(u'#')) {
            return;
        }
        if (!fitsCodePage(text)) {
            refuseCharacter(text);
        } else if (text.startsWith(u"set ")) {
            setName(text.mid(4).trimmed());
        } else if (text.startsWith(u"pack ")) {
            pack(text.mid(5).trimmed());
        } else if (text.startsWith(u"==")) {
            section(text.mid(2).simplified());
        } else if (text.front().isSpace()) {
            rulesText(text.trimmed());
        } else {
            card(text);
        }
    }

    ReadSource finish() {
        if (!hasName_) {
            refuseAtEnd("the line \"set NAME\" is missing");
        }
        if (!hasPack_) {
            refuseAtEnd("the line \"pack 1 rare, 3 uncommon, 11 common\" is missing");
        }
        const auto placeOf = [this](std::size_t index) {
            return "line " + std::to_string(cardLines_[index]);
        };
        append(cardFaults(read_.source.cards, placeOf));
        append(shadowWarning(read_.source.cards, placeOf));
        if (read_.faults.empty() || std::all_of(read_.faults.begin(), read_.faults.end(),
                                                [](const Fault& f) { return f.warning; })) {
            append(displayNameFaults(read_.source.displayName));
            append(packFaults(read_.source.counts, read_.source.cards));
        }
        return std::move(read_);
    }

private:
    void refuse(std::string what) {
        read_.faults.push_back({std::move(what), "line " + std::to_string(number_)});
    }
    void refuseAtEnd(std::string what) { read_.faults.push_back({std::move(what), {}}); }
    void append(std::vector<Fault> faults) {
        std::move(faults.begin(), faults.end(), std::back_inserter(read_.faults));
    }

    void refuseCharacter(const QString& text) {
        for (qsizetype i = 0; i < text.size(); ++i) {
            const qsizetype units = text.at(i).isHighSurrogate() ? 2 : 1;
            if (!fitsCodePage(text.mid(i, units))) {
                const char32_t code = text.mid(i, units).toUcs4().constFirst();
                refuse("the character U+" +
                       QString::number(code, 16).toUpper().rightJustified(4, u'0').toStdString() +
                       " at column " + std::to_string(i + 1) + " is not in Windows-1252");
                return;
            }
        }
        refuse("a character is not in Windows-1252");
    }

    void setName(const QString& name) {
        if (std::exchange(hasName_, true)) {
            refuse("the set has a name already");
        }
        read_.source.displayName = toBytes(name);
    }

    void pack(const QString& counts) {
        if (std::exchange(hasPack_, true)) {
            refuse("the pack is told already");
        }
        for (const QString& part : counts.split(u',')) {
            const QStringList words = part.simplified().split(u' ');
            bool isNumber = false;
            const int count = words.front().toInt(&isNumber);
            const auto pool = std::find_if(kPools.begin(), kPools.end(), [&](Pool candidate) {
                return words.size() == 2 && words.back() == fromBytes(poolName(candidate));
            });
            if (!isNumber || count < 0 || pool == kPools.end()) {
                refuse("\"" + toBytes(part.trimmed()) +
                       "\" is no count such as \"11 common\", \"3 uncommon\" or \"1 rare\"");
                return;
            }
            read_.source.counts.at(static_cast<std::size_t>(*pool)) = count;
        }
    }

    void section(const QString& title) {
        const QStringList words = title.split(u' ');
        mark_ = letterOf(kSectionMarks, words.front());
        color_ = words.size() == 2 ? letterOf(kSectionColors, words.back()) : std::string();
        inCard_ = false;
        if (mark_.empty() || color_.empty()) {
            refuse("\"" + toBytes(title) + "\" is no heading such as \"== common blue\"");
        }
    }

    void card(const QString& text) {
        QStringList fields = text.split(u"::"_s);
        for (QString& field : fields) {
            field = field.trimmed();
        }
        inCard_ = true;
        if (mark_.empty() || color_.empty()) {
            refuse("a card stands before the first sound heading");
            return;
        }
        if (fields.size() < 3 || fields.size() > 4) {
            refuse("a card is \"name :: cost :: type\" or \"name :: cost :: type :: p/t\"");
            return;
        }
        read_.source.cards.push_back({.name = toBytes(fields[0]),
                                      .rarity = mark_,
                                      .color = color_,
                                      .cost = toBytes(fields[1]),
                                      .type = toBytes(fields[2]),
                                      .text = {},
                                      .pt = toBytes(fields.value(3))});
        cardLines_.push_back(number_);
    }

    void rulesText(const QString& text) {
        if (!inCard_) {
            refuse("an indented line of rules text stands under no card");
        } else if (!read_.source.cards.empty()) {
            std::string& rules = read_.source.cards.back().text;
            rules += (rules.empty() ? "" : "\n") + toBytes(text);
        }
    }

    ReadSource read_;
    std::vector<int> cardLines_;
    int number_ = 0;
    bool hasName_ = false;
    bool hasPack_ = false;
    bool inCard_ = false;
    std::string mark_;
    std::string color_;
};

}  // namespace

ReadSource readTextSource(const QByteArray& utf8) {
    TextReader reader;
    int number = 0;
    for (QByteArray line : utf8.split('\n')) {
        ++number;
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString text = decoder(line);
        if (decoder.hasError()) {
            return {{}, {{"the text is not UTF-8", "line " + std::to_string(number)}}};
        }
        reader.line(text);
    }
    return reader.finish();
}

}  // namespace packwise::sets
