// Draft Information: the players' names, addresses and deck security codes, one row each. The three
// lists are the only store, written from outside by row = seat index. Closing this window is the
// normal end of the program for a player who has saved a deck.
#pragma once

#include "companions/clientlink.h"
#include "widgets/form.h"
#include "widgets/listbox.h"
#include "widgets/shell.h"

class QLabel;

namespace packwise {

class FrmSecurity : public Form {
    Q_OBJECT
public:
    FrmSecurity(Shell& shell, ClientLink& client);

    // Eight rows each, " " where there is nothing to tell.
    QLabel* lblName;
    ListBox* lstNames;
    QLabel* lblIP;
    ListBox* lstIP;
    QLabel* lblCode;
    ListBox* lstCode;

    // Copies the current address to the clipboard.
    void lstIP_DblClick();

protected:
    bool queryUnload(UnloadMode mode) override;

private:
    void placeControls();
    void keepTogether(ListBox& list);
    void selectRowOf(const ListBox& list);

    Shell& shell_;
    ClientLink& client_;
};

}  // namespace packwise
