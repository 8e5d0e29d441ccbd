// The card popup: one card's details, found by reading the card files of the draft's sets in the
// current directory anew at each call. Its labels are its whole state. It never takes the focus
// from the window beside it; a press of the mouse on it closes it.
#pragma once

#include "common/shell.h"
#include "platform/form.h"
#include "platform/shape.h"

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

    // Places the window beside its caller, at `left` and `top` in twips, or as near to that as
    // keeps all of it on the caller's screen.
    void placeAt(int left, int top);

    // Shows the card of that name (without colour code) from the first of the sets that holds it.
    // `sets` are display names in draft order; empty ones are passed over. The event loop does not
    // run in the meantime.
    void Card(const QString& name, const QStringList& sets);

    void Form_MouseDown();

protected:
    void mousePressEvent(QMouseEvent* event) override;

private:
    void layOut();
    void showRecord(const QString& name, const CardRecord& record);
};

}  // namespace packwise
