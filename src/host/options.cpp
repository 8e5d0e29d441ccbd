#include "host/options.h"

#include "platform/codepage.h"
#include "platform/setfiles.h"
#include "platform/userfolders.h"
#include "platform/version.h"
#include "protocol/messages.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QHostAddress>
#include <QSettings>

#include <optional>
#include <set>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFewestPacks = 3;
constexpr int kMostPickSeconds = to_client::Info::kMostSeconds;
constexpr int kMostTables = 1000;
constexpr int kMostLingerMinutes = 7 * 24 * 60;

CommandLine<HostOptions> wrong(const QString& text) {
    return {std::nullopt, text + u" See --help."_s, true};
}

QList<QCommandLineOption> allOptions() {
    const HostOptions usual;
    const auto usually = [](const QString& what, int number) -> QString {
        return what + u" ("_s + QString::number(number) + u")."_s;
    };
    return {
        {u"sets"_s, u"The sets of the packs, 3 to 6 names, one after the other."_s, u"SET..."_s},
        {u"rochester"_s, u"A Rochester draft, not a Booster."_s},
        {u"timed"_s, u"Rochester: so many seconds for a pick, 1 to 30 (no clock)."_s, u"SECONDS"_s},
        {u"real"_s, u"Deal along the order files of the sets that have one."_s},
        {u"halt-on-drop"_s, u"A player who is lost ends the draft."_s},
        {u"silent"_s, u"Nobody can chat."_s},
        {u"cards"_s,
         u"Where the card files are (the current folder if it has any, else your card folder)."_s,
         u"FOLDER"_s},
        {u"players"_s,
         usually(u"The draft starts by itself when N are seated, 1 to 8"_s, usual.players), u"N"_s,
         QString::number(usual.players)},
        {u"again"_s, u"Open the table anew when its draft is over and its players have left."_s},
        {u"linger"_s,
         usually(u"How long a table stays for the decks once its draft is over"_s,
                 usual.lingerMinutes),
         u"MINUTES"_s, QString::number(usual.lingerMinutes)},
        {u"port"_s, usually(u"The first table's port; each other table has the next"_s, usual.port),
         u"PORT"_s, QString::number(usual.port)},
        {u"tables"_s, usually(u"Tables that draft apart from each other"_s, usual.tables), u"N"_s,
         QString::number(usual.tables)},
        {u"records"_s,
         u"Where the record of each draft goes once it is over (%1)."_s.arg(userRecordFolder()),
         u"FOLDER"_s, userRecordFolder()},
        {u"no-records"_s, u"Keep no records."_s},
        {u"open-router"_s, u"Ask the router to let friends in from the Internet."_s},
        {u"address"_s, u"Listen on this address of the machine alone."_s, u"ADDRESS"_s},
    };
}

void addOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        u"Hosts live drafts without a window.\n\n"
        "Deals, seats and relays as the window of packwise does. It starts a draft by itself,\n"
        "ten seconds after enough players are seated, tells what happens in lines with the time,\n"
        "and takes commands while it runs: type help. Ctrl+C tells the players and ends it.\n\n"
        "  packwise-host --sets \"Ice Age\" \"Ice Age\" Alliances --cards cards\n"
        "  packwise-host --rochester --timed 30 --sets Homelands Homelands Homelands --again"_s);
    parser.addOptions(allOptions());
    parser.addOption({u"settings"_s,
                      u"Take options from this file too, a line each, as \"port=5252\","
                      " \"again=true\" or \"sets=Ice Age, Homelands, Alliances\"."_s,
                      u"FILE"_s});
    parser.addOption({{u"h"_s, u"help"_s}, u"Shows this text."_s});
    parser.addVersionOption();
}

// "--sets A B" becomes "--sets A --sets B".
QStringList withEachSetNamed(const QStringList& arguments) {
    const QString sets = u"--sets"_s;
    QStringList spread;
    bool inSets = false;
    for (const QString& argument : arguments) {
        if (argument.startsWith(u'-')) {
            inSets = argument == sets || argument.startsWith(sets + u'=');
            if (argument != sets) {
                spread.append(argument);
            }
        } else if (inSets) {
            spread.append({sets, argument});
        } else {
            spread.append(argument);
        }
    }
    return spread;
}

// The options of a settings file as arguments; `sets` only if that is wanted. A fault goes into
// `fault`.
QStringList readSettings(const QString& path, bool withSets, QString& fault) {
    const QFileInfo file(path);
    const QSettings settings(path, QSettings::IniFormat);
    if (!file.isFile() || !file.isReadable()) {
        fault = u"The settings file "_s + path + u" cannot be read."_s;
        return {};
    }
    QStringList arguments;
    for (const QCommandLineOption& option : allOptions()) {
        const QString key = option.names().constFirst();
        const QStringList values = settings.value(key).toStringList();
        if (!settings.contains(key) || (key == u"sets" && !withSets)) {
            continue;
        }
        if (option.valueName().isEmpty()) {
            const QString word = values.join(u',').toLower();
            if (word == u"true" || word == u"1" || word == u"yes") {
                arguments.append(u"--"_s + key);
            } else if (word != u"false" && word != u"0" && word != u"no") {
                fault = u"In "_s + path + u", "_s + key + u" is neither true nor false."_s;
            }
        } else if (key == u"sets") {
            for (const QString& set : values) {
                arguments.append(u"--sets="_s + set);
            }
        } else {
            arguments.append(u"--"_s + key + u'=' + values.join(u", "_s));
        }
    }
    for (const QString& key : settings.allKeys()) {
        const auto options = allOptions();
        if (std::none_of(options.begin(), options.end(), [&](const QCommandLineOption& option) {
                return option.names().constFirst() == key;
            })) {
            fault = u"In "_s + path + u", \""_s + key + u"\" is no option."_s;
        }
    }
    if (settings.status() != QSettings::NoError) {  // known only now that all of it is read
        fault = u"In "_s + path + u", a line is not of the form option=value."_s;
    }
    return arguments;
}

