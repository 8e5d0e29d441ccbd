#include "draft/commands.h"

#include "draft/options.h"
#include "draft/telling.h"
#include "engine/picktext.h"
#include "platform/codepage.h"
#include "platform/setfiles.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"
#include "record/check.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWell = 0;
constexpr int kFaulty = 1;
constexpr int kNotDone = 2;
constexpr qint64 kMostDeckBytes = qint64{1024} * 1024;

struct Streams {
    QTextStream& out;
    QTextStream& errors;
};

// The bytes of a file, at most so many; nothing, and told, when it cannot be read or is longer.
std::optional<std::string> readFile(const QString& path, qint64 most, const Streams& io) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        io.errors << path << u": cannot be read: "_s << file.errorString() << u'\n';
        return std::nullopt;
    }
    const QByteArray bytes = file.size() > most ? QByteArray() : file.read(most + 1);
    if (file.size() > most || bytes.size() > most) {
        io.errors << path << u": is far too long for what it should be\n"_s;
        return std::nullopt;
    }
    return bytes.toStdString();
}

std::optional<DraftRecord> recordOf(const QString& path, const Streams& io) {
    const auto bytes = readFile(path, static_cast<qint64>(kMostRecordBytes), io);
    if (!bytes) {
        return std::nullopt;
    }
    RecordFault fault;
    std::optional<DraftRecord> record = readRecord(*bytes, fault);
    if (!record) {
        io.errors << path << u": is no whole record of a draft: "_s;
        if (fault.line > 0) {
            io.errors << u"line %1: "_s.arg(fault.line);
        }
        io.errors << screenText(fault.what) << u'\n';
    }
    return record;
}

int show(const DraftOptions& options, const DraftRecord& record, const Streams& io) {
    if (!options.player.isEmpty()) {
        const auto player = std::find_if(
            record.players.begin(), record.players.end(),
            [&](const RecordPlayer& each) { return screenText(each.name) == options.player; });
        if (player == record.players.end()) {
            io.errors << u"Nobody of this draft is called \""_s << options.player << u"\".\n"_s;
            return kNotDone;
        }
        tellPicks(record, static_cast<int>(player - record.players.begin()), options.pack, io.out);
        return kWell;
    }
    if (options.pack == 0) {
        tellDraft(record, io.out);
    } else if (!tellPacks(record, options.pack, io.out)) {
        io.errors << u"This draft has no pack %1.\n"_s.arg(options.pack);
        return kNotDone;
    }
    return kWell;
}

void tellLines(const QString& head, const std::vector<std::string>& lines, QTextStream& out) {
    if (!lines.empty()) {
        out << head << u'\n';
    }
    for (const std::string& line : lines) {
        out << u"  "_s << screenText(line) << u'\n';
    }
}

int check(const DraftOptions& options, const DraftRecord& record, const Streams& io) {
    bool isAllRead = true;
    DraftCheck checked(record);
    QString cards = options.cards;
    if (cards.isEmpty()) {
        cards = usualCardFolder();
        io.errors << u"Card sets: "_s << QDir::toNativeSeparators(cards) << u'\n';
    }
    checked.checkPacks(cards.toStdU16String());
    for (const QString& deck : options.decks) {
        const auto bytes = readFile(deck, kMostDeckBytes, io);
        isAllRead = bytes && checked.checkDeck(toBytes(deck), *bytes) && isAllRead;
    }
    for (const QString& picks : options.picks) {
        const auto bytes = readFile(picks, static_cast<qint64>(kMostPickText), io);
        isAllRead = bytes && checked.checkPicks(toBytes(picks), *bytes) && isAllRead;
    }
    const Report& report = checked.report();
    tellLines(u"Checked:"_s, report.checked, io.out);
    tellLines(u"Not checked:"_s, report.unchecked, io.out);
    io.out << (report.findings.empty() ? u"No faults.\n"_s : u"Faults:\n"_s);
    for (const Finding& finding : report.findings) {
        io.out << u"  "_s << wordsFor(finding) << u'\n';
    }
    return !report.findings.empty() ? kFaulty : isAllRead ? kWell : kNotDone;
}

// A name as a part of a file's name.
QString plainName(const QString& name) {
    QString plain = name;
    for (QChar& c : plain) {
        if (!c.isLetterOrNumber()) {
            c = u'-';
        }
    }
    return plain;
}

int writePicks(const DraftOptions& options, const DraftRecord& record, const Streams& io) {
    const QString base = QFileInfo(options.record).completeBaseName();
    const QDateTime begun = QDateTime::fromString(screenText(record.time), Qt::ISODate);
    if (!QDir().mkpath(options.into)) {
        io.errors << options.into << u": cannot be made\n"_s;
        return kNotDone;
    }
    QStringList names;
    bool isDone = true;
    for (std::size_t i = 0; i < record.players.size(); ++i) {
        PickLog log = picksOf(record, static_cast<int>(i));
        stampPicks(log, begun);
        QString name = plainName(screenText(record.players[i].name));
        if (names.contains(name, Qt::CaseInsensitive)) {
            name += u"-%1"_s.arg(i + 1);
        }
        names.append(name);
        const QString path =
            QDir(options.into).filePath(base + u'-' + name + fromBytes(kPickTextEnding));
        const QString reason = writeWholeFile(path, packwise::writePicks(log));
        if (reason.isEmpty()) {
            io.out << path << u": written\n"_s;
        } else {
            io.errors << path << u": cannot be written: "_s << reason << u'\n';
            isDone = false;
        }
    }
    return isDone ? kWell : kNotDone;
}

}  // namespace

int runDraftCommand(const QStringList& arguments, QTextStream& out, QTextStream& errors) {
    const CommandLine<DraftOptions> line = readDraftCommandLine(arguments);
    if (!line.options) {
        (line.isError ? errors : out) << line.text << (line.isError ? u"\n"_s : QString());
        return line.isError ? kNotDone : kWell;
    }
    const Streams io{out, errors};
    const std::optional<DraftRecord> record = recordOf(line.options->record, io);
    if (!record) {
        return kNotDone;
    }
    switch (line.options->command) {
        case DraftOptions::Command::Show:
            return show(*line.options, *record, io);
        case DraftOptions::Command::Check:
            return check(*line.options, *record, io);
        case DraftOptions::Command::Picks:
            return writePicks(*line.options, *record, io);
    }
    return kNotDone;
}

}  // namespace packwise
