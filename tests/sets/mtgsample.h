// A small set in the form of MTGJSON, all invented.
#pragma once

#include "sets/mtgset.h"
#include "sets/setstest.h"

#include <QBuffer>

namespace packwise::sets {

// A common blue card; `more` is further JSON, such as R"("rarity":"rare")", and wins.
inline std::string mtgCard(const std::string& name, const std::string& more = {}) {
    return R"({"name":")" + name + R"(","uuid":"id )" + name +
           R"(","layout":"normal","rarity":"common","colors":["U"],"number":"1",)"
           R"("type":"Creature — Fish","types":["Creature"],"supertypes":[])" +
           (more.empty() ? "" : "," + more) + "}";
}

inline std::string joined(const std::vector<std::string>& parts) {
    std::string all;
    for (const std::string& part : parts) {
        all += (all.empty() ? "" : ",") + part;
    }
    return all;
}

inline std::string mtgSet(const std::string& cards, const std::string& more = {}) {
    return R"({"name":"Reed Marsh",)" + (more.empty() ? "" : more + ",") + R"("cards":[)" + cards +
           R"(],"code":"RMS","tokens":[{"name":"Token","cards":[{}]}]})";
}

// Fifteen cards that fill the usual pack.
inline std::vector<std::string> usualCards() {
    std::vector<std::string> cards = {mtgCard("Pike King", R"("rarity":"mythic")")};
    for (char c = 'a'; c < 'a' + 14; ++c) {
        cards.push_back(mtgCard(std::string("Fish ") + c + c,
                                c < 'd' ? R"("rarity":"uncommon")" : R"("rarity":"common")"));
    }
    return cards;
}

struct ReadSets {
    std::vector<MtgSet> sets;
    std::vector<Fault> faults;
};

// Reads every set.
inline ReadSets readSets(const std::string& json) {
    QByteArray bytes = QByteArray::fromStdString(json);
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    ReadSets read;
    const MtgQuery query = {[](const std::string&) { return true; },
                            [](const MtgFace&) { return true; },
                            [&](MtgSet set) { read.sets.push_back(std::move(set)); },
                            {}};
    read.faults = readMtgJson(file, query);
    return read;
}

}  // namespace packwise::sets
