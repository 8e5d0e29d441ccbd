#include "client/colorbars.h"

#include "widgets/look.h"
#include "widgets/twips.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

class FocusMark : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect inside = rect().adjusted(0, 0, -1, -1);
        painter.setPen(Qt::white);
        painter.drawRect(inside);
        painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
        painter.drawRect(inside);
    }
};

}  // namespace

ColorBars::ColorBars(QWidget* parent) : QWidget(parent), mark_(new FocusMark(this)) {
    setFocusPolicy(Qt::StrongFocus);
    for (int index = 0; index < kColors; ++index) {
        const auto at = static_cast<std::size_t>(index);
        auto* bar = new Shape(ShapeKind::Rectangle, this);
        placeControl(*bar, {index * kBarWidth, 0, kBarWidth, kBarHeight},
                     u"shaBar(%1)"_s.arg(index), kCardColors[at].spokenName());
        bar->setFillColor(kCardColors[at].bar);
        bar->setBorderColor(shade::black);
        bar->setAttribute(Qt::WA_TransparentForMouseEvents);
        bars[at] = bar;
    }
    mark_->setAttribute(Qt::WA_TransparentForMouseEvents);
    mark_->raise();
    mark_->hide();
    describe({});
}

void ColorBars::describe(const std::array<bool, kColors>& has) {
    QStringList shown;
    QStringList hidden;
    for (std::size_t index = 0; index < bars.size(); ++index) {
        const QString name = kCardColors[index].spokenName();
        const bool white = bars[index]->borderColor() == shade::white;
        bars[index]->setAccessibleDescription(white        ? u"shown"_s
                                              : has[index] ? u"hidden"_s
                                                           : u"no cards"_s);
        if (white) {
            shown += name;
        } else if (has[index]) {
            hidden += name;
        }
    }
    const QString none = u"none"_s;
    const QString state = u"Shown: "_s + (shown.isEmpty() ? none : shown.join(u", "_s)) +
                          u". Hidden: "_s + (hidden.isEmpty() ? none : hidden.join(u", "_s)) + u'.';
    setAccessibleDescription(state);
    setToolTip(state + u"\nClick a bar to switch its colour, right-click to see it alone."_s);
}

void ColorBars::mousePressEvent(QMouseEvent* event) {
    const QPointF at = event->position() * kTwipsPerPixel;
    const int x = static_cast<int>(std::floor(at.x()));
    chosen_ = std::clamp(x / kBarWidth, 0, kColors - 1);
    showChosen();
    Q_EMIT mouseDown(event->button(), x, static_cast<int>(std::floor(at.y())));
}

void ColorBars::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            chosen_ = std::clamp(chosen_ + (event->key() == Qt::Key_Left ? -1 : 1), 0, kColors - 1);
            showChosen();
            return;
        case Qt::Key_Space: {
            const bool alone = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
            Q_EMIT mouseDown(alone ? Qt::RightButton : Qt::LeftButton,
                             chosen_ * kBarWidth + kBarWidth / 2, kBarHeight / 2);
            return;
        }
        default:
            QWidget::keyPressEvent(event);
    }
}

void ColorBars::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    showChosen();
}

void ColorBars::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    showChosen();
}

void ColorBars::showChosen() {
    mark_->setGeometry(bars[static_cast<std::size_t>(chosen_)]->geometry().adjusted(2, 2, -2, -2));
    mark_->setVisible(hasFocus());
}

}  // namespace packwise
