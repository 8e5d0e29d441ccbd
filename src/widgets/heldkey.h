// Tells a key that is held down from one that is pressed anew. What it repeats must press nothing:
// the button that it meets may have come under it a moment ago.
#pragma once

#include <QKeyEvent>
#include <QObject>

namespace packwise {

class HeldKey {
public:
    // To be given each key event of a widget in turn. True for a press of a key that has been down
    // before, and for the QEvent::ShortcutOverride that goes ahead of it. Under X11 such a press
    // follows a release of the same time, and QKeyEvent knows it as a repetition only when both
    // have come in one piece.
    bool isRepeated(const QKeyEvent& event) {
        if (event.type() == QEvent::KeyRelease) {
            released_ = event.key();
            when_ = event.timestamp();
        }
        const bool sameTime = when_ != 0 && event.key() == released_ && event.timestamp() == when_;
        return event.type() != QEvent::KeyRelease && (event.isAutoRepeat() || sameTime);
    }

private:
    int released_ = 0;  // the last key that went up
    quint64 when_ = 0;  // and the time of that, in milliseconds
};

// Whether a key of that number (Qt::Key) presses the button that has the focus.
bool pressesButtons(int key);

// While it lives, no repeated key presses a button in any window of the process, neither by the
// focus nor as the button's letter nor as the Enter of a window or of a box of one line. All else
// reaches text boxes, lists and scroll bars. Several may live at once.
class HeldKeys : public QObject {
public:
    HeldKeys();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    HeldKey key_;
    bool repeats_ = false;  // the key that is looked up among the shortcuts
};

}  // namespace packwise
