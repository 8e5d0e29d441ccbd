// A list of card names. Its rows have a fixed height, so that other controls can stand beside
// them; a name that does not fit is cut, and shown whole in a tool tip.
#pragma once

#include "widgets/heldkey.h"
#include "widgets/listbox.h"

namespace packwise {

class CardList : public ListBox {
    Q_OBJECT
public:
    static constexpr int kRowHeight = 13;      // device-independent pixels
    static constexpr int kFontPixelSize = 11;  // what fits into such a row

    explicit CardList(QWidget* parent = nullptr);

Q_SIGNALS:
    // A double click with the left button, or Enter, on the selected row.
    void chosen();
    // The blank key on the selected row: its card is to be shown.
    void lookedAt();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    HeldKey held_;
};

}  // namespace packwise
