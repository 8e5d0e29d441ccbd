#include "widgets/listbox.h"

#include "widgets/look.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QScrollBar>
#include <QToolTip>

namespace packwise {

QString RowDelegate::displayText(const QVariant& value, const QLocale& locale) const {
    return QStyledItemDelegate::displayText(value, locale).left(kMostDrawn);
}

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {
    setItemDelegate(new RowDelegate(this));
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
}

QString ListBox::text(int row) const {
    const QListWidgetItem* found = item(row);
    return found ? found->text() : QString();
}

void ListBox::setText(int row, const QString& text) {
    if (QListWidgetItem* found = item(row)) {
        found->setText(text);
    }
}

QStringList ListBox::texts() const {
    QStringList all;
    all.reserve(count());
    for (int row = 0; row < count(); ++row) {
        all += text(row);
    }
    return all;
}

int ListBox::selectedRow() const {
    const QList<QListWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? -1 : row(selected.first());
}

void ListBox::removeRow(int row) {
    const bool wasCurrent = row == currentRow();
    delete takeItem(row);
    if (wasCurrent) {
        setCurrentRow(-1);
    }
}

void ListBox::fill(int count, const QString& text) {
    clear();
    for (int row = 0; row < count; ++row) {
        addItem(text);
    }
}

QColor ListBox::textColor() const {
    return palette().color(QPalette::Active, QPalette::Text);
}

void ListBox::setTextColor(const QColor& color) {
    QPalette colors = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        colors.setColor(group, QPalette::Text, color);
    }
    setPalette(colors);
}

void ListBox::setShowOnly() {
    setEnabled(false);
    setFocusPolicy(Qt::NoFocus);
    setSelectionMode(QAbstractItemView::NoSelection);
    setTextColor(palette().color(QPalette::Active, QPalette::Text));
    QPalette colors = palette();
    colors.setColor(QPalette::Disabled, QPalette::Base,
                    colors.color(QPalette::Active, QPalette::Base));
    setPalette(colors);
}

int ListBox::heightForRows(int rows) const {
    const int row = count() > 0 ? sizeHintForRow(0) : fontMetrics().height();
    return rows * row + 2 * frameWidth();
}

bool ListBox::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QListWidgetItem* row = itemAt(help->pos());
        if (row && sizeHintForIndex(indexFromItem(row)).width() > viewport()->width()) {
            QToolTip::showText(help->globalPos(), plainToolTip(row->text().trimmed()), this);
            return true;
        }
    }
    return QListWidget::viewportEvent(event);
}

void ListBox::selectAll() {
    QListWidget::selectAll();
    if (currentRow() < 0 && !selectedItems().isEmpty()) {
        setCurrentItem(item(0), QItemSelectionModel::NoUpdate);
    }
}

void ListBox::keyboardSearch(const QString& search) {
    if (!search.trimmed().isEmpty()) {
        QListWidget::keyboardSearch(search);
    }
}

void ListBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT enterPressed();
    }
    QListWidget::keyPressEvent(event);
}

void ListBox::mousePressEvent(QMouseEvent* event) {
    QListWidget::mousePressEvent(event);
    Q_EMIT mouseDown(event->button());
}

void ListBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        QListWidget::mouseDoubleClickEvent(event);
    } else {
        mousePressEvent(event);
    }
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
    QListWidget::mouseMoveEvent(event);
    if (event->buttons() != Qt::NoButton) {
        Q_EMIT mouseDragged();
    }
}

void ListBox::focusInEvent(QFocusEvent* event) {
    const bool hadCurrent = currentRow() >= 0;
    QListWidget::focusInEvent(event);
    if (!hadCurrent) {
        // The focus alone makes no row current; the first arrow key then goes to the first row.
        setCurrentRow(-1);
    }
}

}  // namespace packwise
