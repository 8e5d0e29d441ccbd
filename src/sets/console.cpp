#include "sets/console.h"

#include "platform/codepage.h"
#include "sets/cardfolder.h"

#include <QDir>
#include <QFileInfo>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

std::filesystem::path pathOf(const QString& path) {
    return std::filesystem::path(path.toStdU16String());
}

QString lineOf(const QString& file, const Fault& fault) {
    QString line =
        file + u": "_s + (fault.warning ? u"warning: "_s : QString()) + fromBytes(fault.what);
    return fault.where.empty() ? line : line + u", "_s + fromBytes(fault.where);
}

bool tellFaults(const QString& file, const std::vector<Fault>& faults, const Streams& io) {
    bool usable = true;
    for (const Fault& fault : faults) {
        io.err << lineOf(file, fault) << "\n";
        usable = usable && fault.warning;
    }
    return usable;
}

std::optional<int> parse(QCommandLineParser& parser, const QStringList& arguments,
                         const Streams& io) {
    const QCommandLineOption help = parser.addHelpOption();
    if (!parser.parse(arguments)) {
        io.err << "packwise-sets: " << parser.errorText() << "\n";
        return kWrongUse;
    }
    if (parser.isSet(help)) {
        io.out << parser.helpText();
        return kDone;
    }
    return std::nullopt;
}

std::optional<int> needFolder(const QString& folder, const Streams& io) {
    if (QFileInfo(folder).isDir()) {
        return std::nullopt;
    }
    io.err << folder << ": there is no such folder\n";
    return kFailed;
}

QString folderOr(const QString& named, const Streams& io) {
    if (!named.isEmpty()) {
        return named;
    }
    const CardFolder folder = findCardFolder();
    io.err << folder.words << "\n";
    return folder.path;
}

std::optional<int> makeFolder(const QString& folder, const Streams& io) {
    if (QFileInfo(folder).isDir()) {
        return std::nullopt;
    }
    if (QDir().mkpath(folder)) {
        io.out << folder << ": a new folder\n";
        return std::nullopt;
    }
    io.err << folder << ": this folder cannot be made\n";
    return kFailed;
}

}  // namespace packwise::sets
