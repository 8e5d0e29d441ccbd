#include "widgets/shape.h"

#include <QPainter>

namespace packwise {

Shape::Shape(ShapeKind kind, QWidget* parent) : QWidget(parent), kind_(kind) {
    setFocusPolicy(Qt::NoFocus);
}

void Shape::setFillColor(const QColor& color) {
    fillColor_ = color;
    update();
}

void Shape::setFilled(bool filled) {
    filled_ = filled;
    update();
}

void Shape::setBordered(bool bordered) {
    bordered_ = bordered;
    update();
}

void Shape::setBorderColor(const QColor& color) {
    borderColor_ = color;
    update();
}

void Shape::takeLookOf(const Shape& other) {
    fillColor_ = other.fillColor_;
    filled_ = other.filled_;
    bordered_ = other.bordered_;
    update();
}

void Shape::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, kind_ == ShapeKind::Circle);
    painter.setPen(bordered_ ? QPen(borderColor_, 1) : QPen(Qt::NoPen));
    painter.setBrush(filled_ ? QBrush(fillColor_) : QBrush(Qt::NoBrush));
    const QRectF inside = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (kind_ == ShapeKind::Circle) {
        painter.drawEllipse(inside);
    } else {
        painter.drawRect(inside);
    }
}

}  // namespace packwise
