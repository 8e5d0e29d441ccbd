#include "companions/fakeclient.h"
#include "companions/frmsecurity.h"
#include "support/fakeshell.h"

namespace packwise {
namespace {

class Security : public testing::Test {
protected:
    Security() { window.show(); }

    FakeShell shell;
    FakeClient client;
    FrmSecurity window{shell, client};
};

TEST_F(Security, OneRowIsSelectedAcrossTheLists) {
    const auto allAt = [this](int row) {
        for (const ListBox* list : {window.lstNames, window.lstIP, window.lstCode}) {
            if (list->currentRow() != row || list->selectedItems().size() != 1 ||
                !list->item(row)->isSelected()) {
                return false;
            }
        }
        return true;
    };
    int row = 7;  // all eight are on show
    for (ListBox* list : {window.lstNames, window.lstIP, window.lstCode}) {
        ASSERT_TRUE(list->viewport()->rect().contains(middleOf(list, row)));
        clickRow(list, row, Qt::RightButton);
        EXPECT_TRUE(allAt(row)) << list->objectName().toStdString();
        QTest::mousePress(list->viewport(), Qt::LeftButton, {}, middleOf(list, 2));
        QTest::mouseMove(list->viewport(), middleOf(list, 4));
        EXPECT_TRUE(QTest::qWaitFor([&] { return allAt(list->currentRow()); }));
        QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, middleOf(list, 4));
        list->setCurrentRow(3);
        QTest::keyClick(list, Qt::Key_Up);
        EXPECT_TRUE(allAt(2));
        --row;
    }
}

TEST_F(Security, CopiesTheAddressAlone) {
    window.lstNames->setText(2, u"Fox"_s);
    window.lstIP->setText(2, u"10.0.0.7"_s);
    QClipboard* clipboard = QGuiApplication::clipboard();
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"double click", [this] { doubleClickRow(window.lstIP, 2); }},
        {"copy key", [this] { QTest::keySequence(window.lstIP, QKeySequence::Copy); }},
        {"enter", [this] { QTest::keyClick(window.lstIP, Qt::Key_Return); }}};
    for (const auto& [name, way] : ways) {
        clipboard->setText(u"before"_s);
        way();
        EXPECT_EQ(clipboard->text(), u"10.0.0.7"_s) << name;
    }
    clipboard->setText(u"before"_s);
    doubleClickRow(window.lstNames, 2);
    EXPECT_EQ(clipboard->text(), u"before"_s);
}

TEST_F(Security, ClosingIsTheEndUnlessADeckOrAConsoleIsOpen) {
    for (const FormId other : {FormId::DeckBuild, FormId::Server}) {
        shell.visible = {other};
        EXPECT_FALSE(window.closeByUser());
        EXPECT_TRUE(window.isVisible());
        EXPECT_FALSE(client.closed);
    }
    shell.visible = {FormId::Client, FormId::Message};
    EXPECT_TRUE(window.closeByUser());
    EXPECT_TRUE(client.closed);
    EXPECT_EQ(shell.savedForms, 1);
    EXPECT_TRUE(shell.ended());
}

}  // namespace
}  // namespace packwise
