// A drop-down list of sets that shows the chosen one as the list does: grey when its file is
// missing.
#pragma once

#include <QComboBox>

namespace packwise {

class SetBox : public QComboBox {
    Q_OBJECT
public:
    explicit SetBox(QWidget* parent);

    // Takes over the chosen row's look and what is told of it.
    void followChoice();

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace packwise
