// The row of eight bars that switch colours of the sorted list on and off. The frame itself takes
// the mouse and the keyboard: left and right choose a bar, the blank switches it, with Ctrl or
// Shift it shows that colour alone.
#pragma once

#include "client/cardcolors.h"
#include "widgets/shape.h"

#include <QWidget>

#include <array>

namespace packwise {

class ColorBars : public QWidget {
    Q_OBJECT
public:
    static constexpr int kBarWidth = 240;   // twips
    static constexpr int kBarHeight = 135;  // twips

    explicit ColorBars(QWidget* parent);

    std::array<Shape*, kColors> bars;  // by colour index

    // Puts into words what the bars show: `has` says of which colours there are cards.
    void describe(const std::array<bool, kColors>& has);

    // The bar that the keyboard would switch.
    int chosenBar() const { return chosen_; }

Q_SIGNALS:
    // A mouse button has gone down at that place, in twips from the frame's corner, or the
    // keyboard asked for the same.
    void mouseDown(Qt::MouseButton button, int x, int y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void showChosen();

    int chosen_ = 0;
    QWidget* mark_;  // shows the chosen bar while the frame has the focus
};

}  // namespace packwise
