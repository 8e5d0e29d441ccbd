// The draft flows' view of the console.
#pragma once

#include "engine/draft.h"

#include <string>
#include <string_view>
#include <vector>

namespace packwise {

class FrmServer;

class FlowHost : public DraftHost {
public:
    explicit FlowHost(FrmServer& server) : server_(server) {}

    void send(int socket, std::string_view data) override;
    void broadcast(std::string_view data) override;
    void dispatch(int socket, std::string_view message) override;
    std::vector<std::string> makePacks(int packIndex, int count) override;
    std::string setName(int packIndex) const override;
    bool dropped(int socket) const override;
    double draw() override;
    void tellReplacedPick(int socket) override;
    void enableRandoms() override;
    void draftOver() override;

private:
    FrmServer& server_;
};

}  // namespace packwise
