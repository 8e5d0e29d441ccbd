#include "demo/samplesets.h"

#include "platform/codepage.h"
#include "sets/sheet.h"
#include "sets/textsource.h"
#include "sets/writer.h"

#include <QDir>
#include <QFile>

#include <filesystem>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QStringList buildSampleSets(const QString& folder) {
    QStringList names;
    const QDir sources(u":/sets"_s);
    for (const QString& file : sources.entryList(QDir::Files, QDir::Name)) {
        QFile input(sources.filePath(file));
        if (!input.open(QIODevice::ReadOnly)) {
            continue;
        }
        sets::SetSource source = sets::readTextSource(input.readAll()).source;
        sets::layOutSheets(source);
        std::string error;
        if (sets::writeSetFiles(source, std::filesystem::path(folder.toStdU16String()), error) !=
            sets::WriteResult::Failed) {
            names += fromBytes(source.displayName);
        }
    }
    return names;
}

}  // namespace packwise
