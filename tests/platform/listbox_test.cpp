#include "platform/listbox.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(ListBox, RemovingTheCurrentRowLeavesNoneCurrentAndAnotherLeavesItOnItsCard) {
    ListBox list;
    list.addItems({u"a"_s, u"b"_s, u"c"_s});
    list.setCurrentRow(2);
    list.removeRow(0);
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(list.text(list.currentRow()), u"c"_s);
    list.removeRow(1);
    EXPECT_EQ(list.currentRow(), -1);
    EXPECT_EQ(list.texts(), QStringList{u"b"_s});
}

TEST(ListBox, RowsOutsideTheListAreHarmless) {
    ListBox list;
    list.fill(8, u" "_s);
    list.setText(8, u"x"_s);
    list.setText(-1, u"x"_s);
    list.removeRow(8);
    EXPECT_EQ(list.text(9), QString());
    EXPECT_EQ(list.texts(), QStringList(8, u" "_s));
}

TEST(ListBox, ThePressedRowIsCurrentWhenThePressIsTold) {
    ListBox list;
    list.addItems({u"a"_s, u"b"_s});
    list.show();
    int rowAtPress = -1;
    QObject::connect(&list, &ListBox::mouseDown, &list, [&] { rowAtPress = list.currentRow(); });
    QTest::mousePress(list.viewport(), Qt::RightButton, {},
                      list.visualItemRect(list.item(1)).center());
    EXPECT_EQ(rowAtPress, 1);
}

}  // namespace
}  // namespace packwise
