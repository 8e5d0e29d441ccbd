#include "platform/timestamp.h"

#include "platform/codepage.h"

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
    for (const char32_t character :
         text.normalized(QString::NormalizationForm_C).toStdU32String()) {
        if (QChar::isDigit(character)) {
            plain += QString::number(QChar::digitValue(character));
        } else if (QChar::isSpace(character)) {
            plain += u' ';
        } else if (const QString one = QString::fromUcs4(&character, 1);
                   QChar::isPrint(character) && fitsCodePage(one)) {
            plain += one;
        }
    }
    return plain.simplified();
}

}  // namespace

QString timeStamp(const QDateTime& when, const QLocale& locale) {
    return toPlain(locale.toString(when.date(), dateFormat(locale)) + u' ' +
                   locale.toString(when.time(), timeFormat(locale)));
}

QString deckName(const QDateTime& when) {
    return u"draft-"_s + when.toString(u"MMddyyyy-HHmm"_s);
}

void stampPicks(PickLog& log, const QDateTime& when) {
    log.event = when.toString(u"yyyyMMddHHmm"_s).toStdString();
    log.time = when.toString(u"yyyy-MM-dd HH:mm:ss"_s).toStdString();
}

QString deckBase(const QString& deckFile) {
    const QString ending = u".dec"_s;
    return deckFile.endsWith(ending, Qt::CaseInsensitive) ? deckFile.chopped(ending.size())
                                                          : deckFile;
}

}  // namespace packwise
