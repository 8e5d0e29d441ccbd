// The per-user settings: text values by section and key in one INI file. A write is on the disk
// when the call returns. Nothing is cached. What cannot be written is left out with a warning on
// the standard error stream, and the file stays as it was.
#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace packwise {

class SettingsStore {
public:
    // A store in that file; the default is the user's own, Packwise/Packwise.ini in the user's
    // configuration folder.
    explicit SettingsStore(QString file = userFile());

    static QString userFile();

    QString read(const QString& section, const QString& key, const QString& fallback = {}) const;
    void write(const QString& section, const QString& key, const QString& value);

    struct Entry {
        QString section;
        QString key;
        QString value;
    };
    // Writes several values with one access to the disk.
    void write(const QList<Entry>& entries);

    void remove(const QString& section, const QString& key);

    // All keys and values of a section in the order of the keys, numbers by their value. Empty
    // when there is no such section.
    QList<std::pair<QString, QString>> readAll(const QString& section) const;

private:
    // Whether the file can be written with so many characters more.
    bool hasRoomFor(qint64 characters) const;

    QString file_;
};

}  // namespace packwise
