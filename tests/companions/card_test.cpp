#include "companions/frmcard.h"
#include "engine/samplefiles.h"
#include "support/fakeshell.h"

namespace packwise {
namespace {

class CardPopup : public testing::Test {
protected:
    CardPopup() { QDir::setCurrent(QString::fromStdString(folder.path().string())); }
    ~CardPopup() override { QDir::setCurrent(before); }

    static std::string card(const char* name, const char* rarity, const char* text) {
        return sample::record(name, rarity, "B", text);
    }
    void write(const char* name, const std::string& records) const {
        folder.write(name, sample::header(0, 0, 0) + records);
    }

    const std::string end = sample::end();
    QString before = QDir::currentPath();
    sample::TempFolder folder;
    FakeShell shell;
    FrmCard window{shell};
};

TEST_F(CardPopup, ShowsTheFirstSetThatHoldsTheCard) {
    write("IceAge.pw", card("Night", "-", "ice night") + card("Fog", ".", "fog") + end);
    write("Alliance.pw", card("Night", "+", "other night") + card("Night Watch", "=", "watch") +
                             card("Caf\xE9 <b>", "+", "a < b & \x93") + end);
    write("Damaged.pw", card("Night", "?", "damaged") + end);
    const std::string night = card("Nightfall", "-", "fall");
    write("Cut.pw", card("Bat", "-", "bat") + night.substr(0, night.size() - 10));
    write("Torn.pw", card("END", "?", "torn"));
    write("Long.pw", card("Bat", "-", "bat") + "\xFF\xFFNight");
    struct Case {
        QStringList sets;
        QString card, name, text, rarity;
    };
    const Case cases[] = {
        {{u"Ice Age"_s, u"Alliances"_s}, u"Night"_s, u"Night"_s, u"ice night"_s, u"Common"_s},
        {{u"Alliances"_s, u"Ice Age"_s}, u"Night"_s, u"Night"_s, u"other night"_s, u"Rare"_s},
        {{u"Alliances"_s}, u"Café <b>"_s, u"Café <b>"_s, u"a < b & “"_s, u"Rare"_s},
        {{u"Ice Age"_s}, u"Fog"_s, u"Fog"_s, u"fog"_s, u"Rare"_s},  // "." keeps the rarity
        {{u"Ice Age"_s, u"Alliances"_s}, u"night"_s, u"night"_s, u"Card not found"_s, u"Rare"_s},
        {{u"Nowhere"_s}, u"Night"_s, u"Night"_s, u"Card not found"_s, u"Rare"_s},
        {{u"Nowhere"_s, u""_s, u"Ice Age"_s}, u"Night"_s, u"Night"_s, u"ice night"_s, u"Common"_s},
        {{u"Damaged"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
        {{u"Cut"_s}, u"Night"_s, u"Error in datafile"_s, u"ice night"_s, u"Common"_s},
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
    window.Card(u"Night"_s, {u"Nowhere"_s, u"Torn"_s});
    const QString why = window.lblText->accessibleDescription();
    EXPECT_TRUE(why.contains(u"Nowhere.pw"_s) &&
                why.contains(QDir::toNativeSeparators(QDir::currentPath())));
    EXPECT_FALSE(why.contains(u"Torn"_s));
    EXPECT_TRUE(window.lblText->toolTip().contains(why));
    window.Card(u"Night"_s, {u"Nowhere"_s, u"Ice Age"_s});
    EXPECT_EQ(window.lblText->toolTip(), QString());
    EXPECT_EQ(window.lblCost->text(), u"1U"_s);
    EXPECT_EQ(window.lblType->text(), u"Creature"_s);
    EXPECT_EQ(window.lblPT->text(), u"1/1"_s);
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

TEST_F(CardPopup, StandsBesideItsCallerOnTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const int right = screen.right();
    struct Case {
        QRect caller, list;
        bool coversCaller;
    };
    const Case cases[] = {
        {{10, 10, 300, 300}, {20, 20, 100, 100}, false},
        {{right - 300, 10, 300, 300}, {right - 290, 20, 100, 100}, false},
        {{right - 300, screen.bottom() - 20, 300, 300}, {right - 290, 20, 100, 100}, false},
        {{-5000, 5000, 300, 300}, {-5000, 5000, 100, 100}, false},
        {{10, 300, screen.width() - 20, 300}, {20, 310, 100, 100}, false},  // room above it alone
        {screen, {20, 20, screen.width() / 2, screen.height()}, true},
        {screen, {screen.width() / 2, 20, screen.width() / 2, screen.height()}, true}};
    for (const Case& c : cases) {
        window.placeAt((c.caller.right() + 16) * 15, c.caller.top() * 15, c.caller, c.list);
        const std::string where = std::to_string(c.caller.x()) + ' ' + std::to_string(c.list.x());
        EXPECT_TRUE(screen.contains(window.geometry())) << where;
        EXPECT_FALSE(window.geometry().intersects(c.list)) << where;
        EXPECT_EQ(window.geometry().intersects(c.caller), c.coversCaller) << where;
    }
}

}  // namespace
}  // namespace packwise
