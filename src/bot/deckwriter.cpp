#include "bot/deckwriter.h"

#include "common/codepage.h"
#include "deck/deckfile.h"
#include "deck/timestamp.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

using namespace Qt::Literals;

namespace packwise {

namespace {

// Only letters and digits of the player's name stand in a file name.
QString freePath(const QDir& folder, std::string_view player, const QDateTime& now) {
    QString name = fromBytes(player);
    for (QChar& c : name) {
        if (!c.isLetterOrNumber()) {
            c = u'-';
        }
    }
    const QString base = u"draft-"_s + now.toString(u"MMddyyyy-HHmm"_s) + u'-' + name;
    QString path = folder.filePath(base + u".dec"_s);
    for (int number = 2; QFileInfo::exists(path); ++number) {
        path = folder.filePath(base + u'-' + QString::number(number) + u".dec"_s);
    }
    return path;
}

}  // namespace

std::variant<SavedDeck, QString> writeDeck(const QString& folder, std::string_view player,
                                           const QDateTime& now,
                                           const std::vector<std::string>& deck,
                                           const std::vector<std::string>& sideboard) {
    const DeckFile text = makeDeckFile(toBytes(timeStamp(now, QLocale::system())), deck, sideboard);
    const QString path = freePath(QDir(folder), player, now);
    QSaveFile file(path);
    const auto size = static_cast<qint64>(text.text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.text.data(), size) != size ||
        !file.commit()) {
        return QString(u"cannot save the deck as "_s + path + u": "_s + file.errorString());
    }
    return SavedDeck{path, text.code};
}

}  // namespace packwise
