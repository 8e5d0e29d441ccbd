#include "sets/commands.h"

#include "common/codepage.h"
#include "sets/folder.h"
#include "sets/registry.h"
#include "sets/rules.h"
#include "sets/sheet.h"
#include "sets/textsource.h"
#include "sets/writer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

struct Streams {
    QTextStream& out;
    QTextStream& err;
};

std::filesystem::path pathOf(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

QString lineOf(const QString& file, const Fault& fault) {
    QString line =
        file + u": "_s + (fault.warning ? u"warning: "_s : QString()) + fromBytes(fault.what);
    return fault.where.empty() ? line : line + u", "_s + fromBytes(fault.where);
}

bool isFatal(const std::vector<Fault>& faults) {
    return std::any_of(faults.begin(), faults.end(),
                       [](const Fault& fault) { return !fault.warning; });
}

// Parses what follows a command's name. Nothing but an exit status when the command is not to run.
std::optional<int> parse(QCommandLineParser& parser, const QStringList& arguments,
                         const Streams& io) {
    const QCommandLineOption help = parser.addHelpOption();
    if (!parser.parse(arguments)) {
        io.err << "packwise-sets: " << parser.errorText() << "\n";
        return kWrongUse;
    }
    if (parser.isSet(help)) {
        io.out << parser.helpText();
        return kDone;
    }
    return std::nullopt;
}

struct Job {
    QString file;
    SetSource source;
};

// Reads one source and tells its faults; nothing when it cannot be used.
std::optional<Job> readJob(const QString& file, const Streams& io) {
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        io.err << file << ": cannot be read: " << input.errorString() << "\n";
        return std::nullopt;
    }
    ReadSource read = readTextSource(input.readAll());
    for (const Fault& fault : read.faults) {
        io.err << lineOf(file, fault) << "\n";
    }
    if (isFatal(read.faults)) {
        return std::nullopt;
    }
    layOutSheets(read.source);
    return Job{file, std::move(read.source)};
}

// Whether no two sources, and no source and another registered set, lead to the same files.
bool haveOwnFiles(const std::vector<Job>& jobs, bool withRegistered, const Streams& io) {
    bool own = true;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const QString name = fromBytes(jobs[i].source.displayName);
        const auto before = std::find_if(
            jobs.begin(), jobs.begin() + static_cast<std::ptrdiff_t>(i), [&](const Job& job) {
                return fileBase(fromBytes(job.source.displayName))
                           .compare(fileBase(name), Qt::CaseInsensitive) == 0;
            });
        const bool clash = before != jobs.begin() + static_cast<std::ptrdiff_t>(i);
        const QString rival = clash            ? fromBytes(before->source.displayName)
                              : withRegistered ? rivalOf(name)
                                               : QString();
        if (clash || !rival.isEmpty()) {
            io.err << jobs[i].file
                   << u": \"%1\" leads to the same files as the set \"%2\"; names "
                      u"must differ in their first eight letters\n"_s.arg(name, rival);
            own = false;
        }
    }
    return own;
}

bool buildOne(const Job& job, const QString& folder, bool registering, const Streams& io) {
    std::string failure;
    const WriteResult result = writeSetFiles(job.source, pathOf(folder), failure);
    const QString name = fromBytes(job.source.displayName);
    if (result == WriteResult::Failed) {
        io.err << job.file << ": " << QString::fromStdString(failure) << "\n";
        return false;
    }
    QString error;
    if (registering && !registerSet(name, error)) {
        io.err << job.file << ": " << error << "\n";
        return false;
    }
    io.out << name << (result == WriteResult::Written ? ": written" : ": up to date") << "\n";
    return true;
}

int build(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Builds the card file and the order file of each set and registers its name, so that "
        u"Packwise offers it."_s);
    parser.addPositionalArgument(u"build"_s, QString(), u"build"_s);
    parser.addPositionalArgument(u"SOURCE"_s, u"A set written as text (*.set)."_s, u"SOURCE..."_s);
    const QCommandLineOption into(u"into"_s, u"Put the files there; else here."_s, u"FOLDER"_s,
                                  u"."_s);
    const QCommandLineOption yes(u"register"_s, u"Register the sets' names (the default)."_s);
    const QCommandLineOption no(u"no-register"_s, u"Leave the settings alone."_s);
    parser.addOptions({into, yes, no});
    if (const auto status = parse(parser, arguments, io)) {
        return *status;
    }
    const QStringList files = parser.positionalArguments().mid(1);
    if (files.isEmpty() || (parser.isSet(yes) && parser.isSet(no))) {
        io.err << (files.isEmpty() ? "packwise-sets: build needs at least one source\n"
                                   : "packwise-sets: --register or --no-register, not both\n");
        return kWrongUse;
    }
    const QString folder = parser.value(into);
    if (!QFileInfo(folder).isDir()) {
        io.err << folder << ": there is no such folder\n";
        return kFailed;
    }
    std::vector<Job> jobs;
    for (const QString& file : files) {
        if (auto job = readJob(file, io)) {
            jobs.push_back(std::move(*job));
        }
    }
    const bool registering = !parser.isSet(no);
    if (jobs.size() != static_cast<std::size_t>(files.size()) ||
        !haveOwnFiles(jobs, registering, io)) {
        io.err << "packwise-sets: nothing was written\n";
        return kFailed;
    }
    bool good = true;
    for (const Job& job : jobs) {
        good = buildOne(job, folder, registering, io) && good;
    }
    return good ? kDone : kFailed;
}

// The folder that list and check are asked for, or an exit status.
std::optional<int> parseFolder(QCommandLineParser& parser, const QString& command,
                               const QStringList& arguments, const Streams& io, QString& folder) {
    parser.addPositionalArgument(command, QString(), command);
    parser.addPositionalArgument(u"FOLDER"_s, u"The folder to look into; else here."_s,
                                 u"[FOLDER]"_s);
    if (const auto status = parse(parser, arguments, io)) {
        return status;
    }
    folder = parser.positionalArguments().value(1, u"."_s);
    if (parser.positionalArguments().size() > 2) {
        io.err << "packwise-sets: " << command << " looks into one folder\n";
        return kWrongUse;
    }
    if (!QFileInfo(folder).isDir()) {
        io.err << folder << ": there is no such folder\n";
        return kFailed;
    }
    return std::nullopt;
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
    {u"list", "list [FOLDER]", "list the sets that a folder holds", list},
    {u"check", "check [FOLDER]", "check the files of a folder", check},
};

void printHelp(QTextStream& out) {
    out << "Usage: packwise-sets COMMAND\n\n"
           "Builds, lists and checks the card set files that Packwise deals from.\n\n"
           "Commands:\n";
    for (const Command& command : kCommands) {
        out << "  " << command.form << "\n      " << command.summary << "\n";
    }
    out << "\n\"packwise-sets COMMAND --help\" tells a command's options.\n";
}

}  // namespace

int run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const QString name = arguments.value(1);
    if (name == u"--help"_s || name == u"-h"_s) {
        printHelp(out);
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
