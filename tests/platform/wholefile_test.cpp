#include "platform/wholefile.h"

#include "support/faults.h"
#include "support/test.h"

namespace packwise {
namespace {

// A file of `oldSize` bytes (0 for none) is written over with 4000. It holds all of the new bytes
// or all of the old ones, and nothing else lies in the folder. Beside a file of so long a name no
// other can stand, nor in a locked folder.
void checkOne(const QString& name, bool locked, qsizetype oldSize, bool full) {
    SCOPED_TRACE(testing::Message()
                 << name.size() << ' ' << locked << ' ' << oldSize << ' ' << full);
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    const QByteArray before = oldSize > 0 ? QByteArray(oldSize, 'o') : QByteArray("no file");
    const QByteArray after(4000, 'n');
    QFile file(path);
    if (oldSize > 0) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                    file.write(before) == oldSize);
        file.setPermissions(QFile::Permissions(0x6666));
    }
    std::optional<Unprivileged> bound;
    if (locked) {
        QFile::setPermissions(folder.path(), QFile::Permissions(0x5555));
        bound.emplace();
    }
    std::optional<FullDisk> disk;
    if (full) {
        disk.emplace(3000);
    }
    const QString trial = whyNotWritable(path, after.size());
    const QByteArray afterTrial = bytesOf(path);
    const QString reason = writeWholeFile(path, after);
    disk.reset();
    bound.reset();
    QFile::setPermissions(folder.path(), QFile::Permissions(0x7777));

    const bool stands = !full && (!locked || oldSize > 0);
    EXPECT_EQ(reason.isEmpty(), stands) << reason.toStdString();
    EXPECT_EQ(afterTrial, before);
    EXPECT_EQ(bytesOf(path), stands ? after : before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(),
              stands || oldSize > 0 ? 1 : 0);
    // What is written in place finds no room only then.
    EXPECT_EQ(trial.isEmpty(), stands || (locked && oldSize > 0)) << trial.toStdString();
}

TEST(WholeFile, StandsOrIsAsItWas) {
    for (const bool full : {false, true}) {
        for (const qsizetype oldSize : {0, 20, 5000}) {
            checkOne(u"a.dec"_s, false, oldSize, full);
            checkOne(u"a.dec"_s, true, oldSize, full);
            checkOne(QString(255, u'x'), false, oldSize, full);
        }
    }
}

}  // namespace
}  // namespace packwise
