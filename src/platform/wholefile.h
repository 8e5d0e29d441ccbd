// Files that are written whole or not at all.
#pragma once

#include <QByteArrayView>
#include <QDir>
#include <QString>

namespace packwise {

// Makes the file of that path hold these bytes. What stood there before is replaced once the new
// bytes are on the disk. Where no second file can be made beside it or be put in its place, it is
// written over, room for the longer text first, and gets its old bytes back when that fails.
// Gives the reason of a failure, in words; empty when the file stands.
QString writeWholeFile(const QString& path, QByteArrayView bytes);

// Tries whether writeWholeFile() would put a file of `size` bytes there, and leaves everything as
// it was. Gives the reason why not; empty when nothing speaks against it.
QString whyNotWritable(const QString& path, qint64 size);

// The path of base + ending in that folder, or of base + "-2", "-3" and so on + ending: the first
// that nothing there has.
QString freePath(const QDir& folder, const QString& base, const QString& ending);

}  // namespace packwise
