#include "client/clientworld.h"
#include "client/elidedlabel.h"

#include <QTextDocument>

namespace packwise {
namespace {

TEST(ClientDispatch, ShowsWhatOthersWriteAsPlainText) {
    const std::string evil = "<b>x</b>&lt;i>\x01\x07\x1b[2J\x9d\x7f";
    ClientWorld world;
    world.join();
    std::string sets;
    for (int pack = 0; pack < 6; ++pack) {
        sets += evil + '|';
    }
    world.tell("NAME0" + evil + "~NAME1" + evil + "~ADDR1" + evil + "~SEAT00~SEAT11~PAKS" + sets +
               "~INFOR0~MESG" + evil + "~ROUN" + evil + "~BOOSU" + evil + "|BOther|~STAT" + evil +
               "~");
    FrmClient& client = world.frmClient();
    client.lstPack->setCurrentRow(0);
    client.lstPack_MouseDown();  // the card's text, and why there is none
    world.tell("TURN1~RPCK00~REVW~");
    world.server.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return client.wskClient->state() == Socket::Closed; }));

    int shown = 0;
    for (const QWidget* widget : QApplication::allWidgets()) {
        QStringList texts{widget->toolTip(), widget->property("text").toString(),
                          widget->accessibleName(), widget->accessibleDescription()};
        if (const auto* list = qobject_cast<const ListBox*>(widget)) {
            texts += list->texts();
        }
        const auto* label = qobject_cast<const QLabel*>(widget);
        const bool richLabel =
            label && label->textFormat() != Qt::PlainText && Qt::mightBeRichText(label->text());
        const bool richTip =
            !qobject_cast<const ElidedLabel*>(widget) && widget->toolTip().contains(u"<b>"_s);
        EXPECT_FALSE(richLabel || richTip) << widget->objectName().toStdString();
        for (const QString& text : texts) {
            shown += text.contains(u"x</b>"_s) ? 1 : 0;
            EXPECT_FALSE(std::ranges::any_of(text, [](QChar letter) {
                return letter.category() == QChar::Other_Control && letter != u'\n';
            })) << widget->objectName().toStdString();
        }
    }
    EXPECT_GT(shown, 15);
}

TEST(ClientDispatch, TakesAnyCommandAtAnyTime) {
    const char* const messages[] = {"BOOSUa|~", "RPCK70!~", "TURN1~",   "REVW~",  "RPAU~",
                                    "BSTA7~",   "RSTA7~",   "INFOZ~",   "INFOR~", "ROUN~",
                                    "SNOW~",    "DROP7~",   "DROP7~",   "BOOS~",  "INFOR15~",
                                    "INFOB~",   "OVER~",    "BOOSUb|~", "OVER~",  "CODE7-32768~"};
    ClientWorld world;
    world.join();
    for (const char* message : messages) {
        world.tell(message);
        world.frmClient->tmrReview->stop();
        world.frmClient->tmrRoch->stop();
    }
    EXPECT_EQ(world.frmSecurity->lstCode->text(7), u"-32768"_s);
    EXPECT_EQ(world.frmDeckBuild->lstSB->texts(), QStringList{u" "_s});  // filled once
    EXPECT_EQ(world.frmClient->lstHistory->count(), 2);
    const QStringList before = world.frmClient->lstHistory->texts();
    world.tell("INFOR0~BOOSUOne|GTwo|~RPCK02~RPCK014~");  // rows that the pack does not have
    EXPECT_EQ(world.frmClient->lstHistory->texts(), before);
}

}  // namespace
}  // namespace packwise
