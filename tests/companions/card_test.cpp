#include "companions/frmcard.h"
#include "support/fakeshell.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

std::string field(std::string_view text) {
    std::string bytes;
    bytes += static_cast<char>(text.size() & 0xFF);
    bytes += static_cast<char>(text.size() >> 8);
    return bytes.append(text);
}

std::string record(std::string_view name, std::string_view rarity, std::string_view text) {
    return field(name) + field(rarity) + field("B") + field("1B") + field("Creature") +
           field(text) + field("2/2");
}

class CardPopup : public testing::Test {
protected:
    CardPopup() { QDir::setCurrent(folder.path()); }
    ~CardPopup() override { QDir::setCurrent(before); }

    static void write(const QString& name, const std::string& records) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(std::string(6, '\0').append(records).c_str(),
                   static_cast<qint64>(6 + records.size()));
    }

    const std::string end = record("END", ".", "");
    QString before = QDir::currentPath();
    QTemporaryDir folder;
    FakeShell shell;
    FrmCard window{shell};
};

TEST_F(CardPopup, ShowsTheFirstSetThatHoldsTheCard) {
    write(u"IceAge.pw"_s, record("Night", "-", "ice night") + record("Fog", ".", "fog") + end);
    write(u"Alliance.pw"_s, record("Night", "+", "other night") +
                                record("Night Watch", "=", "watch") +
                                record("Caf\xE9 <b>", "+", "a < b & \x93") + end);
    write(u"Damaged.pw"_s, record("Night", "?", "damaged") + end);
    const std::string night = record("Nightfall", "-", "fall");
    write(u"Cut.pw"_s, record("Bat", "-", "bat") + night.substr(0, night.size() - 10));
    write(u"Endless.pw"_s, record("Bat", "-", "bat"));
    write(u"Torn.pw"_s, record("END", "?", "torn"));
    write(u"Long.pw"_s, record("Bat", "-", "bat") + "\xFF\xFFNight");
    struct Case {
        QStringList sets;
        QString card, name, text, rarity;
    };
    const Case cases[] = {
        {{u"Ice Age"_s, u"Alliances"_s}, u"Night"_s, u"Night"_s, u"ice night"_s, u"Common"_s},
        {{u"Alliances"_s, u"Ice Age"_s}, u"Night"_s, u"Night"_s, u"other night"_s, u"Rare"_s},
        {{u"Ice Age"_s, u"Ice Age"_s, u"Alliances"_s},
         u"Night Watch"_s,
         u"Night Watch"_s,
         u"watch"_s,
         u"Uncommon"_s},
        {{u"Alliances"_s}, u"Café <b>"_s, u"Café <b>"_s, u"a < b & “"_s, u"Rare"_s},
        {{u"Ice Age"_s}, u"Fog"_s, u"Fog"_s, u"fog"_s, u"Rare"_s},  // "." keeps the rarity
        {{u"Ice Age"_s, u"Alliances"_s}, u"night"_s, u"night"_s, u"Card not found"_s, u"Rare"_s},
        {{u"Nowhere"_s}, u"Night"_s, u"Night"_s, u"Card not found"_s, u"Rare"_s},
        {{u"Nowhere"_s, u""_s, u"Ice Age"_s}, u"Night"_s, u"Night"_s, u"ice night"_s, u"Common"_s},
        {{u"Damaged"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
        {{u"Cut"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
        {{u"Endless"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
        {{u"Long"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
        {{u"Cut"_s, u"Alliances"_s}, u"Night"_s, u"Night"_s, u"other night"_s, u"Rare"_s},
        {{u"Torn"_s}, u"Night"_s, u"Error in datafile"_s, u"other night"_s, u"Rare"_s},
        {{}, u"Night"_s, u"Scanning..."_s, u"other night"_s, u"Rare"_s}};
    for (const Case& one : cases) {
        window.hide();
        QStringList sets = one.sets;
        sets.resize(6);
        window.Card(one.card, sets);
        const std::string where = sets.join(u',').toStdString() + ": " + one.card.toStdString();
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(window.lblName->text(), one.name) << where;
        EXPECT_EQ(window.lblText->text(), one.text) << where;
        EXPECT_EQ(window.lblRarity->text(), one.rarity) << where;
    }
    EXPECT_EQ(window.lblCost->text(), u"1B"_s);
    EXPECT_EQ(window.lblType->text(), u"Creature"_s);
    EXPECT_EQ(window.lblPT->text(), u"2/2"_s);
}

TEST_F(CardPopup, APressAnywhereClosesIt) {
    for (QWidget* place :
         {static_cast<QWidget*>(&window), static_cast<QWidget*>(window.lblName),
          static_cast<QWidget*>(window.lblText), static_cast<QWidget*>(window.lblPT),
          static_cast<QWidget*>(window.lblRarity)}) {
        window.Card(u"Night"_s, {});
        ASSERT_TRUE(window.isVisible());
        QTest::mousePress(place, Qt::RightButton);
        EXPECT_FALSE(window.isVisible());
    }
}

TEST_F(CardPopup, IsMovedIntoView) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (const QPoint place : {screen.topRight(), screen.bottomLeft(), QPoint(-5000, 5000)}) {
        window.placeAt(place.x() * 15, place.y() * 15);
        EXPECT_TRUE(screen.contains(window.geometry())) << place.x() << ' ' << place.y();
    }
}

}  // namespace
}  // namespace packwise
