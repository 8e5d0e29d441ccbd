// A label of plain text. A text that does not fit is set in a smaller font, then cut, with the
// whole text as its tool tip.
#pragma once

#include <QLabel>

namespace packwise {

// A tool tip that shows the text as it stands, whatever tags it seems to hold.
QString plainToolTip(const QString& text);

class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QFont fittingFont() const;
    QString shownText() const;
};

}  // namespace packwise
