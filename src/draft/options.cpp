#include "draft/options.h"

#include "platform/version.h"

#include <QCommandLineParser>

#include <map>
#include <optional>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

CommandLine<DraftOptions> wrong(const QString& text) {
    return {std::nullopt, text + u" See --help."_s, true};
}

const std::map<QString, DraftOptions::Command>& commands() {
    static const std::map<QString, DraftOptions::Command> all = {
        {u"show"_s, DraftOptions::Command::Show},
        {u"check"_s, DraftOptions::Command::Check},
        {u"picks"_s, DraftOptions::Command::Picks},
    };
    return all;
}

void addOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        u"Shows and checks the records of drafts.\n\n"
        "Whoever hosts a draft finds its record in a file once it is over. This program tells\n"
        "what is in it, plays it again by the rules, and holds it to the players' decks and to\n"
        "what they saw themselves.\n\n"
        "  packwise-draft show 2026-11-23-2015.draft --picks Ada\n"
        "  packwise-draft check 2026-11-23-2015.draft --decks *.dec --picks *.picks.txt\n"
        "  packwise-draft picks 2026-11-23-2015.draft --into logs\n\n"
        "Exit status: 0 all is well, 1 something is not as it should be, 2 something could not\n"
        "be read or written, or the command line is wrong."_s);
    parser.addPositionalArgument(u"COMMAND"_s, u"show, check or picks."_s);
    parser.addPositionalArgument(u"RECORD"_s, u"The record of a draft (*.draft)."_s);
    parser.addOptions({
        {u"picks"_s,
         u"show: the picks of this player. check: files of what players saw, one after the"
         " other."_s,
         u"NAME|FILE..."_s},
        {u"pack"_s,
         u"show: the packs of this round and who took what; in a Rochester draft this pack, all"
         " counted through."_s,
         u"N"_s},
        {u"decks"_s, u"check: the players' decks (*.dec), one after the other."_s, u"FILE..."_s},
        {u"cards"_s,
         u"check: where the card files are (the current folder if it holds some, else your card"
         " folder)."_s,
         u"FOLDER"_s},
        {u"into"_s, u"picks: write each player's picks there, as NAME.picks.txt."_s, u"FOLDER"_s},
    });
    parser.addOption({{u"h"_s, u"help"_s}, u"Shows this text."_s});
    parser.addVersionOption();
}

// "--decks A B" becomes "--decks A --decks B".
QStringList withEachFileNamed(const QStringList& arguments) {
    QStringList spread;
    QString option;
    for (const QString& argument : arguments) {
        if (argument == u"--decks" || argument == u"--picks") {
            option = argument;
        } else if (!option.isEmpty() && !argument.startsWith(u'-')) {
            for (const QString& file : typedFiles({argument})) {
                spread.append({option, file});
            }
        } else {
            option.clear();
            spread.append(argument);
        }
    }
    return spread;
}

// "--decks" or "--picks" with no file behind it, as a pattern that fits none may leave it; empty
// when there is none.
QString bareOption(const QStringList& arguments) {
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const bool takesFiles = arguments[i] == u"--decks" || arguments[i] == u"--picks";
        if (takesFiles && arguments.value(i + 1, u"-"_s).startsWith(u'-')) {
            return arguments[i];
        }
    }
    return {};
}

// What is given with a command that has no use for it; empty when nothing is.
QString uselessOption(const QCommandLineParser& parser, DraftOptions::Command command) {
    using Command = DraftOptions::Command;
    const std::map<Command, QStringList> useful = {
        {Command::Show, {u"picks"_s, u"pack"_s}},
        {Command::Check, {u"picks"_s, u"decks"_s, u"cards"_s}},
        {Command::Picks, {u"into"_s}},
    };
    for (const QString& name : parser.optionNames()) {
        if (!useful.at(command).contains(name)) {
            return name;
        }
    }
    return {};
}

}  // namespace

CommandLine<DraftOptions> readDraftCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(withEachFileNamed(arguments))) {
        return wrong(parser.errorText());
    }
    if (parser.isSet(u"help"_s)) {
        return {std::nullopt, parser.helpText(), false};
    }
    if (parser.isSet(u"version"_s)) {
        return {std::nullopt, versionLine(u"packwise-draft"_s), false};
    }
    if (const QString bare = bareOption(arguments); !bare.isEmpty()) {
        return wrong(u"Nothing stands behind %1."_s.arg(bare));
    }
    const QStringList words = parser.positionalArguments();
    const auto command = commands().find(words.value(0));
    if (command == commands().end()) {
        return wrong(u"The first word is show, check or picks."_s);
    }
    if (words.size() != 2) {
        return wrong(words.size() < 2 ? u"Which record?"_s
                                      : QString(u"Unexpected argument '"_s + words[2] + u"'."_s));
    }
    DraftOptions options;
    options.command = command->second;
    options.record = words[1];
    if (const QString useless = uselessOption(parser, options.command); !useless.isEmpty()) {
        return wrong(u"--%1 does not go with %2."_s.arg(useless, command->first));
    }
    if (parser.isSet(u"pack"_s)) {
        options.pack = parser.value(u"pack"_s).toInt();
        if (options.pack < 1) {
            return wrong(u"--pack takes a number from 1."_s);
        }
    }
    if (options.command == DraftOptions::Command::Show) {
        options.player = parser.value(u"picks"_s);
    } else {
        options.picks = parser.values(u"picks"_s);
    }
    options.decks = parser.values(u"decks"_s);
    options.cards = parser.value(u"cards"_s);
    options.into = parser.value(u"into"_s);
    if (options.command == DraftOptions::Command::Picks && options.into.isEmpty()) {
        return wrong(u"Which folder? Name it with --into."_s);
    }
    return {options, {}, false};
}

}  // namespace packwise
