#include "widgets/messageboxes.h"

#include "support/test.h"

#include <QMessageBox>

namespace packwise {
namespace {

TEST(MessageBoxes, AQuestionIsAnsweredNoUnlessYesIsChosen) {
    struct Row {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool yes;
    };
    for (const Row& row : {Row{Qt::Key_Return, {}, false}, Row{Qt::Key_Escape, {}, false},
                           Row{Qt::Key_Space, {}, false}, Row{Qt::Key_Y, Qt::AltModifier, true}}) {
        QTimer::singleShot(0, qApp, [&row] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
            EXPECT_EQ(box->escapeButton(), box->button(QMessageBox::No));
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_TRUE(QTest::qWaitForWindowActive(box));
            QTest::keyClick(box->windowHandle(), row.key, row.modifiers);
        });
        MessageBoxes boxes;
        EXPECT_EQ(boxes.show(nullptr, Box{u"Quit <b>?"_s, u"Title"_s, BoxButtons::YesNo,
                                          BoxIcon::Exclamation}),
                  row.yes)
            << row.key;
    }
}

}  // namespace
}  // namespace packwise
