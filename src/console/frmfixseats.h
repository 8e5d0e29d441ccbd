// Fix Seating: the host arranges the players round the table before the draft. The eight labels
// are the store of the seating: the player on lblSeat(p) sits at table position p. OK and the
// close box are the same, the seating of that moment counts.
#pragma once

#include "console/seatlabel.h"
#include "protocol/framing.h"
#include "widgets/form.h"
#include "widgets/shell.h"

#include <array>

class QLabel;
class QPushButton;

namespace packwise {

class FrmFixSeats : public Form {
    Q_OBJECT
public:
    explicit FrmFixSeats(Shell& shell);

    // A ring, by table position: grey when not in use, white with a player, red when selected.
    std::array<SeatLabel*, kSeats> lblSeat;
    QLabel* Label1;
    QPushButton* cmdOK;

    int seatChosen = -1;  // table position of the selected label, or -1

    // Puts all places out of use.
    void clear();

    // Puts a player, by name and seat index, at a table position.
    void seat(int position, const QString& name, int seatIndex);

    // The player of that seat index is gone; the place is kept.
    void lose(int seatIndex);

    void lblSeat_Click(int index);
    void cmdOK_Click();

Q_SIGNALS:
    // The host is done and the window is off the screen.
    void seated();

protected:
    bool queryUnload(UnloadMode mode) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int position);

    Shell& shell_;
};

}  // namespace packwise
