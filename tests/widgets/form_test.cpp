#include "widgets/form.h"

#include "support/test.h"

namespace packwise {
namespace {

class StubbornForm : public Form {
public:
    StubbornForm() : Form(u"frmTest"_s, u"Test"_s, FormBorder::Fixed) {}
    bool mayClose = false;
    std::vector<UnloadMode> asked;

protected:
    bool queryUnload(UnloadMode mode) override {
        asked.push_back(mode);
        return mayClose;
    }
};

TEST(Form, RestoresWhatCanBeReadOfAPlaceAndStaysOnAScreen) {
    struct Case {
        QString stored;
        int left;
        int top;
    };
    const Case cases[] = {
        {u"1500 3000"_s, 3000, 1500},
        {u"0 0"_s, 0, 0},
        {u"750.4 1500"_s, 1500, 750},
        {u"1500 x"_s, 150, 1500},  // the top is set, the left stays
        {u"x 1500"_s, 150, 300},   // nothing is set
        {u""_s, 150, 300},
        {u"1500"_s, 150, 1500},
        {u"900000 900000"_s, 150, 300},  // on no screen
        {u"-30000 0"_s, 150, 300},
        {u"1e99 5"_s, 150, 300},
        {u"nan nan"_s, 150, 300},
    };
    for (const Case& c : cases) {
        StubbornForm form;
        form.setSizeTwips(3000, 3000);
        form.setLeftTwips(150);
        form.setTopTwips(300);
        form.restorePlace(c.stored);
        EXPECT_EQ(form.leftTwips(), c.left) << c.stored.toStdString();
        EXPECT_NEAR(form.topTwips(), c.top, 8) << c.stored.toStdString();
        EXPECT_EQ(form.place(), c.stored) << "not shown, so nothing new to store";
        form.present();
        EXPECT_NE(form.place(), u"900000 900000"_s);
        EXPECT_EQ(form.place(),
                  QString::number(form.topTwips()) + u' ' + QString::number(form.leftTwips()));
    }
}

TEST(Form, AWindowWithoutAStoredPlaceCoversNoOther) {
    const QRect screen(0, 0, 1000, 800);
    const QSize size(400, 300);
    EXPECT_EQ(freePlace(size, {}, screen), QPoint(0, 0));
    EXPECT_EQ(freePlace(size, {QRect(QPoint(), size)}, screen), QPoint(0, 300));
    QList<QRect> taken;
    for (int window = 0; window < 4; ++window) {  // four have room, the fifth has to overlap
        const QRect rect(freePlace(size, taken, screen), size);
        EXPECT_TRUE(screen.contains(rect));
        for (const QRect& other : taken) {
            EXPECT_FALSE(other.intersects(rect)) << window;
        }
        taken += rect;
    }
    EXPECT_FALSE(taken.contains(QRect(freePlace(size, taken, screen), size)));

    StubbornForm first;
    first.setSizeTwips(3000, 3000);
    first.restorePlace(u"0 0"_s);
    first.show();
    StubbornForm second;
    second.setSizeTwips(3000, 3000);
    second.restorePlace(u"0 0"_s);
    EXPECT_EQ(second.place(), u"0 0"_s);
    second.show();
    EXPECT_FALSE(second.geometry().intersects(first.geometry()));
}

TEST(Form, AWindowThatGrowsIsMovedIntoTheWorkArea) {
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    StubbornForm form;
    form.setSizeTwips(3000, 3000);
    form.move(area.bottomRight() - QPoint(250, 250));
    form.show();
    form.setSizeTwips(6000, 7200);
    form.moveIntoWorkArea();
    EXPECT_TRUE(area.contains(form.frameGeometry()));
    const QPoint place = form.pos();
    form.setSizeTwips(3000, 3000);
    form.moveIntoWorkArea();
    EXPECT_EQ(form.pos(), place);
    form.setSizeTwips(3000, 30000);  // more than the screen has: its title bar is in view
    form.moveIntoWorkArea();
    EXPECT_EQ(form.y(), area.y());
}

TEST(Form, MayRefuseToCloseAndKnowsWhoAsks) {
    StubbornForm form;
    form.setSizeTwips(3000, 3000);
    form.present();
    EXPECT_FALSE(form.closeByUser());
    EXPECT_TRUE(form.isVisible());
    form.mayClose = true;
    EXPECT_TRUE(form.close());
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.asked, (std::vector{UnloadMode::User, UnloadMode::Code}));
}

}  // namespace
}  // namespace packwise
