#include "server/seatlabel.h"

#include "platform/look.h"

#include <QKeyEvent>
#include <QPainter>

namespace packwise {

namespace {

constexpr int kTextMargin = 6;

}  // namespace

SeatLabel::SeatLabel(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void SeatLabel::setCaption(const QString& caption) {
    caption_ = caption;
    setAccessibleName(caption);
    setToolTip(tipForCut(caption, *this, width() - 2 * kTextMargin));
    update();
}

void SeatLabel::setBackColor(const QColor& color) {
    backColor_ = color;
    update();
}

void SeatLabel::describe(int position, bool selected) {
    const QString place = QStringLiteral("position %1").arg(position + 1);
    setAccessibleDescription(selected ? place + QStringLiteral(", selected") : place);
}

void SeatLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Dark));
    painter.setBrush(backColor_);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(backColor_ == QColor(Qt::white) ? Qt::black : Qt::white);
    const QRect inside = rect().adjusted(kTextMargin, 0, -kTextMargin, 0);
    painter.drawText(inside, Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(caption_, Qt::ElideRight, inside.width()));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(3, 3, -3, -3));
    }
}

void SeatLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

}  // namespace packwise
