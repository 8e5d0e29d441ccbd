// A filled circle or rectangle: lights, dots and bars whose colours carry state; and these colours.
#pragma once

#include <QColor>
#include <QWidget>

namespace packwise {

// What a light, a dot, a border or a place at the table can say.
namespace shade {
inline constexpr QColor black{0, 0, 0};
inline constexpr QColor white{255, 255, 255};
inline constexpr QColor grey{128, 128, 128};
inline constexpr QColor noDot{192, 192, 192};
inline constexpr QColor emptySeat{224, 224, 224};
inline constexpr QColor red{255, 0, 0};
inline constexpr QColor green{0, 255, 0};
inline constexpr QColor darkGreen{0, 192, 0};    // of the player's light, every other message
inline constexpr QColor darkerGreen{0, 127, 0};  // likewise of the host's lights
}  // namespace shade

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
