#include "platform/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <unistd.h>

#include <cerrno>
#endif
#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#endif

namespace packwise {

namespace {

// Files are opened without a buffer: QSaveFile::commit() passes over a failure to empty it, and
// puts in place what has come onto the disk by then.
constexpr QIODevice::OpenMode kUnbuffered = QIODevice::Unbuffered;

// The reason of a failure, or "". Only the write after a short one tells why that was short.
QString put(QFileDevice& file, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 written = file.write(bytes.data(), bytes.size());
        if (written <= 0) {
            return file.errorString();
        }
        bytes = bytes.sliced(written);
    }
    return {};
}

// The reason why the disk has not taken what was written, or "". A disk behind a network finds
// only here that it is full.
QString sync(const QFileDevice& file) {
#ifdef Q_OS_UNIX
    if (fsync(file.handle()) != 0 && (errno == EIO || errno == ENOSPC || errno == EDQUOT)) {
        return qt_error_string(errno);
    }
#endif
#ifdef Q_OS_WIN
    if (!FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(file.handle())))) {
        const DWORD error = GetLastError();
        if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL ||
            error == ERROR_IO_DEVICE) {
            return qt_error_string(static_cast<int>(error));
        }
    }
#endif
    return {};
}

QString putOnDisk(QFileDevice& file, QByteArrayView bytes) {
    const QString reason = put(file, bytes);
    return reason.isEmpty() ? sync(file) : reason;
}

// Pipes and devices can be neither kept nor put back.
bool canHoldText(const QString& path) {
    const QFileInfo there(path);
    return !there.exists() || there.isFile();
}

QString writeInPlace(const QString& path, QByteArrayView bytes) {
    const bool existed = QFileInfo::exists(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | kUnbuffered)) {
        return file.errorString();
    }
    const QByteArray old = file.readAll();
    if (old.size() != file.size()) {
        return file.errorString();
    }
    const qsizetype common = std::min(old.size(), bytes.size());
    file.seek(old.size());
    QString reason = putOnDisk(file, bytes.sliced(common));
    if (reason.isEmpty()) {
        file.seek(0);
        reason = putOnDisk(file, bytes.first(common));
    }
    if (reason.isEmpty() && !file.resize(bytes.size())) {
        reason = file.errorString();
    }
    if (!reason.isEmpty() && existed) {
        file.resize(old.size());
        file.seek(0);
        putOnDisk(file, old);
    } else if (!reason.isEmpty()) {
        file.remove();
    }
    return reason;
}

}  // namespace

QString writeWholeFile(const QString& path, QByteArrayView bytes) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | kUnbuffered)) {
        QString reason = putOnDisk(file, bytes);
        if (!reason.isEmpty()) {
            file.cancelWriting();
            return reason;  // the disk is full, and no better in place
        }
        if (file.commit()) {
            return {};
        }
    }
    return canHoldText(path) ? writeInPlace(path, bytes) : file.errorString();
}

QString whyNotWritable(const QString& path, qint64 size) {
    const QByteArray trial(size, ' ');
    if (QFileInfo::exists(path)) {
        QSaveFile beside(path);
        if (beside.open(QIODevice::WriteOnly | kUnbuffered)) {
            QString reason = put(beside, trial);
            beside.cancelWriting();
            return reason;
        }
        QFile file(path);
        return !canHoldText(path)                              ? beside.errorString()
               : file.open(QIODevice::ReadWrite | kUnbuffered) ? QString()
                                                               : file.errorString();
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | kUnbuffered)) {
        return file.errorString();
    }
    QString reason = put(file, trial);
    file.remove();
    return reason;
}

QString freePath(const QDir& folder, const QString& base, const QString& ending) {
    QString path = folder.filePath(base + ending);
    for (int number = 2; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number) {
        path = folder.filePath(base + u'-' + QString::number(number) + ending);
    }
    return path;
}

}  // namespace packwise
