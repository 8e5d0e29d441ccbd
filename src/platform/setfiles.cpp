#include "platform/setfiles.h"

#include "platform/codepage.h"
#include "platform/userfolders.h"

#include <QDir>

#include <random>
#include <string>
#include <system_error>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QString usualCardFolder() {
    const QDir here = QDir::current();
    const QString cardFiles = u'*' + QString::fromLatin1(kCardFileExtension);
    return here.entryList({cardFiles}, QDir::Files).isEmpty() ? userCardFolder()
                                                              : here.absolutePath();
}

bool breaksMessages(const QString& setName) {
    return setName.contains(u'~') || setName.contains(u'|') || !fitsCodePage(setName);
}

QString fileOfSet(const std::filesystem::path& folder, const QString& setName,
                  std::string_view extension) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(folder, error);
    return fromBytes(setFileBase(toBytes(setName)) + std::string(extension)) +
           u" in the folder "_s +
           QDir::toNativeSeparators(
               QDir::cleanPath(QString::fromStdU16String((error ? folder : whole).u16string())));
}

SetFault tryFilesOf(const std::filesystem::path& folder, const QString& setName, bool alongLists) {
    std::mt19937 generator(1);  // any numbers will do, and the same ones at the next try
    const Draw draw = [&] { return std::uniform_real_distribution<double>(0, 1)(generator); };
    return trySet(folder, toBytes(setName), alongLists, draw);
}

QString wordsFor(SetFault fault, const std::filesystem::path& folder, const QString& setName) {
    switch (fault) {
        case SetFault::None:
            return {};
        case SetFault::CardsMissing:
            return u"There is no card file "_s + fileOfSet(folder, setName, kCardFileExtension) +
                   u'.';
        case SetFault::CardsUnusable:
            return u"The card file "_s + fileOfSet(folder, setName, kCardFileExtension) +
                   u" is damaged or cannot be read."_s;
        case SetFault::OrderUnusable:
            return u"The order file "_s + fileOfSet(folder, setName, kOrderFileExtension) +
                   u" is damaged or cannot be read."_s;
    }
    return {};
}

}  // namespace packwise
