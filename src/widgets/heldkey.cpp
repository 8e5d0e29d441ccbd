#include "widgets/heldkey.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLineEdit>
#include <QWidget>

namespace packwise {

namespace {

// A window presses its default button on an Enter that none of its controls has taken, and a box
// of one line does nothing with it but to tell its window.
bool answersToEnter(const QObject* watched) {
    return qobject_cast<const QLineEdit*>(watched) ||
           (watched->isWidgetType() && static_cast<const QWidget*>(watched)->isWindow());
}

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

bool pressesButtons(int key) {
    return key == Qt::Key_Space || isEnter(key) || key == Qt::Key_Select;
}

HeldKeys::HeldKeys() {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
            // Goes ahead of every QEvent::Shortcut, which does not tell.
            repeats_ = key_.isRepeated(*static_cast<QKeyEvent*>(event));
            return false;
        case QEvent::Shortcut:
            return repeats_ && qobject_cast<QAbstractButton*>(watched);
        case QEvent::KeyRelease:
        case QEvent::KeyPress: {
            const auto& key = *static_cast<QKeyEvent*>(event);
            return key_.isRepeated(key) &&
                   ((pressesButtons(key.key()) && qobject_cast<QAbstractButton*>(watched)) ||
                    (isEnter(key.key()) && answersToEnter(watched)));
        }
        default:
            return false;
    }
}

}  // namespace packwise
