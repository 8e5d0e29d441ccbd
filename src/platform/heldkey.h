// Tells a key that is held down from one that is pressed anew.
#pragma once

#include <QKeyEvent>

namespace packwise {

class HeldKey {
public:
    // To be given each key event of a widget in turn. True for a press of a key that has been down
    // before. Under X11 such a press follows a release of the same time, and QKeyEvent knows it as
    // a repetition only when both have come in one piece.
    bool isRepeated(const QKeyEvent& event) {
        if (event.type() == QEvent::KeyRelease) {
            released_ = event.key();
            when_ = event.timestamp();
        }
        const bool sameTime = when_ != 0 && event.key() == released_ && event.timestamp() == when_;
        return event.type() == QEvent::KeyPress && (event.isAutoRepeat() || sameTime);
    }

private:
    int released_ = 0;  // the last key that went up
    quint64 when_ = 0;  // and the time of that, in milliseconds
};

}  // namespace packwise
