// What one seat may make the others receive: chat, names, codes. Picks are not counted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace packwise {

class Allowance {
public:
    // In bytes to each receiver.
    static constexpr std::int64_t kAtOnce = std::int64_t{1024} * 1024;
    static constexpr std::int64_t kEachSecond = std::int64_t{128} * 1024;
    // What a message costs at least: a short one takes as many writes as a long one.
    static constexpr std::size_t kLeastCost = 256;

    void spend(std::size_t bytes) {
        left_ -= static_cast<std::int64_t>(std::max(bytes, kLeastCost));
    }
    // To be called once a second.
    void grow() { left_ = std::min(left_ + kEachSecond, kAtOnce); }

    // The seat is not heard until the allowance has grown again.
    bool isOverdrawn() const { return left_ < 0; }

private:
    std::int64_t left_ = kAtOnce;
};

}  // namespace packwise
