#include "sets/importing.h"

#include "platform/commandline.h"
#include "platform/terminal.h"
#include "sets/cube.h"
#include "sets/jobs.h"
#include "sets/mtgset.h"
#include "sets/progressbar.h"
#include "sets/rules.h"
#include "sets/sheet.h"
#include "sets/table.h"

#include <QFile>
#include <QFileInfo>

#include <set>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// Tables and lists are read whole; none is this long.
constexpr qint64 kLongestText = qint64{1} << 26;

struct Wishes {
    QStringList files;
    QStringList codes;  // in upper case
    QStringList cards;
    QString name;
    QString folder;
    bool registering = true;
};

enum class Form { Json, Table, List };

Form formOf(const QString& file, QIODevice& device) {
    const QString ending = QFileInfo(file).suffix().toLower();
    if (ending == u"csv" || ending == u"tsv") {
        return Form::Table;
    }
    const bool isObject = device.peek(4096).trimmed().startsWith('{');
    return ending == u"json" || isObject ? Form::Json : Form::List;
}

bool readJson(QFile& file, MtgQuery query, const Streams& io) {
    std::vector<Fault> faults;
    {
        QTextStream screen(stderr);  // io.err would not let a line be written over
        ProgressBar bar(screen, file.size(), reportsToTerminal());
        query.progress = [&bar](qint64 done) { bar.show(done); };
        faults = readMtgJson(file, query);
    }
    return tellFaults(file.fileName(), faults, io);
}

class Import {
public:
    Import(const Wishes& wishes, const Streams& io) : wishes_(wishes), io_(io) {}

    int run() {
        bool good = true;
        for (const QString& file : wishes_.files) {
            good = readFile(file) && good;
        }
        for (const QString& code : wishes_.codes) {
            if (good && !codesRead_.contains(code)) {
                io_.err << "packwise-sets: no file holds the set " << code << "\n";
                good = false;
            }
        }
        if (good && !wishes_.name.isEmpty() && jobs_.size() != 1) {
            io_.err << "packwise-sets: --name names one set, and the files hold " << jobs_.size()
                    << "; choose one with --code\n";
            good = false;
        }
        if (!good) {
            io_.err << "packwise-sets: nothing was written\n";
            return kFailed;
        }
        return writeSets(jobs_, wishes_.folder, wishes_.registering, u"with --name"_s, io_);
    }

private:
    bool open(QFile& file) const {
        const bool opened = !QFileInfo(file).isDir() && file.open(QIODevice::ReadOnly);
        if (!opened) {
            io_.err << file.fileName() << ": cannot be read: "
                    << (QFileInfo(file).isDir() ? u"it is a folder"_s : file.errorString()) << "\n";
        }
        return opened;
    }

    bool readFile(const QString& name) {
        QFile file(name);
        if (!open(file)) {
            return false;
        }
        const Form form = formOf(name, file);
        if (form == Form::Json) {
            return readSets(file);
        }
        if (file.size() > kLongestText) {
            io_.err << name << ": too long for a table or a list of cards\n";
            return false;
        }
        const QByteArray text = file.readAll();
        const QString setName =
            wishes_.name.isEmpty() ? QFileInfo(name).completeBaseName() : wishes_.name;
        return form == Form::Table ? add(name, readTable(text, setName))
                                   : readList(name, text, setName);
    }

    bool add(const QString& file, ReadSource read) {
        if (!tellFaults(file, read.faults, io_)) {
            if (!displayNameFaults(read.source.displayName).empty()) {
                io_.err << file << ": give the set another name with --name\n";
            }
            return false;
        }
        layOutSheets(read.source);
        jobs_.push_back({file, std::move(read.source)});
        return true;
    }

