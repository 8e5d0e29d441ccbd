#include "platform/commandline.h"

#include <QDir>
#include <QFileInfo>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QStringList typedFiles(const QStringList& words) {
#ifdef Q_OS_WIN
    return expandPatterns(words);
#else
    return words;
#endif
}

QStringList expandPatterns(const QStringList& words) {
    QStringList files;
    for (const QString& word : words) {
        const QFileInfo typed(word);
        QString pattern = typed.fileName();
        QStringList fitting;
        if ((pattern.contains(u'*') || pattern.contains(u'?')) && !typed.exists()) {
            // Brackets are letters like others to that system.
            pattern.replace(u'[', u"[[]"_s);
            fitting = typed.dir().entryList({pattern}, QDir::Files, QDir::Name);
        }
        if (fitting.isEmpty()) {
            files += word;
        }
        for (const QString& name : fitting) {
            files += word.chopped(typed.fileName().size()) + name;
        }
    }
    return files;
}

}  // namespace packwise
