#include "sets/cardfolder.h"

#include "platform/setfiles.h"
#include "platform/userfolders.h"
#include "sets/registry.h"
#include "sets/samplesets.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

namespace {

// Makes the user's card folder in one step, so that a program that starts at the same time finds
// it whole. Gives the sets that were put into it; none when it could not be made.
QStringList makeUserCardFolder() {
    QDir().mkpath(userDataFolder());
    QTemporaryDir work(userCardFolder() + u"-XXXXXX"_s);
    const QStringList names = work.isValid() ? buildSampleSets(work.path()) : QStringList();
    if (names.isEmpty() || !QDir().rename(work.path(), userCardFolder())) {
        return {};
    }
    work.setAutoRemove(false);
    for (const QString& name : names) {
        QString error;
        registerSet(name, error);  // not where another set's name leads to the same files
    }
    return names;
}

}  // namespace

CardFolder findCardFolder() {
    const QDir here = QDir::current();
    const auto named = [](const QString& path) -> QString {
        return u"Card sets: "_s + QDir::toNativeSeparators(path);
    };
    const QString usual = usualCardFolder();
    if (QFileInfo(usual).isDir()) {
        return {usual, named(usual)};
    }
    const QString users = userCardFolder();
    const QStringList samples = makeUserCardFolder();
    if (!samples.isEmpty()) {
        return {users, named(users) + u", made with the sample sets "_s + samples.join(u" and "_s)};
    }
    if (QFileInfo(users).isDir()) {  // another program was faster
        return {users, named(users)};
    }
    return {here.absolutePath(), u"There are no card sets here, and the folder "_s +
                                     QDir::toNativeSeparators(users) + u" cannot be made."_s};
}

}  // namespace packwise::sets
