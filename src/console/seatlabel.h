// A place at the table in Fix Seating: a label that can be pressed with the mouse or from the
// keyboard, and that carries the player who sits there.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QString>

namespace packwise {

class SeatLabel : public QAbstractButton {
    Q_OBJECT
public:
    explicit SeatLabel(QWidget* parent = nullptr);

    // The player's name as it stands, "-" for a place that is not in use.
    const QString& caption() const { return caption_; }
    void setCaption(const QString& caption);

    const QColor& backColor() const { return backColor_; }
    void setBackColor(const QColor& color);

    // Whether the player who sits there is gone.
    bool isLost() const { return lost_; }
    void setLost(bool lost);

    // What a screen reader tells of the label: its table position, 0 to 7, its being selected, and
    // a player who is gone.
    void describe(int position, bool selected);

    // The player's seat index, or -1.
    int seatIndex = -1;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // Its first press has counted; a second one would take the selection back.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void updateTip();

    QString caption_;
    bool lost_ = false;
    QColor backColor_;
};

}  // namespace packwise
