#include "platform/codepage.h"

#include "engine/cp1252.h"

#include <algorithm>

namespace packwise {

QString fromBytes(std::string_view bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.data(),
                   [](char byte) { return QChar(cp1252::characterOf(byte)); });
    return text;
}

QString screenText(std::string_view bytes) {
    QString text = fromBytes(bytes);
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) { return character.category() == QChar::Other_Control; }, u'?');
    return text;
}

std::string toBytes(const QString& input) {
    const QString text = input.normalized(QString::NormalizationForm_C);
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    QChar before;
    for (const QChar character : text) {
        const bool pair = before.isHighSurrogate() && character.isLowSurrogate();
        before = character;
        if (pair) {
            continue;  // its first half has become the "?"
        }
        const int byte = cp1252::byteOf(character.unicode());
        bytes += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return bytes;
}

bool fitsCodePage(const QString& input) {
    const QString text = input.normalized(QString::NormalizationForm_C);
    return std::all_of(text.begin(), text.end(),
                       [](QChar character) { return cp1252::byteOf(character.unicode()) >= 0; });
}

}  // namespace packwise
