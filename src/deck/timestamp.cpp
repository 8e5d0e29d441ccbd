#include "deck/timestamp.h"

#include "common/codepage.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

QString dateFormat(const QLocale& locale) {
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(u"yyyy"_s)) {
        format.replace(u"yy"_s, u"yyyy"_s);
    }
    return format;
}

QString timeFormat(const QLocale& locale) {
    QString format = locale.timeFormat(QLocale::ShortFormat);
    if (!format.contains(u's')) {
        format = locale.timeFormat(QLocale::LongFormat);
        static const QRegularExpression zone(u"[\\s(\\[]*t+[)\\]]*\\s*"_s);
        format.remove(zone);
    }
    return format.contains(u's') ? format : u"HH:mm:ss"_s;
}

// Digits of any script become those of the code page, blanks of any width a blank.
QString toPlain(const QString& text) {
    QString plain;
    for (const QChar character : text.normalized(QString::NormalizationForm_C)) {
        if (character.isDigit()) {
            plain += QString::number(character.digitValue());
        } else if (character.isSpace()) {
            plain += u' ';
        } else if (character.isPrint() && fitsCodePage(character)) {
            plain += character;
        }
    }
    return plain.simplified();
}

}  // namespace

QString timeStamp(const QDateTime& when, const QLocale& locale) {
    return toPlain(locale.toString(when.date(), dateFormat(locale)) + u' ' +
                   locale.toString(when.time(), timeFormat(locale)));
}

}  // namespace packwise
