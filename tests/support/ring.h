// Controls that stand in a ring.
#pragma once

#include "support/test.h"

#include <QLineF>

namespace packwise {

// The controls go once round their middle, clockwise.
template <typename Ring>
void expectClockwise(const Ring& ring) {
    QRectF around;
    for (const QWidget* place : ring) {
        around |= place->geometry();
    }
    double turn = 0;
    for (std::size_t place = 0; place < ring.size(); ++place) {
        const QWidget* const after = ring[(place + 1) % ring.size()];
        const QLineF here(around.center(), QRectF(ring[place]->geometry()).center());
        const QLineF next(around.center(), QRectF(after->geometry()).center());
        const double step = next.angleTo(here);
        EXPECT_GT(step, 0) << ring[place]->objectName().toStdString();
        turn += step;
    }
    EXPECT_NEAR(turn, 360, 0.1) << ring.front()->objectName().toStdString();
}

}  // namespace packwise
