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

    // What a screen reader tells of the label: its table position, 0 to 7, and its being selected.
    void describe(int position, bool selected);

    // The player's seat index, or -1.
    int seatIndex = -1;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString caption_;
    QColor backColor_;
};

}  // namespace packwise
