// A view that overhears what the server tells it; a test overrides what it looks at.
#pragma once

#include "server/interfaces.h"

#include <cstdint>
#include <string>

namespace packwise {

class QuietView : public ServerView {
public:
    void showSeat(int, const std::string&) override {}
    void showPlayer(int, const std::string&, const std::string&) override {}
    void blink(int) override {}
    void showCode(int, std::int32_t) override {}
    void showPong(int) override {}
    void wantTicks() override {}
    void wantTurn() override {}
    void cardDataFailed() override {}
};

}  // namespace packwise
