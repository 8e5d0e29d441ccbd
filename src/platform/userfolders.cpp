#include "platform/userfolders.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::Literals;

namespace packwise {

QString userDataFolder() {
    const QString data = QDir::cleanPath(
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Packwise"_s);
    // One that a variable gives from the current folder on would be another at each start.
    return QDir::isAbsolutePath(data) ? data : QDir::homePath() + u"/.local/share/Packwise"_s;
}

QString userCardFolder() {
    return userDataFolder() + u"/cards"_s;
}

QString userRecordFolder() {
    return userDataFolder() + u"/records"_s;
}

}  // namespace packwise
