#include "bot/deckwriter.h"

#include "engine/deckfile.h"
#include "platform/codepage.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"

#include <QDir>
#include <QFile>
#include <QLocale>

using namespace Qt::Literals;

namespace packwise {

namespace {

// Only letters and digits of the player's name stand in a file name.
QString plainName(std::string_view player) {
    QString name = fromBytes(player);
    for (QChar& c : name) {
        if (!c.isLetterOrNumber()) {
            c = u'-';
        }
    }
    return name;
}

// The path of a file that is made for this deck alone: players of other processes save into the
// same folder in the same moment.
QString ownPath(const QString& folder, const QString& base) {
    QString path;
    bool isTaken = true;
    while (isTaken) {
        path = freePath(QDir(folder), base, u".dec"_s);
        QFile file(path);
        isTaken = !file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.exists();
    }
    return path;
}

}  // namespace

std::variant<SavedDeck, QString> writeDeck(const QString& folder, std::string_view player,
                                           const QDateTime& now,
                                           const std::vector<std::string>& deck,
                                           const std::vector<std::string>& sideboard) {
    const DeckFile text = makeDeckFile(toBytes(timeStamp(now, QLocale::system())), deck, sideboard);
    const QString path = ownPath(folder, deckName(now) + u'-' + plainName(player));
    const QString reason = writeWholeFile(path, text.text);
    if (!reason.isEmpty()) {
        QFile::remove(path);
        return QString(u"cannot save the deck as "_s + path + u": "_s + reason);
    }
    return SavedDeck{path, text.code};
}

}  // namespace packwise
