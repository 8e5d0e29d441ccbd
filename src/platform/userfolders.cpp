#include "platform/userfolders.h"

#include <QStandardPaths>

using namespace Qt::Literals;

namespace packwise {

QString userDataFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Packwise"_s;
}

QString userCardFolder() {
    return userDataFolder() + u"/cards"_s;
}

QString userRecordFolder() {
    return userDataFolder() + u"/records"_s;
}

}  // namespace packwise
