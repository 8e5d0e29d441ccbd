#include "platform/form.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

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
