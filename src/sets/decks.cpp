#include "sets/decks.h"

#include "engine/deckexport.h"
#include "engine/deckfile.h"
#include "platform/codepage.h"
#include "platform/commandline.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"
#include "sets/writer.h"

#include <QDir>
#include <QFileInfo>

#include <map>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// The cards of a deck file; nothing, and told, when it holds no deck.
std::optional<DeckList> readDeck(const QString& file, const Streams& io) {
    std::string bytes;
    if (!readWhole(pathOf(file), bytes)) {
        io.err << file << ": cannot be read\n";
        return std::nullopt;
    }
    int faultyLine = 0;
    std::optional<DeckList> deck = readDeckFile(bytes, faultyLine);
    if (!deck && faultyLine <= 1) {
        io.err << file << ": holds no deck\n";
    } else if (!deck) {
        io.err << file << ": no card of a deck, line " << faultyLine << "\n";
    }
    return deck;
}

class Exporter {
public:
    Exporter(DeckFormat format, QString folder, bool replacing, const Streams& io)
        : format_(format), folder_(std::move(folder)), replacing_(replacing), io_(io) {}

    // Whether the deck of that file stands in its new form.
    bool write(const QString& file, const DeckList& deck) {
        const QFileInfo from(file);
        const QString path =
            QDir(folder_.isEmpty() ? from.path() : folder_)
                .filePath(deckBase(from.fileName()) + fromBytes(endingOf(format_)));
        // Letters alone do not tell files apart everywhere.
        const auto [first, isNew] =
            sources_.emplace(QFileInfo(path).absoluteFilePath().toLower(), file);
        if (!isNew) {
            io_.err << file << ": would take the place of what " << first->second
                    << " became; export it into another folder\n";
            return false;
        }
        const std::string text = exportDeck(format_, deck);
        std::string before;
        if (readWhole(pathOf(path), before) && before == text) {
            io_.out << path << ": up to date\n";
            return true;
        }
        if (!replacing_ && (QFileInfo::exists(path) || QFileInfo(path).isSymLink())) {
            io_.err << path << ": is there already; --force replaces it\n";
            return false;
        }
        const QString reason = writeWholeFile(path, text);
        if (!reason.isEmpty()) {
            io_.err << path << ": cannot be written: " << reason << "\n";
            return false;
        }
        io_.out << path << ": written\n";
        return true;
    }

private:
    DeckFormat format_;
    QString folder_;  // empty: beside each deck
    bool replacing_;
    const Streams& io_;
    std::map<QString, QString> sources_;  // by the path of what they became, in small letters
};

}  // namespace

int codeDecks(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Works out the security code of deck files, as Draft Information shows it."_s);
    parser.addPositionalArgument(u"code"_s, QString(), u"code"_s);
    parser.addPositionalArgument(u"DECK"_s, u"A deck file (*.dec)."_s, u"DECK..."_s);
    if (const auto status = parse(parser, arguments, io)) {
        return *status;
    }
    const QStringList files = typedFiles(parser.positionalArguments().mid(1));
    if (files.isEmpty()) {
        io.err << "packwise-sets: code needs at least one deck file\n";
        return kWrongUse;
    }
    bool good = true;
    for (const QString& file : files) {
        std::string bytes;
        const bool isRead = readWhole(pathOf(file), bytes);
        if (const std::optional<std::int32_t> code = codeOfDeckFile(bytes)) {
            io.out << file << ": " << *code << "\n";
        } else {
            io.err << file << (isRead ? ": holds no deck\n" : ": cannot be read\n");
            good = false;
        }
    }
    return good ? kDone : kFailed;
}

int exportDecks(const QStringList& arguments, const Streams& io) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Writes decks for other programs, in UTF-8, cards of the same name counted together."_s);
    parser.addPositionalArgument(u"export"_s, QString(), u"export"_s);
    parser.addPositionalArgument(u"DECK"_s, u"A deck file (*.dec)."_s, u"DECK..."_s);
    const QCommandLineOption to(
        u"to"_s,
        u"cod or dek (XML), txt (a line for each name, then the sideboard), or arena (txt with "
        u"headings; card files hold no set codes, so there are none)."_s,
        u"FORMAT"_s);
    const QCommandLineOption into(u"into"_s, u"Put the files there; else beside each deck."_s,
                                  u"FOLDER"_s);
    const QCommandLineOption force(u"force"_s, u"Replace files that are there."_s);
    parser.addOptions({to, into, force});
    if (const auto status = parse(parser, arguments, io)) {
        return *status;
    }
    const QStringList files = typedFiles(parser.positionalArguments().mid(1));
    const std::optional<DeckFormat> format = deckFormatOf(parser.value(to).toStdString());
    if (files.isEmpty() || !format) {
        io.err << (files.isEmpty() ? "packwise-sets: export needs at least one deck file\n"
                                   : "packwise-sets: --to takes cod, txt, dek or arena\n");
        return kWrongUse;
    }
    const QString folder = parser.value(into);
    if (const auto status = folder.isEmpty() ? std::nullopt : makeFolder(folder, io)) {
        return *status;
    }
    Exporter exporter(*format, folder, parser.isSet(force), io);
    bool good = true;
    for (const QString& file : files) {
        const std::optional<DeckList> deck = readDeck(file, io);
        good = deck && exporter.write(file, *deck) && good;
    }
    return good ? kDone : kFailed;
}

}  // namespace packwise::sets
