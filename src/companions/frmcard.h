// The card popup: one card's details, found by reading the card files of the draft's sets in the
// current directory anew at each call. Its labels are its whole state. It never takes the focus
// from the window beside it; a press of the mouse on it closes it.
#pragma once

#include "widgets/form.h"
#include "widgets/shape.h"
#include "widgets/shell.h"

#include <QString>
#include <QStringList>

class QLabel;

namespace packwise {

struct CardRecord;

class FrmCard : public Form {
    Q_OBJECT
public:
    explicit FrmCard(Shell& shell);

    Shape* shaBorder;
    QLabel* lblName;
    QLabel* lblCost;
    QLabel* lblType;
    QLabel* lblText;
    QLabel* lblPT;
    QLabel* lblRarity;

    // Places the window at `left` and `top` in twips, to the right of its caller; at its left when
    // that is off the caller's screen, and without room there either, where it covers as little as
    // can be of `list`, in which the card was chosen. `caller` and `list` are on the desktop, in
    // device-independent pixels.
    void placeAt(int left, int top, const QRect& caller, const QRect& list);

    // Shows the card of that name (without colour code) from the first of the sets that holds it.
    // `sets` are display names in draft order; empty ones are passed over. The event loop does not
    // run in the meantime.
    void Card(const QString& name, const QStringList& sets);

    void Form_MouseDown();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void layOut();
    // Sets that could not be looked through, by their files; empty for none.
    void tellMissing(const QStringList& files);
    void showRecord(const QString& name, const CardRecord& record);
};

}  // namespace packwise
