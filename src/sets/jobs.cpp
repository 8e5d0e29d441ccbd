#include "sets/jobs.h"

#include "platform/codepage.h"
#include "sets/registry.h"
#include "sets/writer.h"

#include <algorithm>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// Whether no two sources, and no source and another registered set, lead to the same files.
bool haveOwnFiles(const std::vector<Job>& jobs, bool withRegistered, const QString& renaming,
                  const Streams& io) {
    bool own = true;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const QString name = fromBytes(jobs[i].source.displayName);
        const auto before = std::find_if(
            jobs.begin(), jobs.begin() + static_cast<std::ptrdiff_t>(i), [&](const Job& job) {
                return fileBase(fromBytes(job.source.displayName))
                           .compare(fileBase(name), Qt::CaseInsensitive) == 0;
            });
        const bool clash = before != jobs.begin() + static_cast<std::ptrdiff_t>(i);
        const QString rival = clash            ? fromBytes(before->source.displayName)
                              : withRegistered ? rivalOf(name)
                                               : QString();
        if (clash || !rival.isEmpty()) {
            io.err << jobs[i].file
                   << u": \"%1\" leads to the same files as the set \"%2\"; names "
                      u"must differ in their first eight letters; give another name %3\n"_s.arg(
                          name, rival, renaming);
            own = false;
        }
    }
    return own;
}

bool buildOne(const Job& job, const QString& folder, bool registering, const Streams& io) {
    std::string failure;
    const WriteResult result = writeSetFiles(job.source, pathOf(folder), failure);
    const QString name = fromBytes(job.source.displayName);
    if (result == WriteResult::Failed) {
        io.err << job.file << ": " << QString::fromStdString(failure) << "\n";
        return false;
    }
    QString error;
    if (registering && !registerSet(name, error)) {
        io.err << job.file << ": " << error << "\n";
        return false;
    }
    io.out << name
           << (result == WriteResult::UpToDate  ? ": up to date"
               : result == WriteResult::Written ? ": written"
                                                : ": written, without an order file")
           << "\n";
    return true;
}

}  // namespace

int writeSets(const std::vector<Job>& jobs, const QString& named, bool registering,
              const QString& renaming, const Streams& io) {
    if (!haveOwnFiles(jobs, registering, renaming, io)) {
        io.err << "packwise-sets: nothing was written\n";
        return kFailed;
    }
    const QString folder = folderOr(named, io);
    if (const auto status = makeFolder(folder, io)) {
        return *status;
    }
    bool good = true;
    for (const Job& job : jobs) {
        good = buildOne(job, folder, registering, io) && good;
    }
    return good ? kDone : kFailed;
}

}  // namespace packwise::sets
