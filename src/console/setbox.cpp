#include "console/setbox.h"

#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace packwise {

SetBox::SetBox(QWidget* parent) : QComboBox(parent) {
    setPlaceholderText(QStringLiteral("choose a set"));
    connect(this, &QComboBox::currentIndexChanged, this, &SetBox::followChoice);
}

void SetBox::followChoice() {
    setToolTip(currentData(Qt::ToolTipRole).toString());
    setAccessibleDescription(currentData(Qt::AccessibleDescriptionRole).toString());
    update();
}

void SetBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    // The frame and the arrow stay as they are: a grey arrow would mean a box that cannot be used.
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    QVariant color = currentData(Qt::ForegroundRole);
    if (currentIndex() < 0) {
        option.currentText = placeholderText();
        color = palette().placeholderText();
    }
    if (color.isValid()) {
        option.palette.setBrush(QPalette::ButtonText, color.value<QBrush>());
    }
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}  // namespace packwise