    bool readSets(QFile& file) {
        std::vector<MtgSet> sets;
        QStringList passedOver;
        MtgQuery query;
        query.wantsSet = [&](const std::string& key) {
            const QString code = QString::fromStdString(key).toUpper();
            const bool wanted = wishes_.codes.contains(code);
            if (!wanted) {
                passedOver.append(code);
            }
            return wanted;
        };
        query.wantsFace = [](const MtgFace&) { return true; };
        query.take = [&](MtgSet set) {
            const QString code = QString::fromStdString(set.code).toUpper();
            if (wishes_.codes.isEmpty() || wishes_.codes.contains(code)) {
                codesRead_.insert(code);
                sets.push_back(std::move(set));
            } else {
                passedOver.append(code);
            }
        };
        if (!readJson(file, query, io_)) {
            return false;
        }
        if (sets.empty() && (wishes_.codes.isEmpty() || passedOver.isEmpty())) {
            io_.err << file.fileName()
                    << (passedOver.isEmpty()
                            ? u": holds no set with cards\n"_s
                            : u": holds no single set; choose from it with "
                              u"--code, as in --code %1\n"_s.arg(passedOver.front()));
            return false;
        }
        bool good = true;
        for (const MtgSet& set : sets) {
            const QString where = sets.size() > 1
                                      ? file.fileName() + u' ' + QString::fromStdString(set.code)
                                      : file.fileName();
            good = add(where, setFromMtgJson(set, wishes_.name.toStdString())) && good;
        }
        return good;
    }

    bool readList(const QString& file, const QByteArray& text, const QString& setName) {
        if (wishes_.cards.isEmpty()) {
            return add(file, readCube(text, setName, nullptr));
        }
        CardDetails details;
        for (const CubeLine& line : cubeLines(text)) {
            details.want({line.name, line.whole});
        }
        MtgQuery query;
        query.wantsSet = [](const std::string&) { return true; };
        query.wantsFace = [&](const MtgFace& face) { return details.wants(face); };
        query.take = [&](const MtgSet& set) { details.take(set); };
        for (const QString& name : wishes_.cards) {
            QFile cards(name);
            if (!open(cards) || !readJson(cards, query, io_)) {
                return false;
            }
        }
        return add(file, readCube(text, setName, &details));
    }

    const Wishes& wishes_;
    const Streams& io_;
    std::vector<Job> jobs_;
    std::set<QString> codesRead_;
};

// Lets "--code ICE HML" stand for "--code ICE --code HML".
QStringList withEveryValueNamed(const QStringList& arguments) {
    QStringList result;
    QString option;
    for (const QString& argument : arguments) {
        if (argument.startsWith(u'-')) {
            option = argument == u"--code" || argument == u"--cards" ? argument : QString();
        } else if (!option.isEmpty() && result.back() != option) {
            result.append(option);
        }
        result.append(argument);
    }
    return result;
}

std::optional<int> parseWishes(const QStringList& arguments, const Streams& io, Wishes& wishes) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Makes the card file and the order file of each set and registers its name, so that "
        u"Packwise offers it. A FILE is a set or all sets in MTGJSON version 5, a table (.csv or "
        u".tsv) with the columns name, rarity, colour, cost, type, text, power and toughness, or "
        u"a cube: a list of cards, one a line. Files come before the options."_s);
    parser.addPositionalArgument(u"import"_s, QString(), u"import"_s);
    parser.addPositionalArgument(u"FILE"_s, u"What to read."_s, u"FILE..."_s);
    const QCommandLineOption into(u"into"_s, u"Put the files there."_s, u"FOLDER"_s);
    const QCommandLineOption name(
        u"name"_s, u"The set's display name; else its own or the file's."_s, u"NAME"_s);
    const QCommandLineOption code(u"code"_s, u"Take only the sets of these codes."_s, u"CODE..."_s);
    const QCommandLineOption cards(u"cards"_s, u"Look up a cube's cards in these MTGJSON files."_s,
                                   u"FILE..."_s);
    const QCommandLineOption no(u"no-register"_s, u"Leave the settings alone."_s);
    parser.addOptions({into, name, code, cards, no});
    if (const auto status = parse(parser, withEveryValueNamed(arguments), io)) {
        return status;
    }
    wishes.files = typedFiles(parser.positionalArguments().mid(1));
    wishes.cards = typedFiles(parser.values(cards));
    wishes.name = parser.value(name).trimmed();
    wishes.folder = parser.value(into);
    wishes.registering = !parser.isSet(no);
    for (const QString& value : parser.values(code)) {
        wishes.codes += value.toUpper().split(u',', Qt::SkipEmptyParts);
    }
    if (wishes.files.isEmpty()) {
        io.err << "packwise-sets: import needs at least one file, before its options\n";
        return kWrongUse;
    }
    return std::nullopt;
}

}  // namespace

int importSets(const QStringList& arguments, const Streams& io) {
    Wishes wishes;
    const auto status = parseWishes(arguments, io, wishes);
    return status ? *status : Import(wishes, io).run();
}

}  // namespace packwise::sets
