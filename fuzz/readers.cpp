#include "readers.h"

#include "engine/deckexport.h"
#include "engine/picktext.h"
#include "engine/utf8.h"
#include "record/check.h"
#include "sets/cardfile.h"
#include "sets/cube.h"
#include "sets/mtgset.h"
#include "sets/rules.h"
#include "sets/table.h"
#include "sets/textsource.h"
#include "wire.h"

#include <QBuffer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace packwise::sets {

namespace {

using namespace Qt::Literals::StringLiterals;

void need(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

bool isUsable(const std::vector<Fault>& faults) {
    return std::all_of(faults.begin(), faults.end(),
                       [](const Fault& fault) { return fault.warning; });
}

void checkFile(const std::array<int, 3>& counts, const std::vector<CardRecord>& cards) {
    SetSource source;
    source.counts = counts;
    source.cards = cards;
    const ReadCardFile read = parseCardFile(cardFileBytes(source));
    need(read.faults.empty(), "a written card file reads without fault");
    need(read.counts == counts && read.cards.size() == cards.size(), "and holds what was written");
}

void checkSource(const ReadSource& read) {
    if (isUsable(read.faults)) {
        const auto nowhere = [](std::size_t) { return std::string(); };
        need(cardFaults(read.source.cards, nowhere).empty(), "the cards keep the rules");
        need(packFaults(read.source.counts, read.source.cards).empty(), "a pack can be filled");
        need(read.source.weights.empty() || read.source.weights.size() == read.source.cards.size(),
             "every card has a weight");
        checkFile(read.source.counts, read.source.cards);
    }
}

QByteArray bytesOf(std::string_view bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

void readSetFile(std::string_view bytes) {
    QByteArray copy = bytesOf(bytes);
    QBuffer file(&copy);
    file.open(QIODevice::ReadOnly);
    std::vector<MtgSet> sets;
    CardDetails details;
    details.want({u"a"_s, u"b // c"_s});
    const MtgQuery query = {[](const std::string& code) { return !code.starts_with("x"); },
                            [](const MtgFace&) { return true; },
                            [&](MtgSet set) { sets.push_back(std::move(set)); },
                            {}};
    if (readMtgJson(file, query).empty()) {
        for (const MtgSet& set : sets) {
            checkSource(setFromMtgJson(set, "Any"));
            details.take(set);
        }
        checkSource(readCube("a\nb/c\n", u"Any"_s, &details));
    }
}

void readCardFileBytes(std::string_view bytes) {
    const ReadCardFile read = parseCardFile(bytes);
    const auto nowhere = [](std::size_t) { return std::string(); };
    if (read.faults.empty() && cardFaults(read.cards, nowhere).empty()) {
        checkFile(read.counts, read.cards);
    }
    packFaults(read.counts, read.cards);
}

void readOrderFileBytes(std::string_view bytes) {
    const ReadOrderFile read = parseOrderFile(bytes);
    if (read.faults.empty()) {
        const ReadOrderFile again = parseOrderFile(orderFileBytes(read.order));
        const auto isBlank = [](const std::vector<std::string>& list) { return list.empty(); };
        need(again.order.counts == read.order.counts ||
                 std::all_of(read.order.lists.begin(), read.order.lists.end(), isBlank),
             "a written order file reads as it was");
    }
}

void readPickText(std::string_view bytes) {
    PickTextFault fault;
    if (const std::optional<PickLog> log = readPicks(bytes, fault)) {
        const std::string text = writePicks(*log);
        const std::optional<PickLog> again = readPicks(text, fault);
        need(again && writePicks(*again) == text, "written picks read as they were");
    } else {
        need(!fault.what.empty(), "a fault is told");
    }
}

void readRecordBytes(std::string_view bytes) {
    RecordFault fault;
    const std::optional<DraftRecord> record = readRecord(bytes, fault);
    need(record || !fault.what.empty(), "a fault is told");
    if (record) {
        need(readRecord(writeRecord(*record), fault) == record, "a record reads as it was");
        DraftCheck check(*record);
        check.checkDeck("a.dec", "//NAME: a\r\n    1 a\r\n");
        check.checkPicks("a.picks.txt", writePicks(picksOf(*record, 0)));
    }
}

void readDeckBytes(std::string_view bytes) {
    int faultyLine = 0;
    if (const std::optional<DeckList> deck = readDeckFile(bytes, faultyLine)) {
        for (const std::string_view word : {"cod", "txt", "dek", "arena"}) {
            need(fromUtf8(exportDeck(deckFormatOf(word).value(), *deck)).has_value(),
                 "an exported deck is UTF-8");
        }
    }
}

constexpr FuzzedReader kReaders[] = {
    {"mtgjson", readSetFile},
    {"table", [](std::string_view bytes) { checkSource(readTable(bytesOf(bytes), u"Any"_s)); }},
    {"cube",
     [](std::string_view bytes) { checkSource(readCube(bytesOf(bytes), u"Any"_s, nullptr)); }},
    {"settext", [](std::string_view bytes) { checkSource(readTextSource(bytesOf(bytes))); }},
    {"cardfile", readCardFileBytes},
    {"orderfile", readOrderFileBytes},
    {"picktext", readPickText},
    {"deckfile", readDeckBytes},
    {"record", readRecordBytes},
    {"server", fuzzServer},
    {.name = "messages", .read = fuzzMessages, .longest = 256},
};

}  // namespace

std::span<const FuzzedReader> fuzzedReaders() {
    return kReaders;
}

}  // namespace packwise::sets
