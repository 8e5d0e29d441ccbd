#include "sets/samplesets.h"

#include "platform/codepage.h"
#include "sets/sheet.h"
#include "sets/textsource.h"
#include "sets/writer.h"

#include <QDir>
#include <QFile>

#include <filesystem>

namespace packwise::sets {

using namespace Qt::Literals::StringLiterals;

QStringList buildSampleSets(const QString& folder) {
    QStringList names;
    const QDir sources(u":/sets"_s);
    for (const QString& file : sources.entryList(QDir::Files, QDir::Name)) {
        QFile input(sources.filePath(file));
        std::string error;
        if (!input.open(QIODevice::ReadOnly)) {
            return {};
        }
        SetSource source = readTextSource(input.readAll()).source;
        layOutSheets(source);
        if (writeSetFiles(source, std::filesystem::path(folder.toStdU16String()), error) ==
            WriteResult::Failed) {
            return {};
        }
        names += fromBytes(source.displayName);
    }
    return names;
}

}  // namespace packwise::sets
