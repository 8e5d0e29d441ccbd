// The draft flows' view of the console.
#pragma once

#include "engine/draft.h"

#include <optional>
#include <string>
#include <string_view>

namespace packwise {

class FrmServer;

class FlowHost : public DraftHost {
public:
    explicit FlowHost(FrmServer& server) : server_(server) {}

    void send(int socket, std::string_view data) override;
    void broadcast(std::string_view data) override;
    void dispatch(int socket, std::string_view message) override;
    std::optional<std::string> makePack(int packIndex) override;
    std::string setName(int packIndex) const override;
    bool dropped(int socket) const override;
    double draw() override;
    void enableRandoms() override;
    void draftOver() override;

private:
    FrmServer& server_;
};

}  // namespace packwise
