#include "engine/seating.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace packwise {
namespace {

using testing::ElementsAre;

TEST(Seating, EveryOrderComesFromItsOwnShareOfTheDraw) {
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

TEST(Seating, AllOrdersAreEquallyLikely) {
    std::mt19937 engine(20);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    constexpr int kDraws = 120000;
    std::map<std::vector<int>, int> times;
    for (int i = 0; i < kDraws; ++i) {
        ++times[seatAtRandom({0, 1, 2, 5, 7}, uniform(engine))];
    }
    const double wanted = kDraws / 120.0;
    double chiSquared = 0;
    for (const auto& [order, count] : times) {
        chiSquared += (count - wanted) * (count - wanted) / wanted;
    }
    EXPECT_EQ(times.size(), 120U);
    EXPECT_LT(chiSquared, 173.6) << "the 99.9 % point for 119 degrees of freedom";
}

}  // namespace
}  // namespace packwise
