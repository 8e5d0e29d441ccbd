// What a table tells its host, in words.
#include "engine/dealing.h"
#include "host/hosttable.h"
#include "platform/codepage.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostLinesASecond = 40;

// "3 s", "1:20 min"
QString span(int seconds) {
    return seconds < 60 ? u"%1 s"_s.arg(seconds)
                        : u"%1:%2 min"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'));
}

}  // namespace

void HostTable::reportCaused(const QString& line) {
    if (phase_ != Phase::Serving) {
        return;
    }
    if (++linesThisSecond_ > kMostLinesASecond) {
        ++linesLeftOut_;
        return;
    }
    report_(line);
}

QString HostTable::nameOf(int seat) const {
    const QString& name = names_.at(static_cast<std::size_t>(seat));
    return name.isEmpty() ? u"#%1"_s.arg(seat + 1) : name;
}

QString HostTable::waitedFor() const {
    QStringList names;
    for (const int seat : server_->awaited()) {
        names.append(nameOf(seat));
    }
    return names.join(u", "_s);
}

QString HostTable::where() const {
    const DraftTable& table = server_->table();
    const QString format = options_.isRochester ? u"Rochester"_s : u"Booster"_s;
    switch (server_->state()) {
        case DraftServer::State::Lobby:
            return secondsToStart_ > 0
                       ? u"starts in "_s + span(secondsToStart_)
                       : u"open, %1 of %2 players are seated"_s.arg(server_->namedSeats().size())
                             .arg(options_.players);
        case DraftServer::State::Drafting:
            return format + (options_.isRochester
                                 ? u", set %1, pack %2 of %3"_s.arg(server_->rochester().rochSet())
                                       .arg(table.roundNo)
                                       .arg(table.playerCount)
                                 : u", round %1 of %2"_s.arg(table.roundNo).arg(table.packCount));
        case DraftServer::State::Over:
            return u"the draft is over; the decks are built"_s;
        default:
            return u"the draft has ended"_s;
    }
}

QStringList HostTable::list() const {
    if (phase_ == Phase::Over || phase_ == Phase::Closed) {
        return {phase_ == Phase::Over ? u"closed"_s : u"port %1 cannot be had yet"_s.arg(port_)};
    }
    QStringList lines = {u"port %1: "_s.arg(port_) + where()};
    const std::vector<int> awaited = server_->awaited();
    for (int seat = 0; seat < kSeats; ++seat) {
        const int num = seat + 1;
        const bool isThere = links_.state(num) != LinkState::Free;
        if (!isThere && names_.at(static_cast<std::size_t>(seat)).isEmpty()) {
            continue;
        }
        QString line = u"  seat %1  "_s.arg(num);
        if (!isThere) {
            line += nameOf(seat) + u"  has gone"_s;
        } else {
            line += (server_->seat(seat).name.empty() ? u"(no name)"_s : nameOf(seat)) + u"  "_s +
                    fromBytes(links_.address(num));
        }
        if (std::find(awaited.begin(), awaited.end(), seat) != awaited.end()) {
            line += u"  waited for, "_s + span(secondsInStep_);
        }
        if (const auto& code = codes_.at(static_cast<std::size_t>(seat))) {
            line += u"  code "_s + QString::number(*code);
        }
        lines.append(line);
    }
    return lines;
}

int HostTable::socketOf(const QString& name) const {
    const int num = name.startsWith(u'#') ? name.mid(1).toInt() : 0;
    if (num >= 1 && num <= kSeats) {  // whatever others call themselves
        return links_.state(num) != LinkState::Free ? num : 0;
    }
    std::vector<int> exact;
    std::vector<int> alike;
    for (int seat = 0; seat < kSeats; ++seat) {
        // Nobody types the blanks round a name.
        const QString seated = nameOf(seat).trimmed();
        if (server_->seat(seat).name.empty() || name.isEmpty()) {
            continue;
        }
        if (seated == name) {
            exact.push_back(seat + 1);
        } else if (seated.compare(name, Qt::CaseInsensitive) == 0) {
            alike.push_back(seat + 1);
        }
    }
    const std::vector<int>& meant = exact.empty() ? alike : exact;
    return meant.size() == 1 ? meant.front() : 0;
}

