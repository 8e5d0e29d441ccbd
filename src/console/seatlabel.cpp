#include "console/seatlabel.h"

#include "widgets/look.h"
#include "widgets/shape.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kTextMargin = 6;

}  // namespace

SeatLabel::SeatLabel(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void SeatLabel::setCaption(const QString& caption) {
    caption_ = caption;
    setAccessibleName(caption);
    updateTip();
    update();
}

void SeatLabel::setLost(bool lost) {
    lost_ = lost;
    updateTip();
    update();
}

void SeatLabel::updateTip() {
    setToolTip(lost_ ? u"<span>"_s + caption_.toHtmlEscaped() +
                           u" is lost; cards are picked at random</span>"_s
                     : tipForCut(caption_, *this, width() - 2 * kTextMargin));
}

void SeatLabel::setBackColor(const QColor& color) {
    backColor_ = color;
    update();
}

void SeatLabel::describe(int position, bool selected) {
    setAccessibleDescription(u"position %1"_s.arg(position + 1) +
                             (lost_ ? u", lost"_s : QString()) +
                             (selected ? u", selected"_s : QString()));
}

void SeatLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Dark));
    painter.setBrush(backColor_);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    QFont writing = font();
    writing.setStrikeOut(lost_);
    painter.setFont(writing);
    const bool onWhite = backColor_ == shade::white;
    painter.setPen(onWhite && lost_ ? palette().color(QPalette::PlaceholderText)
                   : onWhite        ? shade::black
                                    : shade::white);
    const QRect inside = rect().adjusted(kTextMargin, 0, -kTextMargin, 0);
    painter.drawText(inside, Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(caption_, Qt::ElideRight, inside.width()));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(3, 3, -3, -3));
    }
}

void SeatLabel::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
}

void SeatLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

}  // namespace packwise
