// The seats and their connections.
#include "common/codepage.h"
#include "platform/look.h"
#include "server/frmserver.h"

#include <QCheckBox>

#include <algorithm>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kFullSocket = kSeats + 1;

// What one seat gets of a turn of the event loop; the rest waits behind the other seats.
constexpr int kMostMessagesInTurn = 64;
constexpr std::size_t kMostReadAtOnce = std::size_t{16} * 1024;
// Who has so much unread, in bytes, misses chat lines, so that they do not cost him the draft.
constexpr qint64 kMostUnsentForChat = qint64{256} * 1024;
// When there is no room, a seat without a name goes to the next one after so many seconds.
constexpr int kMostSecondsNameless = 20;

}  // namespace

int FrmServer::lowestFreeSocket() const {
    const auto free = std::find_if(wskServer.begin() + 1, wskServer.begin() + kFullSocket,
                                   [](const Socket* s) { return s->state() == Socket::Closed; });
    return static_cast<int>(free - wskServer.begin());
}

bool FrmServer::giveUpANamelessSeat() {
    const auto oldest = std::max_element(secondsNameless.begin(), secondsNameless.end());
    if (draftState != "N" || *oldest < kMostSecondsNameless) {
        return false;
    }
    Disconnect(static_cast<int>(oldest - secondsNameless.begin()) + 1);
    return true;
}

void FrmServer::wskServer_ConnectionRequest(int index, ConnectionRequest& request) {
    if (index != 0 || shell_.ended()) {
        return;
    }
    int free = lowestFreeSocket();
    if (free == kFullSocket && giveUpANamelessSeat()) {
        free = lowestFreeSocket();
    }
    if (free == kFullSocket) {
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
    if (index >= 1 && index <= kSeats && !awaitsTurn_[static_cast<std::size_t>(index)]) {
        takeTurn(index);
    }
}

// What came before the close is handled first.
void FrmServer::wskServer_Close(int index) {
    wskServer_DataArrival(index);
}

void FrmServer::takeTurn(int num) {
    const auto at = static_cast<std::size_t>(num);
    Socket& socket = *wskServer[at];
    MessageSplitter& stream = inBuffer[at - 1];
    int handled = 0;
    while (handled < kMostMessagesInTurn && !shell_.ended()) {
        if (allowance[at - 1].isOverdrawn() && socket.state() != Socket::Closed) {
            if (socket.state() != Socket::Connected) {
                Disconnect(num);  // what a flood has left behind would cost the next one here
            }
            return;  // until the poke
        }
        // A message may cost the seat; its stream is then empty and its socket closed.
        if (const auto message = stream.next()) {
            ++handled;
            Dispatch(num, *message);
            continue;
        }
        const std::string bytes = socket.getData(kMostReadAtOnce);
        if (stream.overflowed() || (bytes.empty() && socket.state() != Socket::Connected &&
                                    socket.state() != Socket::Closed)) {
            Disconnect(num);
            return;
        }
        if (bytes.empty()) {
            return;
        }
        stream.append(bytes);
    }
    if (!shell_.ended()) {
        awaitTurn(num);
    }
}

void FrmServer::awaitTurn(int num) {
    awaitsTurn_[static_cast<std::size_t>(num)] = true;
    if (!tmrTurns->isActive()) {
        tmrTurns->start();
    }
}

void FrmServer::tmrTurns_Timer() {
    tmrTurns->stop();
    for (int num = 1; num <= kSeats; ++num) {
        if (std::exchange(awaitsTurn_[static_cast<std::size_t>(num)], false)) {
            takeTurn(num);
        }
    }
}

bool FrmServer::hasUnread(int num) const {
    const auto at = static_cast<std::size_t>(num);
    return num <= kSeats && (inBuffer[at - 1].hasNext() || wskServer[at]->bytesAvailable() > 0);
}

void FrmServer::tmrPoke_Timer() {
    if (shell_.ended()) {
        return;
    }
    Broadcast("~");
    for (int num = 1; num <= kSeats; ++num) {
        const auto seat = static_cast<std::size_t>(num - 1);
        const bool isNameless =
            playerName[seat].empty() && wskServer[seat + 1]->state() == Socket::Connected;
        secondsNameless[seat] = isNameless ? secondsNameless[seat] + 1 : 0;
        allowance[seat].grow();
        if (hasUnread(num)) {
            awaitTurn(num);
        }
    }
}

void FrmServer::Send(int num, std::string_view message) {
    Socket& socket = *wskServer.at(static_cast<std::size_t>(num));
    if (socket.state() == Socket::Connected) {
        socket.sendData(message);
    } else if (hasUnread(num)) {
        awaitTurn(num);  // whoever has gone is heard to the end, then the seat is emptied
    } else if (socket.state() != Socket::Closed) {
        Disconnect(num);
    }
}

void FrmServer::relayLine(int num, std::string_view message) {
    allowance[static_cast<std::size_t>(num - 1)].spend(message.size());
    for (int to = 1; to <= kSeats; ++to) {
        if (wskServer[static_cast<std::size_t>(to)]->unsent() <= kMostUnsentForChat) {
            Send(to, message);
        }
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
    secondsNameless[seat] = 0;
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
    if (fixingSeats_) {
        fixSeats_().lose(row);
    }
    const bool plays = std::find(players_.begin(), players_.end(), row) != players_.end();
    if (draftState != "D" || !plays) {
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
