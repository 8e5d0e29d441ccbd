#include "sets/cube.h"

#include "protocol/pack.h"
#include "sets/mtgcard.h"
#include "sets/nearest.h"
#include "sets/rules.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <utility>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// Spellings of one name have the same key.
QString keyOf(const QString& name) {
    static const QRegularExpression slashes(u"\\s*/+\\s*"_s);
    QString key = name.toLower();
    key.replace(u'\u2019', u'\'');
    return key.replace(slashes, u" // "_s).simplified();
}

QStringList keysOf(const MtgFace& face) {
    QStringList keys;
    for (const std::string* name : {&face.name, &face.asciiName, &face.faceName}) {
        if (!name->empty() && (name != &face.faceName || face.side <= "a")) {
            keys.append(keyOf(QString::fromStdString(*name)));
        }
    }
    return keys;
}

class CubeReader {
public:
    CubeReader(const QString& displayName, const CardDetails* details) : details_(details) {
        read_.source.displayName = nearest_.bytes(displayName);
        read_.source.counts.fill(kMostCardsInPack / static_cast<int>(kPools.size()));
    }

    ReadSource read(const std::vector<CubeLine>& lines) {
        for (const CubeLine& line : lines) {
            card(line);
        }
        if (!details_ && !lines.empty()) {
            warn("no colours and no texts are known; name files with card details with --cards",
                 {});
        }
        finish();
        return std::move(read_);
    }

private:
    static std::string placeOf(int line) { return "line " + std::to_string(line); }
    void warn(std::string what, std::string where) {
        read_.faults.push_back({std::move(what), std::move(where), true});
    }

    void card(const CubeLine& line) {
        CardRecord record = {.name = nearest_.bytes(line.name),
                             .rarity = {},
                             .color = "A",
                             .cost = {},
                             .type = {},
                             .text = {},
                             .pt = {}};
        if (details_) {
            std::vector<MtgFace> faces = details_->find(line.whole);
            if (faces.empty()) {
                faces = details_->find(line.name);
            }
            if (faces.empty()) {
                read_.faults.push_back({"the files given with --cards hold no card \"" +
                                            record.name + "\"; mend the name or add its set",
                                        placeOf(line.number)});
                return;
            }
            MtgCard card;
            for (const MtgFace& face : faces) {
                card.push_back(&face);
            }
            record = recordOf(card, nearest_);
        }
        const auto [first, isNew] = lineOf_.emplace(keyOf(fromNearest(record.name)), line.number);
        if (!isNew) {
            warn("\"" + record.name + "\" stands twice, first at " + placeOf(first->second) +
                     "; it is taken once",
                 placeOf(line.number));
            return;
        }
        record.rarity = poolMark(kPools.at(read_.source.cards.size() % kPools.size()));
        read_.source.cards.push_back(std::move(record));
        lines_.push_back(line.number);
    }

    static QString fromNearest(const std::string& bytes) {
        return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }

    void finish() {
        std::vector<Fault>& faults = read_.faults;
        const auto add = [&faults](std::vector<Fault> more) {
            std::move(more.begin(), more.end(), std::back_inserter(faults));
        };
        const std::vector<CardRecord>& cards = read_.source.cards;
        const std::size_t most = kMostCardsInPool * kPools.size();
        add(nearest_.warnings());
        add(mendDisplayName(read_.source.displayName));
        add(setFaults(read_.source, [this](std::size_t card) { return placeOf(lines_[card]); }));
        if (cards.size() < kMostCardsInPack) {
            faults.push_back({"a pack is " + std::to_string(kMostCardsInPack) +
                                  " different cards, and the list has " +
                                  std::to_string(cards.size()) + "; add cards",
                              {}});
        } else if (cards.size() > most) {
            faults.push_back({std::to_string(cards.size()) + " cards, and a cube has at most " +
                                  std::to_string(most) + "; take some out",
                              {}});
        }
    }

    const CardDetails* details_;
    ReadSource read_;
    Nearest nearest_;
    std::map<QString, int> lineOf_;  // by key
    std::vector<int> lines_;         // by card
};

}  // namespace

void CardDetails::want(const QStringList& names) {
    for (const QString& name : names) {
        wanted_.insert(keyOf(name));
    }
}

bool CardDetails::wants(const MtgFace& face) const {
    const QString full = keyOf(QString::fromStdString(face.name));
    const QStringList keys = keysOf(face) + full.split(u" // "_s);
    return std::any_of(keys.begin(), keys.end(),
                       [this](const QString& key) { return wanted_.contains(key); });
}

void CardDetails::take(const MtgSet& set) {
    for (const MtgCard& card : cardsOf(set.faces)) {
        std::vector<MtgFace> faces;
        for (const MtgFace* face : card) {
            faces.push_back(*face);
        }
        for (const QString& key : keysOf(faces.front())) {
            if (wanted_.contains(key)) {
                cards_.emplace(key, faces);
            }
        }
    }
}

std::vector<MtgFace> CardDetails::find(const QString& name) const {
    const auto found = cards_.find(keyOf(name));
    return found == cards_.end() ? std::vector<MtgFace>() : found->second;
}

std::vector<CubeLine> cubeLines(const QByteArray& utf8) {
    static const QRegularExpression counted(u"^\\d{1,3}\\s*[xX]?\\s+(\\S.*)$"_s);
    static const QRegularExpression tag(u"\\s#.*$"_s);
    std::vector<CubeLine> lines;
    int number = 0;
    for (QString line : QString::fromUtf8(utf8).split(u'\n')) {
        ++number;
        line = line.remove(tag).trimmed();
        const bool isSection = line.startsWith(u'[') && line.endsWith(u']');
        if (line.isEmpty() || line.startsWith(u'#') || line.startsWith(u"//") || isSection) {
            continue;
        }
        const QRegularExpressionMatch match = counted.match(line);
        lines.push_back({match.hasMatch() ? match.captured(1) : line, line, number});
    }
    return lines;
}

ReadSource readCube(const QByteArray& utf8, const QString& displayName,
                    const CardDetails* details) {
    if (const int line = lineOutsideUtf8(utf8); line > 0) {
        return {{}, {{"the text is not UTF-8; save it as UTF-8", "line " + std::to_string(line)}}};
    }
    return CubeReader(displayName, details).read(cubeLines(utf8));
}

}  // namespace packwise::sets
