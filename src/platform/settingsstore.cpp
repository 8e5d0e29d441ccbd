#include "platform/settingsstore.h"

#include "platform/wholefile.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const QVariant& value) {
    // A comma that was typed into the file by hand makes a list of the value.
    if (value.typeId() == QMetaType::QStringList) {
        return value.toStringList().join(u", "_s);
    }
    return value.toString();
}

bool keyLess(const QString& a, const QString& b) {
    bool aIsNumber = false;
    bool bIsNumber = false;
    const uint aNumber = a.toUInt(&aIsNumber);
    const uint bNumber = b.toUInt(&bIsNumber);
    if (aIsNumber != bIsNumber) {
        return aIsNumber;
    }
    if (aIsNumber && aNumber != bNumber) {
        return aNumber < bNumber;
    }
    return a < b;
}

}  // namespace

SettingsStore::SettingsStore(QString file) : file_(std::move(file)) {}

QString SettingsStore::userFile() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, u"Packwise"_s, u"Packwise"_s)
        .fileName();
}

QString SettingsStore::read(const QString& section, const QString& key,
                            const QString& fallback) const {
    const QSettings settings(file_, QSettings::IniFormat);
    const QString path = section + u'/' + key;
    return settings.contains(path) ? textOf(settings.value(path)) : fallback;
}

void SettingsStore::write(const QString& section, const QString& key, const QString& value) {
    write({{section, key, value}});
}

// QSettings puts a file in place that a full disk has cut short, so there must be room beforehand.
bool SettingsStore::hasRoomFor(qint64 characters) const {
    constexpr qint64 kMostBytes = 8;  // of one character, escaped
    const QFileInfo there(file_);
    QDir().mkpath(there.path());
    const QString reason = whyNotWritable(file_, kMostBytes * (there.size() + characters));
    if (!reason.isEmpty()) {
        qWarning("cannot write the settings, %s: %s", qUtf8Printable(file_),
                 qUtf8Printable(reason));
    }
    return reason.isEmpty();
}

void SettingsStore::write(const QList<Entry>& entries) {
    qint64 characters = 0;
    for (const Entry& entry : entries) {
        characters += entry.section.size() + entry.key.size() + entry.value.size() + 6;
    }
    if (!hasRoomFor(characters)) {
        return;
    }
    QSettings settings(file_, QSettings::IniFormat);
    for (const Entry& entry : entries) {
        settings.setValue(entry.section + u'/' + entry.key, entry.value);
    }
    settings.sync();
}

void SettingsStore::remove(const QString& section, const QString& key) {
    if (!hasRoomFor(0)) {
        return;
    }
    QSettings settings(file_, QSettings::IniFormat);
    settings.remove(section + u'/' + key);
    settings.sync();
}

QList<std::pair<QString, QString>> SettingsStore::readAll(const QString& section) const {
    QSettings settings(file_, QSettings::IniFormat);
    settings.beginGroup(section);
    QStringList keys = settings.childKeys();
    std::sort(keys.begin(), keys.end(), keyLess);
    QList<std::pair<QString, QString>> all;
    for (const QString& key : keys) {
        all.emplaceBack(key, textOf(settings.value(key)));
    }
    return all;
}

}  // namespace packwise
