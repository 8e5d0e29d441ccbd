// A label of plain text. A text that does not fit is set in a smaller font, then cut, with the
// whole text as its tool tip. What setToolTip() takes is plain text, too.
#pragma once

#include <QLabel>

namespace packwise {

class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    // As much of the text as can matter: a character for each pixel, and one that does not fit.
    QString start() const;
    QFont fittingFont() const;
    QString shownText() const;
};

}  // namespace packwise
