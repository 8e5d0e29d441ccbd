// The server's links over socket controls.
#pragma once

#include "platform/socket.h"
#include "protocol/framing.h"
#include "server/draftserver.h"

#include <array>

namespace packwise {

class SocketLinks : public SeatLinks {
public:
    // By number: 0 listens, 1 to 8 are the seats, 9 tells a ninth connection that there is no room.
    using Sockets = std::array<Socket*, kSeats + 2>;

    // `sockets` outlives this and may be filled later.
    explicit SocketLinks(const Sockets& sockets) : sockets_(sockets) {}

    // Takes a connection that waits at the listener to its seat, or turns it away.
    void admit(DraftServer& server, ConnectionRequest& request);

    LinkState state(int num) const override;
    std::string address(int num) const override;
    void write(int num, std::string_view bytes) override;
    std::size_t unsent(int num) const override;
    std::string read(int num, std::size_t most) override;
    bool hasArrived(int num) const override;
    void close(int num) override;

private:
    Socket& at(int num) const { return *sockets_.at(static_cast<std::size_t>(num)); }

    const Sockets& sockets_;
};

}  // namespace packwise
