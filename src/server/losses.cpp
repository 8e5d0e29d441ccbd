// The host's kick and ping, and the timer that answers for lost players.
#include "server/frmserver.h"

#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostPingTicks = 99;
constexpr int kMostGoodPingTicks = 10;

}  // namespace

int FrmServer::selectedRow() const {
    // Not the current row: reaching the list with Tab makes its first row current, but selects
    // nothing, and a press that is dragged selects a row before it makes it current.
    const QList<QListWidgetItem*> selected = lstNames->selectedItems();
    return selected.isEmpty() ? -1 : lstNames->row(selected.first());
}

void FrmServer::updatePingByRow() {
    pingLentFocus_ = false;
    const int row = selectedRow();
    cmdPing->setEnabled(row >= 0 && lstNames->text(row) != u" ");
}

void FrmServer::lstNames_Click() {
    updatePingByRow();
    if (cmdPing->isEnabled()) {
        cmdPing->setFocus();
    }
}

void FrmServer::cmdKick_Click() {
    const int row = selectedRow();
    if (row < 0 || lstNames->text(row) == u" ") {
        return;
    }
    const std::string name = playerName[static_cast<std::size_t>(row)];
    Disconnect(row + 1);
    Broadcast("MESGKicked " + name + kTerminator);
}

void FrmServer::cmdPing_Click() {
    const int num = selectedRow() + 1;
    if (num < 1 || wskServer[static_cast<std::size_t>(num)]->state() != Socket::Connected) {
        return;
    }
    Send(num, "PING~");
    pingTicks = 0;
    pingLentFocus_ = focusWidget() == cmdPing;
    if (pingLentFocus_) {
        lstNames->setFocus();  // else it would go to chkHalt
    }
    cmdPing->setEnabled(false);
    tmrPing->start();
    txtPing->clear();
}

void FrmServer::tmrPing_Timer() {
    if (++pingTicks >= kMostPingTicks) {
        tmrPing->stop();
    }
}

void FrmServer::onPong(int num, std::string_view /*body*/) {
    txtPing->setText(QString::number(pingTicks));
    if (pingTicks > kMostGoodPingTicks) {
        Send(num, "STATDetected poor connection~");
    }
    tmrPing->stop();
    if (selectedRow() >= 0) {
        cmdPing->setEnabled(true);
        if (std::exchange(pingLentFocus_, false) && focusWidget() == lstNames) {
            cmdPing->setFocus();
        }
    }
}

void FrmServer::tmrRandoms_Timer() {
    if (draftStopped()) {
        return;
    }
    booster_.onRandomsTick();
    rochester_.onRandomsTick();
}

}  // namespace packwise
