#include "sets/commands.h"

#include "platform/codepage.h"
#include "platform/commandline.h"
#include "platform/userfolders.h"
#include "platform/version.h"
#include "sets/console.h"
#include "sets/decks.h"
#include "sets/folder.h"
#include "sets/importing.h"
#include "sets/inspecting.h"
#include "sets/jobs.h"
#include "sets/registry.h"
#include "sets/rules.h"
#include "sets/sheet.h"
#include "sets/textsource.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <filesystem>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// Reads one source and tells its faults; nothing when it cannot be used.
std::optional<Job> readJob(const QString& file, const Streams& io) {
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        io.err << file << ": cannot be read: " << input.errorString() << "\n";
        return std::nullopt;
    }
    ReadSource read = readTextSource(input.readAll());
    if (!tellFaults(file, read.faults, io)) {
        return std::nullopt;
    }
    layOutSheets(read.source);
    return Job{file, std::move(read.source)};
}

int build(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Builds the card file and the order file of each set and registers its name, so that "
        u"Packwise offers it."_s);
    parser.addPositionalArgument(u"build"_s, QString(), u"build"_s);
    parser.addPositionalArgument(u"SOURCE"_s, u"A set written as text (*.set)."_s, u"SOURCE..."_s);
    const QCommandLineOption into(u"into"_s, u"Put the files there."_s, u"FOLDER"_s);
    const QCommandLineOption yes(u"register"_s, u"Register the sets' names (the default)."_s);
    const QCommandLineOption no(u"no-register"_s, u"Leave the settings alone."_s);
    parser.addOptions({into, yes, no});
    if (const auto status = parse(parser, arguments, io)) {
        return *status;
    }
    const QStringList files = typedFiles(parser.positionalArguments().mid(1));
    if (files.isEmpty() || (parser.isSet(yes) && parser.isSet(no))) {
        io.err << (files.isEmpty() ? "packwise-sets: build needs at least one source\n"
                                   : "packwise-sets: --register or --no-register, not both\n");
        return kWrongUse;
    }
    std::vector<Job> jobs;
    for (const QString& file : files) {
        if (auto job = readJob(file, io)) {
            jobs.push_back(std::move(*job));
        }
    }
    if (jobs.size() != static_cast<std::size_t>(files.size())) {
        io.err << "packwise-sets: nothing was written\n";
        return kFailed;
    }
    return writeSets(jobs, parser.value(into), !parser.isSet(no), u"in the line \"set\""_s, io);
}

// The folder that list and check are asked for, or an exit status.
std::optional<int> parseFolder(QCommandLineParser& parser, const QString& command,
                               const QStringList& arguments, const Streams& io, QString& folder) {
    parser.addPositionalArgument(command, QString(), command);
    parser.addPositionalArgument(u"FOLDER"_s, u"The folder to look into."_s, u"[FOLDER]"_s);
    if (const auto status = parse(parser, arguments, io)) {
        return status;
    }
    if (parser.positionalArguments().size() > 2) {
        io.err << "packwise-sets: " << command << " looks into one folder\n";
        return kWrongUse;
    }
    folder = folderOr(parser.positionalArguments().value(1), io);
    return needFolder(folder, io);
}

QString displayNameOf(const std::string& base) {
    for (const QString& name : registeredSets()) {
        if (fileBase(name).compare(QString::fromStdString(base), Qt::CaseInsensitive) == 0) {
            return name;
        }
    }
    return u"(not registered)"_s;
}

