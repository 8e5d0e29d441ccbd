#include "engine/seating.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

namespace packwise {
namespace {

using testing::ElementsAre;

TEST(Seating, EveryOrderComesFromItsOwnEqualShareOfTheDraw) {
    for (int n = 1; n <= 8; ++n) {
        std::vector<int> seats;
        for (int i = 0; i < n; ++i) {
            seats.push_back(i);
        }
        const int orders = factorial(n);
        std::set<std::vector<int>> reached;
        for (int r = 0; r < orders; ++r) {
            const auto order = seatAtRandom(seats, (r + 0.5) / orders);
            ASSERT_TRUE(std::is_permutation(order.begin(), order.end(), seats.begin()));
            reached.insert(order);
        }
        EXPECT_EQ(reached.size(), static_cast<std::size_t>(orders));
    }
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.0), ElementsAre(0, 1, 3));
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.5), ElementsAre(1, 3, 0));
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.9999999), ElementsAre(3, 1, 0));
}

}  // namespace
}  // namespace packwise
