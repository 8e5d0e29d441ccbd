#include "deck/timestamp.h"

#include "common/codepage.h"
#include "support/test.h"

#include <QDateTime>
#include <QLocale>

namespace packwise {
namespace {

const QDateTime kMorning(QDate(2026, 11, 18), QTime(6, 25, 38));

TEST(TimeStamp, FollowsTheUsersSettings) {
    const std::pair<QString, QString> cases[] = {{u"en_US"_s, u"11/18/2026 6:25:38 AM"_s},
                                                 {u"de_DE"_s, u"18.11.2026 06:25:38"_s},
                                                 {u"en_GB"_s, u"18/11/2026 06:25:38"_s}};
    for (const auto& [locale, stamp] : cases) {
        EXPECT_EQ(timeStamp(kMorning, QLocale(locale)), stamp);
    }
}

// Whatever the language, the stamp survives the way into the file and tells the second.
TEST(TimeStamp, HoldsSecondsAndTheCodePageAloneInEveryLanguage) {
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString stamp = timeStamp(kMorning, locale);
        const std::string where = locale.name().toStdString() + ": " + stamp.toStdString();
        EXPECT_TRUE(fitsCodePage(stamp)) << where;
        EXPECT_TRUE(stamp.contains(u"38"_s)) << where;
        EXPECT_TRUE(stamp.contains(u"25"_s)) << where;
        EXPECT_FALSE(stamp.contains(u"  "_s)) << where;
    }
}

}  // namespace
}  // namespace packwise
