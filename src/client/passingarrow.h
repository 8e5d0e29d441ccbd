// A curved arrow that tells which way packs go round the table.
#pragma once

#include <QWidget>

namespace packwise {

class PassingArrow : public QWidget {
    Q_OBJECT
public:
    PassingArrow(bool clockwise, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool clockwise_;
};

}  // namespace packwise
