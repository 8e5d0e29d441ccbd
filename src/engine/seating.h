// Seating the players round the table.
#pragma once

#include <cstdint>
#include <vector>

namespace packwise {

// n! for n from 0 to 12.
std::int32_t factorial(int n);

// The seat indexes in a random order, all orders equally likely, from one draw u, 0 <= u < 1. The
// element at place p sits at table position p. `seats` is in rising order.
std::vector<int> seatAtRandom(std::vector<int> seats, double u);

}  // namespace packwise
