#include "widgets/heldkey.h"

#include "support/keys.h"
#include "widgets/form.h"
#include "widgets/listbox.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace packwise {
namespace {

// A window with a default button.
class EnterForm : public Form {
public:
    EnterForm() : Form(u"frmTest"_s, u"Test"_s, FormBorder::Sizable) {}
    int enters = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override { enters += event->key() == Qt::Key_Return; }
};

TEST(HeldKeys, PressNoButtonAndServeEverythingElse) {
    EnterForm window;
    QVBoxLayout layout(&window);
    QPushButton button(u"&Go"_s);
    button.setAutoDefault(true);
    QCheckBox check(u"&Check"_s);
    QLineEdit edit;
    ListBox list;
    list.fill(9, u"row"_s);
    QScrollBar bar(Qt::Vertical);
    bar.setFocusPolicy(Qt::StrongFocus);
    for (QWidget* control : std::initializer_list<QWidget*>{&button, &check, &edit, &list, &bar}) {
        layout.addWidget(control);
    }
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
    int returns = 0;
    QObject::connect(&edit, &QLineEdit::returnPressed, [&returns] { ++returns; });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    const HeldKeys one;
    const HeldKeys two;  // of another program in the process
    button.setFocus();
    holdKey(window, Qt::Key_Return);
    EXPECT_EQ(clicks, 1);
    holdKey(window, Qt::Key_Space, u" "_s);
    EXPECT_EQ(clicks, 2);
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {  // a repeat in two pieces
        QKeyEvent repeat(type, Qt::Key_Return, {});
        repeat.setTimestamp(7);
        QCoreApplication::sendEvent(&button, &repeat);
    }
    EXPECT_EQ(clicks, 2);
    check.setFocus();
    check.setChecked(false);
    holdKey(window, Qt::Key_Space, u" "_s);
    EXPECT_TRUE(check.isChecked());
    edit.setFocus();
    edit.clear();
    holdKey(window, Qt::Key_Return);
    EXPECT_EQ(window.enters, 1);
    EXPECT_EQ(returns, 1) << "what opens a window must not press its button through its text box";
    holdKey(window, Qt::Key_A, u"a"_s);
    EXPECT_EQ(edit.text(), u"aaaa"_s);
    list.setFocus();
    list.setCurrentRow(0);
    holdKey(window, Qt::Key_Down);
    EXPECT_EQ(list.currentRow(), 4);
    bar.setFocus();
    bar.setValue(0);
    holdKey(window, Qt::Key_Down);
    EXPECT_EQ(bar.value(), 4);

    edit.setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_G, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&clicks] { return clicks == 3; }));
    qt_handleKeyEvent(window.windowHandle(), QEvent::KeyPress, Qt::Key_G, Qt::AltModifier, u"g"_s,
                      true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(button.isDown()) << "pressed by its letter";
    EXPECT_EQ(edit.text(), u"aaaa"_s);
}

}  // namespace
}  // namespace packwise