// A whole number within bounds; nothing for anything else.
std::optional<int> number(const QString& text, int least, int most) {
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

QString faultOfNames(const QStringList& sets) {
    if (sets.size() < kFewestPacks || sets.size() > kMostPacks) {
        return u"--sets takes the names of 3 to 6 sets, one for each pack."_s;
    }
    for (const QString& set : sets) {
        if (set.isEmpty() || breaksMessages(set)) {
            return u"\""_s + set +
                   u"\" cannot be a set's name: ~, | and letters outside Windows-1252 are"
                   " not sent."_s;
        }
    }
    return {};
}

// Takes the values that are numbers. Gives what is wrong.
QString takeNumbers(const QCommandLineParser& parser, HostOptions& options) {
    if (parser.isSet(u"timed"_s)) {
        const auto seconds = number(parser.value(u"timed"_s), 1, kMostPickSeconds);
        if (!seconds) {
            return u"--timed takes seconds from 1 to 30."_s;
        }
        options.isTimed = true;
        options.pickSeconds = *seconds;
    }
    const auto players = number(parser.value(u"players"_s), 1, kSeats);
    const auto linger = number(parser.value(u"linger"_s), 1, kMostLingerMinutes);
    const auto tables = number(parser.value(u"tables"_s), 1, kMostTables);
    const auto port = number(parser.value(u"port"_s), 1, 65535);
    if (!players) {
        return u"--players takes a number from 1 to 8."_s;
    }
    if (!linger) {
        return u"--linger takes minutes from 1 to 10080."_s;
    }
    if (!tables) {
        return u"--tables takes a number from 1 to 1000."_s;
    }
    if (!port || *port + *tables - 1 > 65535) {
        return u"--port takes a number from 1 to 65535, with room for all tables."_s;
    }
    options.players = *players;
    options.lingerMinutes = *linger;
    options.tables = *tables;
    options.port = static_cast<quint16>(*port);
    return {};
}

CommandLine<HostOptions> optionsOf(const QCommandLineParser& parser) {
    HostOptions options;
    if (!parser.positionalArguments().isEmpty()) {
        return wrong(u"Unexpected argument '"_s + parser.positionalArguments().constFirst() +
                     u"'."_s);
    }
    options.isRochester = parser.isSet(u"rochester"_s);
    options.triesRealPacks = parser.isSet(u"real"_s);
    options.haltsOnDrop = parser.isSet(u"halt-on-drop"_s);
    options.isSilent = parser.isSet(u"silent"_s);
    options.opensRouter = parser.isSet(u"open-router"_s);
    options.again = parser.isSet(u"again"_s);
    options.cards = parser.value(u"cards"_s);
    options.records = parser.isSet(u"no-records"_s) ? QString() : parser.value(u"records"_s);
    options.address = parser.value(u"address"_s);
    options.sets = parser.values(u"sets"_s);
    for (const QString& fault : {faultOfNames(options.sets), takeNumbers(parser, options)}) {
        if (!fault.isEmpty()) {
            return wrong(fault);
        }
    }
    if (options.isTimed && !options.isRochester) {
        return wrong(u"--timed goes with --rochester; a Booster draft has no clock."_s);
    }
    if (!options.address.isEmpty() && QHostAddress(options.address).isNull()) {
        return wrong(u"--address takes an address of this machine, as 192.168.1.20."_s);
    }
    return {options, {}, false};
}

}  // namespace

CommandLine<HostOptions> readHostCommandLine(const QStringList& arguments) {
    QStringList spread = withEachSetNamed(arguments);
    QCommandLineParser asked;
    addOptions(asked);
    if (!asked.parse(spread)) {
        return wrong(asked.errorText());
    }
    if (asked.isSet(u"help"_s)) {
        return {std::nullopt, asked.helpText(), false};
    }
    if (asked.isSet(u"version"_s)) {
        return {std::nullopt, versionLine(u"packwise-host"_s), false};
    }
    if (!asked.isSet(u"settings"_s)) {
        return optionsOf(asked);
    }
    QString fault;
    const QStringList settings =
        readSettings(asked.value(u"settings"_s), !asked.isSet(u"sets"_s), fault);
    if (!fault.isEmpty()) {
        return wrong(fault);
    }
    // Of two values of one option the last one counts.
    QCommandLineParser parser;
    addOptions(parser);
    parser.parse(QStringList{spread.takeFirst()} + settings + spread);
    return optionsOf(parser);
}

QString faultOfSets(const HostOptions& options) {
    const std::filesystem::path folder = options.cardFolder();
    const std::set<QString> names(options.sets.begin(), options.sets.end());
    for (const QString& set : names) {
        const SetFault fault = tryFilesOf(folder, set, options.triesRealPacks);
        if (fault == SetFault::None) {
            continue;
        }
        const QString what =
            u"\""_s + set + u"\" cannot be dealt. "_s + wordsFor(fault, folder, set);
        switch (fault) {
            case SetFault::CardsMissing:
                return what +
                       u" Put it there, name the folder with --cards, or choose another set."_s;
            case SetFault::OrderUnusable:
                return what + u" Replace it, or leave out --real."_s;
            default:
                return what + u" Replace it, or choose another set."_s;
        }
    }
    return {};
}

}  // namespace packwise
