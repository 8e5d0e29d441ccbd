#include "sets/inspecting.h"

#include "engine/dealing.h"
#include "platform/codepage.h"
#include "sets/cardfile.h"
#include "sets/registry.h"
#include "sets/rules.h"
#include "sets/writer.h"

#include <random>
#include <system_error>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostPacks = 100000;
constexpr qsizetype kNameWidth = 36;

// A set on the command line, by its display name or the base of its files.
struct Asked {
    QString folder;
    QString name;

    std::filesystem::path file(std::string_view extension) const {
        return setFilePath(pathOf(folder), toBytes(name), extension);
    }
};

class SetOptions {
public:
    SetOptions(const char16_t* command, const char16_t* description)
        : command_(QString::fromUtf16(command)) {
        parser_.setApplicationDescription(QString::fromUtf16(description));
        parser_.addPositionalArgument(command_, QString(), command_);
        parser_.addPositionalArgument(u"SET"_s, u"The set's name."_s);
        parser_.addOption(in_);
    }

    QCommandLineParser& parser() { return parser_; }

    // Reads the command line; `most` arguments may stand behind the command's name.
    std::optional<int> read(const QStringList& arguments, qsizetype most, const Streams& io,
                            Asked& asked) {
        if (const auto status = parse(parser_, arguments, io)) {
            return status;
        }
        const QStringList words = parser_.positionalArguments().mid(1);
        if (words.isEmpty() || words.size() > most) {
            io.err << "packwise-sets: " << command_
                   << (words.isEmpty() ? " needs the name of a set\n"
                                       : " takes no further name; quote a name with blanks\n");
            return kWrongUse;
        }
        asked = {folderOr(parser_.value(in_), io), words.front()};
        for (const QString& name : registeredSets()) {
            if (fileBase(name).compare(fileBase(asked.name), Qt::CaseInsensitive) == 0) {
                asked.name = name;
            }
        }
        return needFolder(asked.folder, io);
    }

private:
    QString command_;
    QCommandLineParser parser_;
    QCommandLineOption in_{u"in"_s, u"The folder of the files."_s, u"FOLDER"_s};
};

// The cards of a set's file. Told when it cannot be read, and what is wrong with its form.
std::optional<ReadCardFile> readCards(const Asked& asked, const Streams& io) {
    const std::filesystem::path file = asked.file(kCardFileExtension);
    const QString name = QString::fromStdU16String(file.u16string());
    std::string bytes;
    if (!readWhole(file, bytes)) {
        io.err << name << ": cannot be read\n";
        return std::nullopt;
    }
    ReadCardFile read = parseCardFile(bytes);
    return tellFaults(name, read.faults, io) ? std::optional(std::move(read)) : std::nullopt;
}

QString wordOf(const std::string& mark) {
    for (const Pool pool : kPools) {
        if (mark == poolMark(pool)) {
            return fromBytes(poolName(pool));
        }
    }
    return u"undealt"_s;
}

void printCard(const CardRecord& card, QTextStream& out) {
    out << fromBytes(card.name) << "\n"
        << wordOf(card.rarity) << ", colour " << fromBytes(card.color) << "\n";
    for (const std::string* line : {&card.cost, &card.type, &card.text, &card.pt}) {
        if (!line->empty()) {
            out << fromBytes(*line) << "\n";
        }
    }
}

void printCards(const std::vector<CardRecord>& cards, QTextStream& out) {
    for (const CardRecord& card : cards) {
        out << wordOf(card.rarity).leftJustified(9) << fromBytes(card.color) << ' '
            << fromBytes(card.name).leftJustified(kNameWidth) << ' '
            << fromBytes(card.cost).leftJustified(10) << ' ' << fromBytes(card.type) << ' '
            << fromBytes(card.pt) << "\n";
    }
}

// A whole number of an option; told when it is none or outside the bounds.
std::optional<quint32> numberOf(const QString& option, const QString& text, quint32 least,
                                quint32 most, const Streams& io) {
    bool isNumber = false;
    const quint32 number = text.toUInt(&isNumber);
    if (isNumber && number >= least && number <= most) {
        return number;
    }
    io.err << "packwise-sets: " << option << " is a whole number from " << least << " to " << most
           << "\n";
    return std::nullopt;
}

}  // namespace

