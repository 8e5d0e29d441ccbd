#include "platform/socketlinks.h"

#include "platform/codepage.h"
#include "protocol/messages.h"

namespace packwise {

namespace {

constexpr int kFullSocket = kSeats + 1;

}  // namespace

void SocketLinks::admit(DraftServer& server, ConnectionRequest& request) {
    const int num = server.socketForNewcomer();
    if (num > 0) {
        at(num).accept(request);
        server.welcome(num);
        return;
    }
    Socket& full = at(kFullSocket);
    full.accept(request);
    full.sendData(to_client::Status{{"Server is full"}}.write());
    full.close();
}

LinkState SocketLinks::state(int num) const {
    switch (at(num).state()) {
        case Socket::Closed:
            return LinkState::Free;
        case Socket::Connected:
            return LinkState::Open;
        default:
            return LinkState::Broken;
    }
}

std::string SocketLinks::address(int num) const {
    return toBytes(at(num).remoteHostIp());
}

void SocketLinks::write(int num, std::string_view bytes) {
    at(num).sendData(bytes);
}

std::size_t SocketLinks::unsent(int num) const {
    return static_cast<std::size_t>(at(num).unsent());
}

std::string SocketLinks::read(int num, std::size_t most) {
    return at(num).getData(most);
}

bool SocketLinks::hasArrived(int num) const {
    return at(num).bytesAvailable() > 0;
}

void SocketLinks::close(int num) {
    at(num).close();
}

}  // namespace packwise