int list(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Lists the sets that a folder holds."_s);
    QString folder;
    if (const auto status = parseFolder(parser, u"list"_s, arguments, io, folder)) {
        return *status;
    }
    for (const HeldSet& set : listFolder(pathOf(folder))) {
        io.out << displayNameOf(set.base).leftJustified(24) << ' '
               << QString::fromStdString(set.base).leftJustified(8);
        if (!set.sound) {
            io.out << " damaged; \"packwise-sets check\" tells where\n";
            continue;
        }
        for (const Pool pool : {Pool::Common, Pool::Uncommon, Pool::Rare}) {
            io.out << ' ' << set.cards.at(static_cast<std::size_t>(pool)) << ' '
                   << fromBytes(poolName(pool)) << ',';
        }
        io.out << ' ' << set.undealt << " undealt; pack of " << set.counts[2] << " + "
               << set.counts[1] << " + " << set.counts[0]
               << (set.hasOrder ? "; order file" : "; no order file") << "\n";
    }
    return kDone;
}

int check(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Checks every card file and order file of a folder. A fault gives one line and the exit "
        u"status 1; a warning alone does not."_s);
    QString folder;
    if (const auto status = parseFolder(parser, u"check"_s, arguments, io, folder)) {
        return *status;
    }
    bool good = true;
    for (const auto& [file, fault] : checkFolder(pathOf(folder))) {
        io.out << lineOf(QString::fromStdString(file.filename().string()), fault) << "\n";
        good = good && fault.warning;
    }
    return good ? kDone : kFailed;
}

struct Command {
    const char16_t* name;
    const char* form;
    const char* summary;
    int (*run)(const QStringList&, const Streams&);
};

constexpr Command kCommands[] = {
    {u"build", "build SOURCE... [--into FOLDER] [--no-register]",
     "build card files from text, and register the sets", build},
    {u"import", "import FILE... [--into FOLDER] [--name NAME] [--code CODE...] [--cards FILE...]",
     "make card files from MTGJSON files, tables or cube lists, and register the sets", importSets},
    {u"list", "list [FOLDER]", "list the sets that a folder holds", list},
    {u"check", "check [FOLDER]", "check the files of a folder", check},
    {u"show", "show SET [CARD] [--in FOLDER]", "list the cards of a set, or show one", showSet},
    {u"deal", "deal SET [-n N] [--real] [--seed S] [--in FOLDER]", "deal packs of a set", dealSet},
    {u"remove", "remove SET [--in FOLDER]", "delete a set's files and its registered name",
     removeSet},
    {u"code", "code DECK...", "work out the security code of deck files", codeDecks},
    {u"export", "export DECK... --to FORMAT [--into FOLDER] [--force]",
     "write decks for other programs: cod, txt, dek or arena", exportDecks},
};

void printHelp(QTextStream& out) {
    out << "Usage: packwise-sets COMMAND\n\n"
           "Makes, lists and checks the card set files that Packwise deals from, and reads its "
           "decks.\n\n"
           "Commands:\n";
    for (const Command& command : kCommands) {
        out << "  " << command.form << "\n      " << command.summary << "\n";
    }
    out << "\nWhere no FOLDER is named, the current folder serves if it holds card files, else\n"
           "your own card folder, and for export the deck's. Your card folder: "
        << QDir::toNativeSeparators(userCardFolder())
        << "\n\n\"packwise-sets COMMAND --help\" tells a command's options, --version the "
           "version.\n";
}

}  // namespace

int run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const QString name = arguments.value(1);
    if (name == u"--help"_s || name == u"-h"_s) {
        printHelp(out);
        return kDone;
    }
    if (name == u"--version"_s || name == u"-v"_s) {
        out << versionLine(u"packwise-sets"_s);
        return kDone;
    }
    for (const Command& command : kCommands) {
        if (name == QString::fromUtf16(command.name)) {
            try {
                return command.run(arguments, {out, err});
            } catch (const std::filesystem::filesystem_error& error) {
                err << "packwise-sets: " << QString::fromLocal8Bit(error.what()) << "\n";
                return kFailed;
            }
        }
    }
    err << (name.isEmpty() ? u"packwise-sets: a command is missing"_s
                           : u"packwise-sets: there is no command \"%1\""_s.arg(name))
        << "; see packwise-sets --help\n";
    return kWrongUse;
}

}  // namespace packwise::sets
