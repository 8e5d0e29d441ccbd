#include "draft/telling.h"

#include "platform/codepage.h"

#include <QStringList>

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Notes what the head of a record's account needs of its events.
struct Summary {
    explicit Summary(const DraftRecord& whole) : record(whole), players(whole.players.size()) {
        for (const RecordEvent& event : record.events) {
            std::visit([this](const auto& each) { add(each); }, event);
        }
    }

    struct Player {
        int picks = 0;
        QStringList remarks;
    };
    const DraftRecord& record;
    std::vector<Player> players;  // by table position
    QString end = u"it breaks off"_s;

    Player& at(int position) { return players.at(static_cast<std::size_t>(position)); }
    void add(const PackDealt& /*event*/) {}
    void add(const CardTaken& event) { ++at(event.position).picks; }
    void add(const PlayerLost& event) {
        const Player& player = at(event.position);
        at(event.position).remarks.append(u"lost after %1 picks"_s.arg(player.picks));
    }
    void add(const OddityNoted& /*event*/) {}
    void add(const CodeReported& event) {
        at(event.position).remarks.append(u"code %1"_s.arg(event.code));
    }
    void add(const DraftEnded& event) {
        static const std::map<DraftEnd, QString> words = {
            {DraftEnd::Over, u"over"_s},
            {DraftEnd::Halted, u"ended by a loss"_s},
            {DraftEnd::Failed, u"ended by card data that could not be read"_s},
            {DraftEnd::GivenUp, u"given up"_s},
        };
        end = words.at(event.how) + u" at "_s + screenText(event.time);
    }
};

QString nameAt(const DraftRecord& record, int position) {
    return screenText(record.players.at(static_cast<std::size_t>(position)).name);
}

QString cardText(std::string_view token) {
    return screenText(nameOfToken(token));
}

QString makerText(PickMaker by) {
    switch (by) {
        case PickMaker::Player:
            return {};
        case PickMaker::Clock:
            return u" (by the clock)"_s;
        case PickMaker::Chance:
            return u" (by chance)"_s;
    }
    return {};
}

}  // namespace

void tellDraft(const DraftRecord& record, QTextStream& out) {
    const Summary summary(record);
    out << (record.isRochester ? u"Rochester"_s : u"Booster"_s) << u" draft of "_s
        << screenText(record.time) << u", "_s << summary.end << u'\n';
    if (record.isTimed) {
        out << record.pickSeconds << u" seconds for a pick\n"_s;
    }
    QStringList sets;
    for (const std::string& set : record.sets) {
        sets.append(screenText(set));
    }
    out << u"Sets: "_s << sets.join(u" - "_s) << u'\n';
    out << u"Round the table, seated by "_s
        << (record.isSeatedByChance ? u"chance:\n"_s : u"hand:\n"_s);
    for (std::size_t i = 0; i < record.players.size(); ++i) {
        const RecordPlayer& player = record.players[i];
        out << u"  %1  %2, seat %3: %4 picks"_s.arg(i + 1)
                   .arg(screenText(player.name))
                   .arg(player.seat + 1)
                   .arg(summary.players[i].picks);
        for (const QString& remark : summary.players[i].remarks) {
            out << u"; "_s << remark;
        }
        out << u'\n';
    }
    for (const Finding& finding : replay(record, {}).findings) {
        out << wordsFor(finding) << u'\n';
    }
}

QString wordsFor(const Finding& finding) {
    return screenText(finding.place + (finding.place.empty() ? "" : ": ") + finding.what);
}

void tellPicks(const DraftRecord& record, int position, int pack, QTextStream& out) {
    replay(record, [&](const PlayedTurn& turn) {
        if (turn.position == position && (pack == 0 || pack == turn.pack)) {
            out << u"Pack %1 pick %2: "_s.arg(turn.pack).arg(turn.pick)
                << cardText(turn.cards.card(turn.row)) << makerText(turn.by) << u'\n';
        }
    });
}

bool tellPacks(const DraftRecord& record, int pack, QTextStream& out) {
    const int players = static_cast<int>(record.players.size());
    std::multimap<std::pair<int, std::string>, QString> takers;  // by who opened it, and card
    replay(record, [&](const PlayedTurn& turn) {
        if (turn.pack != pack) {
            return;
        }
        const int passed = (turn.pick - 1) % players;
        const int opened =
            turn.packIndex % 2 == 0 ? turn.position - passed + players : turn.position + passed;
        takers.insert(
            {{record.isRochester ? 0 : opened % players, std::string(turn.cards.card(turn.row))},
             u"%1, pick %2"_s.arg(nameAt(record, turn.position)).arg(turn.pick) +
                 makerText(turn.by)});
    });
    int number = 0;
    bool isThere = false;
    for (const RecordEvent& event : record.events) {
        const auto* const dealt = std::get_if<PackDealt>(&event);
        if (!dealt || (record.isRochester ? ++number : dealt->packIndex + 1) != pack) {
            continue;
        }
        isThere = true;
        out << (record.isRochester
                    ? u"Pack %1"_s.arg(pack)
                    : u"Round %1, the pack of %2"_s.arg(pack).arg(nameAt(record, dealt->position)))
            << (dealt->alongLists ? u", along the order file:\n"_s : u":\n"_s);
        for (const std::string& card : dealt->pack.cards()) {
            const auto taker = takers.find({dealt->position, card});
            out << u"  "_s << cardText(card);
            if (taker != takers.end()) {
                out << u"  <- "_s << taker->second;
                takers.erase(taker);
            }
            out << u'\n';
        }
    }
    return isThere;
}

}  // namespace packwise
