#include "widgets/form.h"

#include "widgets/twips.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace packwise {

namespace {

struct Frame {
    int width;
    int height;
};

constexpr Frame frameOf(FormBorder border) {
    switch (border) {
        case FormBorder::Fixed:
        case FormBorder::Dialog:
            return {90, 330};
        case FormBorder::Sizable:
            return {120, 405};
        case FormBorder::None:
            break;
    }
    return {0, 0};
}

Qt::WindowFlags flagsOf(FormBorder border) {
    if (border == FormBorder::None) {
        return Qt::Window | Qt::FramelessWindowHint;
    }
    const Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    return border == FormBorder::Dialog ? flags : flags | Qt::WindowMinimizeButtonHint;
}

// What is stored for a window that has never been closed in its place.
const QString kNeverPlaced = QStringLiteral("0 0");
// What a window manager may put round a window, in device-independent pixels.
constexpr QSize kFrameAllowance(8, 32);

bool readWhole(QStringView text, int& number) {
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::abs(value) > 1e6) {
        return false;
    }
    number = static_cast<int>(std::lround(value));
    return true;
}

bool isOnSomeScreen(const QRect& rect) {
    // A strip of the title bar that can be grasped is enough.
    const QRect grip(rect.left(), rect.top(), rect.width(), 30);
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect seen = screen->availableGeometry().intersected(grip);
        if (seen.width() >= 40 && seen.height() >= 10) {
            return true;
        }
    }
    return false;
}

}  // namespace

int readNumberPair(const QString& text, int& first, int& second) {
    const qsizetype blank = text.indexOf(u' ');
    const QStringView view(text);
    if (!readWhole(blank < 0 ? view : view.left(blank), first)) {
        return 0;
    }
    if (blank < 0 || !readWhole(view.mid(blank + 1), second)) {
        return 1;
    }
    return 2;
}

QPoint freePlace(const QSize& size, const QList<QRect>& taken, const QRect& screen) {
    QList<QPoint> places{screen.topLeft()};
    for (const QRect& rect : taken) {
        // Below comes first: at the right of a window is where it shows a card.
        places +=
            {QPoint(rect.left(), rect.bottom() + 1), QPoint(rect.right() + 1, rect.top()),
             QPoint(screen.left(), rect.bottom() + 1), QPoint(rect.right() + 1, screen.top())};
    }
    for (const QPoint& place : places) {
        const QRect rect(place, size);
        if (screen.contains(rect) &&
            std::none_of(taken.begin(), taken.end(),
                         [&rect](const QRect& other) { return other.intersects(rect); })) {
            return place;
        }
    }
    const int steps = static_cast<int>(taken.size() % 10);
    return screen.topLeft() + QPoint(steps, steps) * 24;
}

Form::Form(const QString& name, const QString& caption, FormBorder border)
    : QWidget(nullptr, flagsOf(border)), border_(border) {
    setObjectName(name);
    setWindowTitle(caption);
}

int Form::leftTwips() const {
    return toTwips(pos().x());
}

int Form::topTwips() const {
    return toTwips(pos().y());
}

int Form::widthTwips() const {
    return toTwips(width()) + frameOf(border_).width;
}

int Form::heightTwips() const {
    return toTwips(height()) + frameOf(border_).height;
}

void Form::setLeftTwips(int left) {
    move(toPixels(left), pos().y());
}

void Form::setTopTwips(int top) {
    move(pos().x(), toPixels(top));
}

void Form::setSizeTwips(int width, int height) {
    const Frame frame = frameOf(border_);
    setClientSizeTwips(width - frame.width, height - frame.height);
}

void Form::setClientSizeTwips(int width, int height) {
    const QSize size(toPixels(width), toPixels(height));
    if (border_ == FormBorder::Sizable) {
        resize(size);
    } else {
        setFixedSize(size);
    }
}

void Form::restorePlace(const QString& stored) {
    int top = topTwips();
    int left = leftTwips();
    if (readNumberPair(stored, top, left) > 0) {
        const QPoint target(toPixels(left), toPixels(top));
        if (isOnSomeScreen(QRect(target, size()))) {
            move(target);
        }
    }
    storedPlace_ = stored;
    restoredTo_ = pos();
    wasShown_ = isVisible();
}

QString Form::place() const {
    if (storedPlace_ && !wasShown_ && pos() == restoredTo_) {
        return *storedPlace_;
    }
    return QString::number(topTwips()) + u' ' + QString::number(leftTwips());
}

void Form::setRoomTwips(int width, int height) {
    room_ = QSize(toPixels(width), toPixels(height));
}

void Form::setVisible(bool visible) {
    if (visible && !wasShown_ && storedPlace_ == kNeverPlaced && pos() == restoredTo_) {
        findPlace();
    }
    QWidget::setVisible(visible);
}

void Form::findPlace() {
    QList<QRect> taken;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const auto* form = qobject_cast<const Form*>(widget);
        if (form && form != this && form->isVisible()) {
            const QSize size = form->room_.expandedTo(form->size());
            taken += QRect(form->pos(), size + kFrameAllowance);
        }
    }
    move(freePlace(room_.expandedTo(size()) + kFrameAllowance, taken,
                   screen()->availableGeometry()));
}

void Form::moveIntoWorkArea() {
    // Without a window manager's frame yet, the usual one.
    const QSize frame = frameGeometry().size() - size();
    const QSize outer = size() + (frame.isEmpty() ? kFrameAllowance : frame);
    const QRect area = screen()->availableGeometry();
    const auto inside = [](int at, int length, int first, int room) {
        return std::max(std::min(at, first + room - length), first);
    };
    move(inside(x(), outer.width(), area.x(), area.width()),
         inside(y(), outer.height(), area.y(), area.height()));
}

void Form::present() {
    show();
    raise();
    activateWindow();
}

bool Form::closeByUser() {
    closingByUser_ = true;
    const bool closed = close();
    closingByUser_ = false;
    return closed;
}

bool Form::queryUnload(UnloadMode) {
    return true;
}

void Form::closeEvent(QCloseEvent* event) {
    const bool byUser = closingByUser_ || event->spontaneous();
    // A box that is shown while the window asks may bring a second close; it starts anew.
    closingByUser_ = false;
    if (queryUnload(byUser ? UnloadMode::User : UnloadMode::Code)) {
        event->accept();
    } else {
        event->ignore();
    }
}

void Form::showEvent(QShowEvent* event) {
    wasShown_ = true;
    QWidget::showEvent(event);
}

void Form::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) {
        if (isActiveWindow()) {
            Q_EMIT gotFocus();
        } else {
            Q_EMIT lostFocus();
        }
    }
}

}  // namespace packwise
