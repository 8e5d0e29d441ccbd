#include "platform/wholefile.h"

#include "support/faults.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

enum class Place { Open, LongName, Locked };  // the last two only leave room for writing in place

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

// One file written over, or made, in a folder of its own. Whatever happens, the file holds all of
// the new bytes or all of the old ones, and nothing else lies in the folder.
void checkOne(Place place, qsizetype oldSize, bool full) {
    const std::string what = "place " + std::to_string(static_cast<int>(place)) + ", " +
                             std::to_string(oldSize) + " bytes before" + (full ? ", full" : "");
    const QTemporaryDir folder;
    const QString path =
        folder.filePath(place == Place::LongName ? QString(255, u'x') : u"a.dec"_s);
    const QByteArray before = oldSize > 0 ? QByteArray(oldSize, 'o') : QByteArray("no file");
    if (oldSize > 0) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(before) == oldSize);
        file.setPermissions(QFile::Permissions(0x6666));
    }
    const QByteArray after(4000, 'n');
    const bool stands = !full && (place != Place::Locked || oldSize > 0);
    QString trial;
    QString reason;
    QByteArray afterTrial;
    {
        std::optional<Unprivileged> bound;
        if (place == Place::Locked) {
            QFile::setPermissions(folder.path(), QFile::Permissions(0x5555));
            bound.emplace();
        }
        std::optional<FullDisk> disk;
        if (full) {
            disk.emplace(3000);
        }
        trial = whyNotWritable(path, after.size());
        afterTrial = bytesOf(path);
        reason = writeWholeFile(path, after);
    }
    EXPECT_EQ(reason.isEmpty(), stands) << what << ": " << reason.toStdString();
    EXPECT_EQ(afterTrial, before) << what;
    EXPECT_EQ(bytesOf(path), stands ? after : before) << what;
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(),
              stands || oldSize > 0 ? 1 : 0)
        << what;
    if (place != Place::Locked || oldSize == 0) {  // else only the write itself finds no room
        EXPECT_EQ(trial.isEmpty(), stands) << what << ": " << trial.toStdString();
    }
    QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));
}

TEST(WholeFile, StandsOrIsAsItWas) {
    for (const Place place : {Place::Open, Place::LongName, Place::Locked}) {
        for (const qsizetype oldSize : {0, 20, 5000}) {
            for (const bool full : {false, true}) {
                checkOne(place, oldSize, full);
            }
        }
    }
}

}  // namespace
}  // namespace packwise
