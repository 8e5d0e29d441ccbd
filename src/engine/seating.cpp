#include "engine/seating.h"

#include <algorithm>
#include <cstddef>

namespace packwise {

std::int32_t factorial(int n) {
    return n <= 0 ? 1 : n * factorial(n - 1);
}

std::vector<int> seatAtRandom(std::vector<int> seats, double u) {
    std::vector<int> order;
    const std::int32_t orders = factorial(static_cast<int>(seats.size()));
    std::int32_t r = std::min(static_cast<std::int32_t>(u * orders), orders - 1);
    while (!seats.empty()) {
        const std::int32_t ordersOfRest = factorial(static_cast<int>(seats.size()) - 1);
        const auto seat = seats.begin() + r / ordersOfRest;
        order.push_back(*seat);
        seats.erase(seat);
        r %= ordersOfRest;
    }
    return order;
}

}  // namespace packwise
