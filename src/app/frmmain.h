// The start window: asks whether this copy joins a draft or hosts one. It is never shown again
// once one of the two has been chosen.
#pragma once

#include "widgets/form.h"
#include "widgets/shell.h"

#include <QPushButton>

namespace packwise {

class FrmMain : public Form {
    Q_OBJECT
public:
    explicit FrmMain(Shell& shell);

    QPushButton* cmdDummy;  // outside the client area; takes the first focus
    QPushButton* cmdClient;
    QPushButton* cmdServer;
    QPushButton* cmdAbout;

    void cmdClient_Click() { Q_EMIT clientWanted(); }
    void cmdServer_Click() { Q_EMIT serverWanted(); }
    void cmdAbout_Click() { Q_EMIT aboutWanted(); }

Q_SIGNALS:
    void clientWanted();
    void serverWanted();
    void aboutWanted();

protected:
    bool queryUnload(UnloadMode mode) override;

private:
    Shell& shell_;
};

}  // namespace packwise
