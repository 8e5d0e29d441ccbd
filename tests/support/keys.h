// Keys as a window gets them from the system, repeats included.
#pragma once

#include "support/test.h"

namespace packwise {

// A key goes down in the window, repeats three times and comes up.
inline void holdKey(const QWidget& window, Qt::Key key, const QString& text = {},
                    Qt::KeyboardModifiers modifiers = {}) {
    for (int press = 0; press < 4; ++press) {
        qt_handleKeyEvent(window.windowHandle(), QEvent::KeyPress, key, modifiers, text, press > 0);
        QCoreApplication::processEvents();
    }
    qt_handleKeyEvent(window.windowHandle(), QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::processEvents();
}

}  // namespace packwise
