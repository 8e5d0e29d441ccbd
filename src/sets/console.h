// What the commands of packwise-sets share: streams, exit statuses, options and lines of faults.
#pragma once

#include "sets/setsource.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <filesystem>
#include <optional>
#include <vector>

namespace packwise::sets {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUse = 2;

struct Streams {
    QTextStream& out;
    QTextStream& err;
};

std::filesystem::path pathOf(const QString& path);

// "file: what, where".
QString lineOf(const QString& file, const Fault& fault);

// Tells every fault of a source. Whether the source can be used.
bool tellFaults(const QString& file, const std::vector<Fault>& faults, const Streams& io);

// Parses what follows a command's name. Nothing but an exit status when the command is not to run.
std::optional<int> parse(QCommandLineParser& parser, const QStringList& arguments,
                         const Streams& io);

// kFailed, and told, when there is no such folder.
std::optional<int> needFolder(const QString& folder, const Streams& io);

// The folder that an option names, or the one of the card sets where it names none; which one is
// told then.
QString folderOr(const QString& named, const Streams& io);

// Makes a folder, with all above it, and tells so, unless it is there. Nothing but an exit status
// when it cannot be made.
std::optional<int> makeFolder(const QString& folder, const Streams& io);

}  // namespace packwise::sets
