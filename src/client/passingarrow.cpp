#include "client/passingarrow.h"

#include <QPainter>
#include <QPainterPath>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

PassingArrow::PassingArrow(bool clockwise, QWidget* parent)
    : QWidget(parent), clockwise_(clockwise) {
    setAccessibleName(clockwise ? u"Packs go clockwise"_s : u"Packs go counter-clockwise"_s);
    setToolTip(accessibleName());
}

void PassingArrow::paintEvent(QPaintEvent*) {
    // Drawn clockwise in a field of 100 by 100, mirrored for the other way: an open circle whose
    // end at the right points down.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(width() / 100.0, height() / 100.0);
    if (!clockwise_) {
        painter.translate(100, 0);
        painter.scale(-1, 1);
    }
    const QColor ink(70, 70, 90);
    painter.setPen(QPen(ink, 11, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(QRectF(18, 18, 64, 64), -60 * 16, -290 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    QPainterPath head;
    head.moveTo(62, 46);
    head.lineTo(100, 46);
    head.lineTo(81, 74);
    head.closeSubpath();
    painter.drawPath(head);
}

}  // namespace packwise
