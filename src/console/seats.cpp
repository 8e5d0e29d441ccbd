// The seats on the screen: what the server tells of them, and the events of its sockets and timers.
#include "console/frmserver.h"
#include "platform/codepage.h"
#include "widgets/look.h"

#include <QCheckBox>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

void FrmServer::wskServer_ConnectionRequest(int index, ConnectionRequest& request) {
    if (index == 0 && !shell_.ended()) {
        links_.admit(server_, request);
    }
}

void FrmServer::wskServer_DataArrival(int index) {
    if (index >= 1 && index <= kSeats && !shell_.ended()) {
        server_.onArrival(index);
    }
}

// What came before the close is handled first.
void FrmServer::wskServer_Close(int index) {
    wskServer_DataArrival(index);
}

void FrmServer::tmrPoke_Timer() {
    if (!shell_.ended()) {
        server_.poke();
    }
}

void FrmServer::tmrRandoms_Timer() {
    if (!shell_.ended()) {
        server_.tick();
    }
}

void FrmServer::tmrTurns_Timer() {
    tmrTurns->stop();
    server_.turn();
}

void FrmServer::wantTicks() {
    // A start while it runs would begin its interval anew.
    if (!tmrRandoms->isActive()) {
        tmrRandoms->start();
    }
}

void FrmServer::wantTurn() {
    if (!tmrTurns->isActive() && !shell_.ended()) {
        tmrTurns->start();
    }
}

bool FrmServer::isSilent() const {
    return chkSilence->isChecked();
}

void FrmServer::showSeat(int seat, const std::string& name) {
    const auto at = static_cast<std::size_t>(seat);
    setSeatRow(seat, name.empty() ? u" "_s : screenText(name));
    shaLight[at]->setVisible(!name.empty());
    if (name.empty() && fixingSeats_) {
        fixSeats_().lose(seat);
    }
}

void FrmServer::showPlayer(int seat, const std::string& name, const std::string& address) {
    security_().lstNames->setText(seat, name.empty() ? u" "_s : screenText(name));
    security_().lstIP->setText(seat, address.empty() ? u" "_s : fromBytes(address));
}

void FrmServer::blink(int seat) {
    Shape& light = *shaLight[static_cast<std::size_t>(seat)];
    light.setFillColor(light.fillColor() == shade::green ? shade::darkerGreen : shade::green);
}

// As a client in this program would.
void FrmServer::showCode(int seat, std::int32_t code) {
    security_().lstCode->setText(seat, QString::number(code));
}

void FrmServer::setSeatRow(int row, const QString& text) const {
    lstNames->setText(row, text);
    lstNames->item(row)->setToolTip(tipForCut(text, *lstNames, lstNames->viewport()->width() - 8));
}

}  // namespace packwise
