#include "widgets/listbox.h"

#include "support/test.h"

#include <QHelpEvent>
#include <QToolTip>

namespace packwise {
namespace {

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

TEST(ListBox, TellsACutRowAsItStands) {
    ListBox list;
    list.addItems({u"Fire & Ice"_s, u"<b>Fire</b> & Ice"_s});
    list.resize(40, 60);
    list.show();
    const QString tips[] = {u"Fire & Ice"_s, u"<span>&lt;b&gt;Fire&lt;/b&gt; &amp; Ice</span>"_s};
    for (int row = 0; row < list.count(); ++row) {
        const QPoint place = list.visualItemRect(list.item(row)).center();
        QHelpEvent help(QEvent::ToolTip, {10, place.y()}, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &help);
        EXPECT_EQ(QToolTip::text(), tips[row]);
    }
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
