// The messages of the clients.
#include "common/codepage.h"
#include "server/frmserver.h"

#include <QCheckBox>

#include <algorithm>

namespace packwise {

namespace {

// More picks than any draft has.
constexpr int kMostPicks = kMostPacks * kMostCardsInPack;
constexpr std::size_t kMostNameBytes = 64;

}  // namespace

struct FrmServer::Command {
    std::string_view name;
    void (FrmServer::*handle)(int num, std::string_view body);
};

void FrmServer::Dispatch(int num, std::string_view text) {
    static constexpr Command kCommands[] = {
        {"VERS", &FrmServer::onVersion},       {"NAME", &FrmServer::onName},
        {"DROP", &FrmServer::onDrop},          {"PING", &FrmServer::onPing},
        {"PONG", &FrmServer::onPong},          {"MESG", &FrmServer::onChat},
        {"BPCK", &FrmServer::onPackBack},      {"RAND", &FrmServer::onRandomMark},
        {"RPCK", &FrmServer::onRochesterPick}, {"RPOK", &FrmServer::onPauseDone},
        {"RROK", &FrmServer::onReviewDone},    {"CARD", &FrmServer::onCard},
        {"CODE", &FrmServer::onCode},
    };
    const auto message = readMessage(text);
    if (!message || num < 1 || num > kSeats) {
        return;
    }
    Shape& light = *shaLight[static_cast<std::size_t>(num - 1)];
    const QColor bright(0, 255, 0);
    light.setFillColor(light.fillColor() == bright ? QColor(0, 127, 0) : bright);
    const auto* const command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [&](const Command& known) { return known.name == message->command; });
    if (command != std::end(kCommands)) {
        (this->*command->handle)(num, message->body);
    }
}

void FrmServer::onVersion(int num, std::string_view body) {
    if (body != kProtocolVersion) {
        Send(num, "MESGYou are using version " + std::string(body) + kTerminator);
        Send(num, "MESGThis server is version 1.41~");
        relayLine(num, "MESG" + std::to_string(num) + " is using an old version.~");
    }
    // The writes may have found the connection gone; the next one on this seat is another's.
    versionSeen[static_cast<std::size_t>(num)] =
        wskServer[static_cast<std::size_t>(num)]->state() != Socket::Closed;
}

void FrmServer::onName(int num, std::string_view body) {
    if (body.empty()) {
        return;
    }
    const int row = num - 1;
    const auto seat = static_cast<std::size_t>(row);
    const Socket& socket = *wskServer[seat + 1];
    if (!versionSeen[seat + 1]) {
        Send(num, "MESGYou are using version 1.3~");
        Send(num, "MESGThis server is version 1.41~");
    }
    if (socket.state() == Socket::Closed) {
        return;
    }
    const std::string name(body.substr(0, kMostNameBytes));
    const QString shown = screenText(name);
    if (lstNames->texts().contains(shown)) {
        Disconnect(num);
        Broadcast("MESGKicking duplicate " + name + kTerminator);
        return;
    }
    const std::string address = toBytes(socket.remoteHostIp());
    playerName[seat] = name;
    setSeatRow(row, shown);
    shaLight[seat]->show();
    relayLine(num, "MESG" + name + " has joined~");
    const std::string messages[] = {"NAME" + std::to_string(row) + name + kTerminator,
                                    "ADDR" + std::to_string(row) + address + kTerminator};
    for (const std::string& message : messages) {
        if (socket.state() == Socket::Closed) {
            return;  // gone while it was being announced
        }
        allowance[seat].spend(message.size());
        Broadcast(message);
    }
    if (socket.state() == Socket::Closed) {
        return;
    }
    securityNames().setText(row, shown);
    securityIPs().setText(row, socket.remoteHostIp());
    for (int i = 0; i < kSeats; ++i) {
        Send(num,
             "NAME" + std::to_string(i) + playerName[static_cast<std::size_t>(i)] + kTerminator);
    }
}

void FrmServer::onDrop(int num, std::string_view /*body*/) {
    relayLine(num,
              "MESG" + playerName[static_cast<std::size_t>(num - 1)] + " intentionally dropped.~");
}

void FrmServer::onPing(int num, std::string_view /*body*/) {
    Send(num, "PONG~");
}

void FrmServer::onChat(int num, std::string_view body) {
    if (chkSilence->isChecked()) {
        Send(num, "MESG-silent draft-~");
        return;
    }
    relayLine(num, "MESG" + std::string(body) + kTerminator);
}

void FrmServer::onPackBack(int num, std::string_view body) {
    if (!draftStopped()) {
        booster_.onPackBack(num, body);
    }
}

void FrmServer::onRandomMark(int num, std::string_view /*body*/) {
    if (!draftStopped()) {
        rochester_.onRandomMark(num);
    }
}

void FrmServer::onRochesterPick(int num, std::string_view body) {
    if (!draftStopped()) {
        rochester_.onPick(num, body);
    }
}

void FrmServer::onPauseDone(int num, std::string_view /*body*/) {
    if (!draftStopped()) {
        rochester_.onPauseDone(num);
    }
}

void FrmServer::onReviewDone(int num, std::string_view /*body*/) {
    if (!draftStopped()) {
        rochester_.onReviewDone(num);
    }
}

void FrmServer::onCard(int num, std::string_view body) {
    std::string& cards = playerCards[static_cast<std::size_t>(num - 1)];
    if (body.size() < 2 || body.find(kFieldEnd) != std::string_view::npos ||
        countCards(cards) >= kMostPicks) {
        return;
    }
    cards.append(body.substr(1)).push_back(kFieldEnd);
}

void FrmServer::onCode(int num, std::string_view body) {
    if (readNumber(body)) {
        const std::string message =
            "CODE" + std::to_string(num - 1) + std::string(body) + kTerminator;
        allowance[static_cast<std::size_t>(num - 1)].spend(message.size());
        Broadcast(message);
        securityCodes().setText(num - 1, fromBytes(body));  // as a client here would
    }
}

}  // namespace packwise
