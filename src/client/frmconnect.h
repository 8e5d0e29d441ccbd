// The connection dialog: asks for a name, the server's address and its port, and starts the draft
// client with them. Its text boxes are the store of what was typed.
#pragma once

#include "widgets/form.h"
#include "widgets/lazy.h"

#include <optional>

class QLineEdit;
class QPushButton;

namespace packwise {

class FrmClient;
class FrmSecurity;
class Shell;

class FrmConnect : public Form {
    Q_OBJECT
public:
    FrmConnect(Shell& shell, Lazy<FrmClient>& frmClient, Lazy<FrmSecurity>& frmSecurity);

    QLineEdit* txtName;
    QLineEdit* txtIP;
    QLineEdit* txtPort;
    QPushButton* cmdConnect;

    void cmdConnect_Click();

protected:
    bool queryUnload(UnloadMode mode) override;

private:
    QLineEdit* addField(const QString& caption, const QString& name, int row);
    // Fills the address box from the clipboard's text, and the port box too when the text tells a
    // port: "203.0.113.7:5253" or "203.0.113.7 port 5253".
    void takeAddress(const QString& copied);
    bool nameAccepted();

    Shell& shell_;
    Lazy<FrmClient>& frmClient_;
    Lazy<FrmSecurity>& frmSecurity_;
};

// A port as typed: any form of a number, fractions rounded, blanks around it. Nothing when it is
// none or lies outside 1 to 65535.
std::optional<quint16> readPort(const QString& text);

}  // namespace packwise
