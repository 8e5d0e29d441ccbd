#include "record/recordkeeper.h"

#include "platform/codepage.h"
#include "platform/wholefile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <exception>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

std::string now() {
    const QDateTime local = QDateTime::currentDateTime();
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate).toStdString();
}

// A file of its own for a draft that began then, made empty. Other programs may look for one at
// the same moment. Gives why there is none; empty when `path` names it.
QString takePath(const QString& folder, const QString& time, QString& path) {
    if (!QDir().mkpath(folder)) {
        return u"the folder cannot be made"_s;
    }
    const QString base = QDateTime::fromString(time, Qt::ISODate).toString(u"yyyy-MM-dd-HHmm"_s);
    for (;;) {
        QFile file(freePath(QDir(folder), base, u".draft"_s));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            path = file.fileName();
            return {};
        }
        if (!file.exists()) {
            return file.errorString();
        }
    }
}

QString writeTo(const QString& folder, const DraftRecord& record, QString& path) {
    try {
        const bool isNew = path.isEmpty();
        QString reason;
        if (isNew) {
            reason = takePath(folder, QString::fromStdString(record.time), path);
        }
        if (reason.isEmpty()) {
            reason = writeWholeFile(path, writeRecord(record));
            if (isNew && !reason.isEmpty()) {
                QFile::remove(std::exchange(path, {}));
            }
        }
        return reason;
    } catch (const std::exception& error) {
        return QString::fromLocal8Bit(error.what());  // no memory
    }
}

}  // namespace

RecordKeeper::RecordKeeper(const QString& folder, Tell tell, QObject* parent)
    : QObject(parent),
      folder_(folder.isEmpty() ? QString() : QDir(folder).absolutePath()),
      tell_(std::move(tell)),
      recorder_(now) {
    // Both are told in the midst of the server's work.
    recorder_.oddityNoted = [this](const std::string& line) {
        QMetaObject::invokeMethod(
            this, [this, line] { tell_(screenText(line)); }, Qt::QueuedConnection);
    };
    recorder_.changed = [this] { saveSoon(); };
}

RecordKeeper::~RecordKeeper() {
    tell_ = [](const QString&) {};
    finish();
}

void RecordKeeper::finish() {
    giveUp();
    while (isUnsaved_ || writing_.joinable()) {
        writing_.joinable() ? onWritten() : save();
    }
}

void RecordKeeper::retire() {
    isRetired_ = true;
    giveUp();
    saveSoon();
}

// Called in the midst of the server's work.
void RecordKeeper::saveSoon() {
    isUnsaved_ = recorder_.isComplete();
    QMetaObject::invokeMethod(this, &RecordKeeper::save, Qt::QueuedConnection);
}

void RecordKeeper::save() {
    if (recorder_.hasFailed()) {
        isUnsaved_ = false;
        say(u"There is no record of this draft: no memory is left."_s);
    }
    if (writing_.joinable()) {
        return;  // onWritten() comes back here
    }
    if (std::exchange(isUnsaved_, false)) {
        try {
            writing_ = std::thread([this, record = recorder_.record()] {
                reason_ = writeTo(folder_, record, path_);
                QMetaObject::invokeMethod(this, &RecordKeeper::onWritten, Qt::QueuedConnection);
            });
            return;
        } catch (const std::exception& error) {  // no memory, or the system allows no more threads
            sayThatNot(QString::fromLocal8Bit(error.what()));
        }
    }
    if (isRetired_) {
        deleteLater();
    }
}

void RecordKeeper::onWritten() {
    if (!writing_.joinable()) {
        return;  // finish() was faster
    }
    writing_.join();
    if (reason_.isEmpty()) {
        say(u"The record of this draft is "_s + QDir::toNativeSeparators(path_) + u'.');
    } else {
        sayThatNot(reason_);
    }
    save();
}

void RecordKeeper::sayThatNot(const QString& reason) {
    const QString place = QDir::toNativeSeparators(path_.isEmpty() ? folder_ : path_);
    say(u"The record of this draft could not be written to "_s + place + u": "_s + reason);
}

void RecordKeeper::say(const QString& line) {
    if (std::exchange(said_, line) != line) {
        tell_(line);
    }
}

}  // namespace packwise
