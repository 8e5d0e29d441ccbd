#include "bot/deckwriter.h"

#include "engine/deckfile.h"
#include "platform/codepage.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"

#include <QDir>
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

}  // namespace

std::variant<SavedDeck, QString> writeDeck(const QString& folder, std::string_view player,
                                           const QDateTime& now,
                                           const std::vector<std::string>& deck,
                                           const std::vector<std::string>& sideboard) {
    const DeckFile text = makeDeckFile(toBytes(timeStamp(now, QLocale::system())), deck, sideboard);
    const QString path =
        freePath(QDir(folder), deckName(now) + u'-' + plainName(player), u".dec"_s);
    const QString reason = writeWholeFile(path, text.text);
    if (!reason.isEmpty()) {
        return QString(u"cannot save the deck as "_s + path + u": "_s + reason);
    }
    return SavedDeck{path, text.code};
}

}  // namespace packwise