void HostTable::reportStart() {
    QStringList seated;
    for (int position = 0; position < server_->table().playerCount; ++position) {
        seated.append(nameOf(server_->table().socketAt.at(static_cast<std::size_t>(position)) - 1));
    }
    report_(u"The draft starts: "_s + (options_.isRochester ? u"Rochester, "_s : u"Booster, "_s) +
            options_.sets.join(u" - "_s) + u". Round the table: "_s + seated.join(u", "_s) + u'.');
}

void HostTable::reportCodes() {
    if (server_->state() != DraftServer::State::Over) {
        return;
    }
    QStringList told;
    for (const int seat : server_->players()) {
        const auto& code = codes_.at(static_cast<std::size_t>(seat));
        told.append(nameOf(seat) + u' ' + (code ? QString::number(*code) : u"none"_s));
    }
    report_(u"The codes of the decks: "_s + told.join(u", "_s) + u'.');
}

std::string HostTable::setName(int packIndex) const {
    return toBytes(options_.sets.value(packIndex));
}

void HostTable::showSeat(int seat, const std::string& name) {
    QString& known = names_.at(static_cast<std::size_t>(seat));
    const QString seatText = u", seat %1"_s.arg(seat + 1);
    if (!name.empty()) {
        const QString before = std::exchange(known, screenText(name));
        startIsRefused_ = false;
        reportCaused(before.isEmpty()
                         ? QString(known + u" has come from "_s +
                                   fromBytes(links_.address(seat + 1)) + seatText + u'.')
                         : QString(before + seatText + u", is called "_s + known + u" now."_s));
        return;
    }
    if (pinged_ == seat + 1) {
        pinged_ = 0;
    }
    if (known.isEmpty()) {
        return;
    }
    if (secondsToStart_ > 0) {
        whoLeftTheCount_ = known;
    }
    const std::vector<int>& players = server_->players();
    const bool isLost = isDrafting() && !options_.haltsOnDrop &&
                        std::find(players.begin(), players.end(), seat) != players.end();
    const QString what =
        isLost ? u"%1 is lost%2; cards are picked at random there."_s : u"%1 has left%2."_s;
    reportCaused(what.arg(known, seatText));
    if (server_->state() == DraftServer::State::Lobby) {
        known.clear();
    }
}

void HostTable::showCode(int seat, std::int32_t code) {
    if (server_->state() == DraftServer::State::Over &&
        std::exchange(codes_.at(static_cast<std::size_t>(seat)), code) != code) {
        reportCaused(nameOf(seat) + u" has a deck of the code "_s + QString::number(code) + u'.');
    }
}

void HostTable::showPong(int /*seconds*/) {
    if (pinged_ > 0) {
        report_(nameOf(std::exchange(pinged_, 0) - 1) +
                u" answers in %1 ms."_s.arg(sincePing_.elapsed()));
    }
}

void HostTable::wantTicks() {
    // A start while it runs would begin its interval anew.
    if (!ticks_->isActive() && phase_ == Phase::Serving) {
        ticks_->start();
    }
}

void HostTable::wantTurn() {
    if (!turns_->isActive()) {
        turns_->start();
    }
}

std::vector<Pack> HostTable::dealPacks(int packIndex, int count) {
    report_((options_.isRochester ? u"Set %1, pack %2 of %3: "_s.arg(packIndex + 1)
                                        .arg(server_->table().roundNo)
                                        .arg(server_->table().playerCount)
                                  : u"Round %1 of %2: "_s.arg(packIndex + 1).arg(packCount())) +
            options_.sets.value(packIndex) + u'.');
    const DealtRound round =
        dealRound(options_.cardFolder(), setName(packIndex), dealsAlongLists_, count, draw_);
    if (!round.packs.empty()) {
        dealsAlongLists_ = round.alongLists;
        record_->recorder().setAlongLists(round.alongLists);
    }
    return round.packs;
}

void HostTable::cardDataFailed() {
    hasFailed_ = true;
    report_(u"The draft cannot go on. "_s + faultOfSets(options_));
}

}  // namespace packwise