int showSet(const QStringList& arguments, const Streams& io) {
    SetOptions options(u"show", u"Lists the cards of a set, or shows one card.");
    options.parser().addPositionalArgument(u"CARD"_s, u"The card to show, or a part of its name."_s,
                                           u"[CARD]"_s);
    Asked asked;
    if (const auto status = options.read(arguments, 2, io, asked)) {
        return *status;
    }
    const auto read = readCards(asked, io);
    if (!read) {
        return kFailed;
    }
    const QString wanted = options.parser().positionalArguments().value(2);
    if (wanted.isEmpty()) {
        printCards(read->cards, io.out);
        return kDone;
    }
    std::vector<CardRecord> found;
    for (const CardRecord& card : read->cards) {
        const QString name = fromBytes(card.name);
        if (name.compare(wanted, Qt::CaseInsensitive) == 0) {
            found = {card};
            break;
        }
        if (name.contains(wanted, Qt::CaseInsensitive)) {
            found.push_back(card);
        }
    }
    if (found.empty()) {
        io.err << asked.name << ": has no card \"" << wanted << "\"\n";
        return kFailed;
    }
    if (found.size() > 1) {
        printCards(found, io.out);
    } else {
        printCard(found.front(), io.out);
    }
    return kDone;
}

int dealSet(const QStringList& arguments, const Streams& io) {
    SetOptions options(u"deal", u"Deals packs of a set as Packwise does, a card a line.");
    const QCommandLineOption count(u"n"_s, u"How many packs."_s, u"N"_s, u"1"_s);
    const QCommandLineOption real(u"real"_s,
                                  u"Deal along the order file, as printed sheets lie."_s);
    const QCommandLineOption seed(u"seed"_s, u"The same packs for the same S."_s, u"S"_s);
    options.parser().addOptions({count, real, seed});
    Asked asked;
    if (const auto status = options.read(arguments, 1, io, asked)) {
        return *status;
    }
    const QCommandLineParser& parser = options.parser();
    const auto packs = numberOf(u"-n"_s, parser.value(count), 1, kMostPacks, io);
    const auto start = parser.isSet(seed)
                           ? numberOf(u"--seed"_s, parser.value(seed), 0, UINT32_MAX, io)
                           : std::optional<quint32>(std::random_device()());
    if (!packs || !start) {
        return kWrongUse;
    }
    std::mt19937 generator(*start);
    const Draw draw = [&] { return std::uniform_real_distribution<double>(0, 1)(generator); };
    for (quint32 pack = 1; pack <= *packs; ++pack) {
        const auto dealt = (parser.isSet(real) ? realPack : randomPack)(pathOf(asked.folder),
                                                                        toBytes(asked.name), draw);
        if (!dealt) {
            io.err << asked.name << ": no pack can be dealt from its "
                   << (parser.isSet(real) ? "order" : "card")
                   << " file; \"packwise-sets check\" tells why\n";
            return kFailed;
        }
        io.out << (pack == 1 ? "" : "\n") << "Pack " << pack << "\n";
        for (const std::string& token : dealt->cards()) {
            io.out << "  " << fromBytes(token.substr(0, 1)) << ' ' << fromBytes(token.substr(1))
                   << "\n";
        }
    }
    return kDone;
}

int removeSet(const QStringList& arguments, const Streams& io) {
    SetOptions options(u"remove", u"Deletes a set's files and takes its name off the list.");
    Asked asked;
    if (const auto status = options.read(arguments, 1, io, asked)) {
        return *status;
    }
    bool found = false;
    for (const std::string_view extension : {kCardFileExtension, kOrderFileExtension}) {
        std::error_code error;
        found = std::filesystem::remove(asked.file(extension), error) || found;
        if (error) {
            io.err << asked.name
                   << ": cannot be deleted: " << QString::fromLocal8Bit(error.message().c_str())
                   << "\n";
            return kFailed;
        }
    }
    QString error;
    found = registeredSets().contains(asked.name) || found;
    if (!found || !unregisterSet(asked.name, error)) {
        io.err << asked.name << ": " << (found ? error : u"there is no such set"_s) << "\n";
        return kFailed;
    }
    io.out << asked.name << ": removed\n";
    return kDone;
}

}  // namespace packwise::sets
