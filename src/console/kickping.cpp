// The host's kick and ping.
#include "console/frmserver.h"

#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

void FrmServer::updatePingByRow() {
    pingLentFocus_ = false;
    const int row = lstNames->selectedRow();
    cmdPing->setEnabled(row >= 0 && lstNames->text(row) != u" ");
}

void FrmServer::lstNames_Click() {
    updatePingByRow();
    if (cmdPing->isEnabled()) {
        cmdPing->setFocus();
    }
}

void FrmServer::cmdKick_Click() {
    const int row = lstNames->selectedRow();
    if (row < 0 || lstNames->text(row) == u" ") {
        return;
    }
    server_.kick(row + 1);
}

void FrmServer::cmdPing_Click() {
    const int num = lstNames->selectedRow() + 1;
    if (num < 1 || !server_.ping(num)) {
        return;
    }
    pingLentFocus_ = focusWidget() == cmdPing;
    if (pingLentFocus_) {
        lstNames->setFocus();  // else it would go to chkHalt
    }
    cmdPing->setEnabled(false);
    tmrPing->start();
    txtPing->clear();
}

void FrmServer::tmrPing_Timer() {
    if (!server_.pingSecond()) {
        tmrPing->stop();
    }
}

void FrmServer::showPong(int seconds) {
    txtPing->setText(QString::number(seconds));
    tmrPing->stop();
    if (lstNames->selectedRow() >= 0) {
        cmdPing->setEnabled(true);
        if (std::exchange(pingLentFocus_, false) && focusWidget() == lstNames) {
            cmdPing->setFocus();
        }
    }
}

}  // namespace packwise
