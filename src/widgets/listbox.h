// A list box whose rows are read and written by index. It never sorts.
#pragma once

#include <QColor>
#include <QListWidget>
#include <QStyledItemDelegate>

namespace packwise {

// Draws the rows. Of a row's text, which may be another's and as long as a message, only the start
// is measured and drawn.
class RowDelegate : public QStyledItemDelegate {
public:
    static constexpr int kMostDrawn = 1000;  // characters

    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override;
};

class ListBox : public QListWidget {
    Q_OBJECT
public:
    explicit ListBox(QWidget* parent = nullptr);

    // Rows are counted from 0; a row outside the list reads as "" and is not written.
    QString text(int row) const;
    void setText(int row, const QString& text);
    QStringList texts() const;

    // The selected row, the first of several, or -1. Not the current row: the keyboard's place may
    // be on a row that is not selected, and a press that is dragged selects a row before it makes
    // it current.
    int selectedRow() const;

    // Removes a row. If it was the current one, no row is current afterwards.
    void removeRow(int row);

    // Makes the list `count` rows of that text.
    void fill(int count, const QString& text);

    QColor textColor() const;
    void setTextColor(const QColor& color);

    // A list that only shows: no focus, no selection, text and paper in full colour.
    void setShowOnly();

    // A list with a selection has a current row: the first when none was.
    void selectAll() override;

    // Goes to the next row that begins with what is typed. Blanks find nothing: they select, and
    // rows that are blank are no goal.
    void keyboardSearch(const QString& search) override;

    // The height that shows `rows` rows without scrolling, in device-independent pixels.
    int heightForRows(int rows) const;

Q_SIGNALS:
    // A mouse button has gone down in the list; the row under it is current by then.
    void mouseDown(Qt::MouseButton button);
    // The mouse has moved over the list with a button held.
    void mouseDragged();
    // Enter has been pressed in the list.
    void enterPressed();

protected:
    // A row that is wider than the list is told whole in its tool tip.
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    // Only the left button makes a double click; with another one it is a second press.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
};

}  // namespace packwise
