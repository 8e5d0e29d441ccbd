#include "client/elidedlabel.h"

#include "widgets/look.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace packwise {

namespace {

constexpr int kLeastFontPixels = 10;

}  // namespace

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QString ElidedLabel::start() const {
    return text().left(std::max(contentsRect().width(), 0) + 1);
}

QFont ElidedLabel::fittingFont() const {
    QFont fitting = font();
    while (fitting.pixelSize() > kLeastFontPixels &&
           QFontMetrics(fitting).horizontalAdvance(start()) > contentsRect().width()) {
        fitting.setPixelSize(fitting.pixelSize() - 1);
    }
    return fitting;
}

QString ElidedLabel::shownText() const {
    return QFontMetrics(fittingFont()).elidedText(start(), Qt::ElideRight, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setFont(fittingFont());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                          isEnabled(), shownText(), foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
    const bool isCut = event->type() == QEvent::ToolTip && shownText() != text();
    if (event->type() == QEvent::ToolTip && (isCut || !toolTip().isEmpty())) {
        const QString whole = !isCut                ? toolTip()
                              : toolTip().isEmpty() ? text()
                                                    : text() + u": " + toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(whole), this);
        return true;
    }
    return QLabel::event(event);
}

}  // namespace packwise
