// What is typed to a host.
#include "host/host.h"

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList& helpLines() {
    static const QStringList lines = {
        u"list         who is there, and who is waited for"_s,
        u"start        begins the draft with those who are seated"_s,
        u"kick NAME    lets a player go; in a draft the seat then picks at random"_s,
        u"ping NAME    how long a player's answer takes"_s,
        u"say TEXT     a line into the players' chat"_s,
        u"quit         tells the players to close, and ends"_s,
        u"NAME can be #3 for the third seat. With several tables begin with a table's number, as"_s,
        u"in \"2 kick Ada\"; without one list, say and quit mean all tables."_s,
    };
    return lines;
}

}  // namespace

Host::Typed Host::read(const QString& line) {
    Typed typed;
    QString rest = line.trimmed();
    const auto takeWord = [&rest] {
        QString word = rest.section(u' ', 0, 0);
        rest = rest.mid(word.size()).trimmed();
        return word;
    };
    QString word = takeWord();
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    for (std::size_t i = 0; i < tables_.size(); ++i) {
        if (!isNumber || number == static_cast<int>(i) + 1) {
            typed.tables.push_back(tables_[i].get());
        }
    }
    typed.verb = (isNumber ? takeWord() : word).toLower();
    typed.rest = rest;
    return typed;
}

void Host::onLine(const QString& line) {
    const Typed typed = read(line);
    const QString unsure = std::exchange(sureOf_, {});
    if (typed.verb.isEmpty() && typed.tables.size() == tables_.size()) {
        return;
    }
    if (typed.tables.empty()) {
        say_(u"There is no such table; they are 1 to %1."_s.arg(tables_.size()));
    } else if (typed.verb == u"help") {
        for (const QString& each : helpLines()) {
            say_(each);
        }
    } else if (typed.verb == u"list") {
        list(typed);
    } else if (typed.verb == u"start" && typed.rest.isEmpty()) {
        start(typed);
    } else if (typed.verb == u"kick" || typed.verb == u"ping") {
        onPlayer(typed);
    } else if (typed.verb == u"say" && !typed.rest.isEmpty()) {
        sayToAll(typed);
    } else if (typed.verb == u"quit" && typed.rest.isEmpty()) {
        const bool costsADraft =
            std::any_of(typed.tables.begin(), typed.tables.end(),
                        [](const HostTable* table) { return table->isDrafting(); });
        if (costsADraft && unsure != line) {
            sureOf_ = line;
            say_(u"A draft is under way. Type it once more to end it."_s);
            return;
        }
        quitTables(typed);
    } else {
        say_(u"\"%1\" is no command. Type help."_s.arg(line.trimmed()));
    }
}

int Host::numberOf(const HostTable* table) const {
    const auto at = std::find_if(tables_.begin(), tables_.end(),
                                 [&](const auto& each) { return each.get() == table; });
    return static_cast<int>(at - tables_.begin()) + 1;
}

void Host::list(const Typed& typed) const {
    for (const HostTable* table : typed.tables) {
        QStringList lines = table->list();
        if (tables_.size() > 1) {
            lines.front().prepend(u"table %1, "_s.arg(numberOf(table)));
        }
        for (const QString& line : lines) {
            say_(line);
        }
    }
}

void Host::start(const Typed& typed) const {
    if (typed.tables.size() > 1) {
        say_(u"Which table? Type for instance \"1 start\"."_s);
        return;
    }
    const QString fault = typed.tables.front()->start();
    if (!fault.isEmpty()) {
        say_(fault);
    }
}

void Host::onPlayer(const Typed& typed) const {
    std::vector<HostTable*> meant;
    std::copy_if(typed.tables.begin(), typed.tables.end(), std::back_inserter(meant),
                 [&](const HostTable* table) { return table->socketOf(typed.rest) > 0; });
    if (meant.size() != 1) {
        say_(meant.empty()
                 ? u"Nobody is called \"%1\". Type list."_s.arg(typed.rest)
                 : u"Several tables have one of that name. Type for instance \"%1 %2 %3\"."_s
                       .arg(numberOf(meant.front()))
                       .arg(typed.verb, typed.rest));
        return;
    }
    HostTable& table = *meant.front();
    const int num = table.socketOf(typed.rest);
    if (typed.verb == u"kick") {
        table.kick(num);
    } else if (!table.ping(num)) {
        say_(u"Another answer is awaited."_s);
    }
}

void Host::sayToAll(const Typed& typed) const {
    for (HostTable* table : typed.tables) {
        table->say(typed.rest);
    }
}

void Host::quitTables(const Typed& typed) {
    for (HostTable* table : typed.tables) {
        table->quit();
    }
}

}  // namespace packwise
