#include "client/cardlist.h"

#include "widgets/look.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace packwise {

namespace {

class CardDelegate : public RowDelegate {
public:
    using RowDelegate::RowDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        // No width of its own: the list gives the row all it has and cuts the rest.
        return {1, CardList::kRowHeight};
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        constexpr int kTextMargins = 8;
        const QString name = index.data().toString();
        const bool cut =
            view->fontMetrics().horizontalAdvance(name.left(kMostDrawn)) + kTextMargins >
            option.rect.width();
        QToolTip::showText(event->globalPos(), cut ? plainToolTip(name) : view->toolTip(), view);
        return true;
    }
};

}  // namespace

CardList::CardList(QWidget* parent) : ListBox(parent) {
    setItemDelegate(new CardDelegate(this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setSelectionMode(QAbstractItemView::SingleSelection);
    QFont small = font();
    small.setPixelSize(kFontPixelSize);
    setFont(small);
    connect(this, &QListWidget::doubleClicked, this, &CardList::chosen);
}

void CardList::keyPressEvent(QKeyEvent* event) {
    const bool repeated = held_.isRepeated(*event);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!enter && event->key() != Qt::Key_Space) {
        ListBox::keyPressEvent(event);
        return;
    }
    // A key that is held down must not go on to the next pack.
    if (!repeated && selectedRow() >= 0) {
        enter ? Q_EMIT chosen() : Q_EMIT lookedAt();
    }
}

void CardList::keyReleaseEvent(QKeyEvent* event) {
    held_.isRepeated(*event);
    ListBox::keyReleaseEvent(event);
}

}  // namespace packwise
