// The seats and their connections.
#include "common/codepage.h"
#include "platform/look.h"
#include "server/frmserver.h"

#include <QCheckBox>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFullSocket = kSeats + 1;

}  // namespace

void FrmServer::wskServer_ConnectionRequest(int index, ConnectionRequest& request) {
    if (index != 0 || shell_.ended()) {
        return;
    }
    int free = 0;
    for (int num = kSeats; num >= 1; --num) {
        if (wskServer[static_cast<std::size_t>(num)]->state() == Socket::Closed) {
            free = num;
        }
    }
    if (free == 0) {
        wskServer[kFullSocket]->accept(request);
        Send(kFullSocket, "STATServer is full~");
        wskServer[kFullSocket]->close();
        return;
    }
    Socket& newcomer = *wskServer[static_cast<std::size_t>(free)];
    newcomer.accept(request);
    Send(free, "HELO" + std::to_string(free) + kTerminator);
    for (int num = 1; num < free; ++num) {
        const Socket& other = *wskServer[static_cast<std::size_t>(num)];
        if (other.remoteHostIp() == newcomer.remoteHostIp()) {
            Send(free, "MESGDuplicate connection~");
            break;
        }
    }
}

void FrmServer::wskServer_DataArrival(int index) {
    if (index < 1 || index > kSeats || shell_.ended()) {
        return;
    }
    MessageSplitter& stream = inBuffer[static_cast<std::size_t>(index - 1)];
    stream.append(wskServer[static_cast<std::size_t>(index)]->getData());
    // A message may cost the seat; its stream is then empty.
    while (const auto message = stream.next()) {
        Dispatch(index, *message);
        if (shell_.ended()) {
            return;
        }
    }
    if (stream.overflowed()) {
        Disconnect(index);
    }
}

void FrmServer::wskServer_Close(int index) {
    if (!shell_.ended()) {
        Disconnect(index);
    }
}

void FrmServer::tmrPoke_Timer() {
    if (!shell_.ended()) {
        Broadcast("~");
    }
}

void FrmServer::Send(int num, std::string_view message) {
    Socket& socket = *wskServer.at(static_cast<std::size_t>(num));
    if (socket.state() == Socket::Connected) {
        socket.sendData(message);
    } else if (socket.state() != Socket::Closed) {
        Disconnect(num);
    }
}

void FrmServer::Broadcast(std::string_view message) {
    for (int num = 1; num <= kSeats; ++num) {
        Send(num, message);
    }
}

void FrmServer::Disconnect(int num) {
    // Closed first, so that the broadcasts below find a free seat here.
    wskServer.at(static_cast<std::size_t>(num))->close();
    if (num < 1 || num > kSeats) {
        return;
    }
    const int row = num - 1;
    const auto seat = static_cast<std::size_t>(row);
    inBuffer[seat].clear();
    versionSeen[seat + 1] = false;
    Broadcast("MESG" + playerName[seat] + " disconnected~");
    if (draftState == "N") {
        Broadcast("DROP" + std::to_string(row) + kTerminator);
        securityNames().setText(row, u" "_s);
        securityIPs().setText(row, u" "_s);
    }
    setSeatRow(row, u" "_s);
    playerName[seat].clear();
    shaLight[seat]->hide();
    dropped[seat + 1] = true;
    if (draftState != "D") {
        return;
    }
    if (chkHalt->isChecked()) {
        halted_ = true;
        Broadcast("CLOS~");
        return;
    }
    startRandoms();
    if (!draftStopped()) {
        rochester_.onSeatLost(num);
    }
}

void FrmServer::setSeatRow(int row, const QString& text) const {
    lstNames->setText(row, text);
    lstNames->item(row)->setToolTip(tipForCut(text, *lstNames, lstNames->viewport()->width() - 8));
}

}  // namespace packwise
