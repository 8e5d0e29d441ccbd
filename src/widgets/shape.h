// A filled circle or rectangle: lights, dots and bars whose colours carry state.
#pragma once

#include <QColor>
#include <QWidget>

namespace packwise {

enum class ShapeKind { Circle, Rectangle };

class Shape : public QWidget {
    Q_OBJECT
public:
    explicit Shape(ShapeKind kind, QWidget* parent = nullptr);

    QColor fillColor() const { return fillColor_; }
    void setFillColor(const QColor& color);

    // Solid or transparent.
    bool isFilled() const { return filled_; }
    void setFilled(bool filled);

    // Drawn or not.
    bool hasBorder() const { return bordered_; }
    void setBordered(bool bordered);

    QColor borderColor() const { return borderColor_; }
    void setBorderColor(const QColor& color);

    // Takes fill colour, fill and border of another shape; the border keeps its own colour.
    void takeLookOf(const Shape& other);

    QSize sizeHint() const override { return {9, 9}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ShapeKind kind_;
    QColor fillColor_{Qt::white};
    QColor borderColor_{Qt::black};
    bool filled_ = true;
    bool bordered_ = true;
};

}  // namespace packwise
