#include "engine/dealing.h"

#include "engine/samplefiles.h"
#include "engine/seating.h"
#include "protocol/framing.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>

namespace packwise {
namespace {

using namespace sample;

Draw seeded(unsigned seed) {
    return [engine = std::mt19937(seed)]() mutable {
        return std::uniform_real_distribution<double>(0.0, 1.0)(engine);
    };
}

Draw scripted(std::vector<double> draws) {
    return [draws = std::move(draws), i = std::size_t{0}]() mutable {
        return draws[i++ % draws.size()];
    };
}

// A draw that makes nextSheetPos() see exactly r, 1 to 4000.
Draw sheetDraw(int r) {
    return [r] { return (r - 0.5) / 4000; };
}

TEST(NextSheetPos, TakesEachStepAsOftenAsTheTableSays) {
    const std::vector<int> weights = {2050, 320, 65, 100, 65, 10, 55, 100, 55,  30, 360,
                                      160,  100, 40, 30,  25, 20, 25, 40,  100, 250};
    std::map<int, int> steps;
    for (int r = 2; r <= 4000; ++r) {
        ++steps[nextSheetPos(50, 121, sheetDraw(r)) - 50];
    }
    ++steps[1];  // r = 1 goes to the front instead
    for (int step = 1; step <= 21; ++step) {
        EXPECT_EQ(steps[step], weights.at(static_cast<std::size_t>(step - 1))) << step;
    }
    EXPECT_EQ(steps.size(), weights.size());
}

TEST(NextSheetPos, WrapsOnceAndGoesToTheFrontOnTheLowestDraw) {
    struct Case {
        int position, length, r, next;
    };
    for (const Case& c : {Case{120, 121, 2600, 4}, Case{1, 121, 1, 1}, Case{77, 121, 1, 1},
                          Case{120, 121, 2, 121}, Case{121, 121, 2, 1}, Case{21, 21, 4000, 21}}) {
        EXPECT_EQ(nextSheetPos(c.position, c.length, sheetDraw(c.r)), c.next) << c.position;
    }
}

// Cards by the second character of their token, which tells the mark in the sample set.
std::string marksOf(const std::string& pack) {
    std::string marks;
    for (const std::string& token : readFields(pack)) {
        marks += token.at(1) == 'O' ? '+' : token.at(1) == 'G' ? '=' : '-';
    }
    return marks;
}

TEST(Dealing, PacksKeepTheCountsAndTheOrderOfThePoolsAndHoldNoCardTwice) {
    const TempFolder folder;
    folder.write("Sample.pw", wholeSet());
    folder.write("Sample.ord", wholeOrder());
    const Draw draw = seeded(7);
    std::set<std::string> seen;
    for (int i = 0; i < 400; ++i) {
        for (const auto deal : {randomPack, realPack}) {
            const auto pack = deal(folder.path(), "Sample", draw);
            ASSERT_TRUE(pack);
            EXPECT_EQ(marksOf(pack->text()), "+===-----------");
            const auto cards = pack->cards();
            EXPECT_EQ(std::set(cards.begin(), cards.end()).size(), 15U);
            seen.insert(cards.begin(), cards.end());
        }
    }
    EXPECT_EQ(seen.size(), 22U + 36U + 66U);
}

TEST(Dealing, DrawsAnewForACardInsideThePack) {
    const TempFolder folder;
    folder.write("Elves.pw", header(1, 0, 2) + record("Elf Lord", "+") + record("Elf", "-") +
                                 record("Fox", "-") + record("Owl", "-") + end());
    // The rare; then Elf, which lies inside the rare, Fox, Fox again, Owl.
    EXPECT_EQ(randomPack(folder.path(), "Elves", scripted({0, 0, 0.4, 0.4, 0.9})),
              Pack::read("UElf Lord|UFox|UOwl|"));
}

TEST(Dealing, WalksOnFromTheRandomStartThroughTheListsBackwards) {
    std::string text = "1,0,2\n21,0,21\n";
    for (const char color : {'G', 'R'}) {
        for (int i = 1; i <= 21; ++i) {
            text += color + std::string("Card ") + static_cast<char>('a' + i - 1) + "\n";
        }
    }
    const TempFolder folder;
    folder.write("Walk.ord", text);
    const double one = 1000.0 / 4000;  // a step of 1
    const double two = 2100.0 / 4000;  // a step of 2
    // Third list from line 1: line 2, then a full lap back to it, which is passed over, line 4.
    // First list from line 21: line 1.
    const double lap = 3999.0 / 4000;  // a step of 21
    EXPECT_EQ(realPack(folder.path(), "Walk", scripted({0, one, lap, two, 0.99, one})),
              Pack::read("RCard b|RCard d|GCard a|"));
}

TEST(Dealing, EndsWhateverTheGeneratorAndTheCards) {
    const TempFolder folder;
    folder.write("Stuck.pw",
                 header(0, 0, 2) + record("A", "-") + record("A", "-") + record("B", "-") + end());
    EXPECT_EQ(randomPack(folder.path(), "Stuck", [] { return 0.0; }), Pack::read("UA|UB|"));
    // Once the long name is dealt, the short one cannot be: the other order is found.
    folder.write("Order.pw", header(0, 0, 2) + record("A", "-") + record("AB", "-") + end());
    for (unsigned seed = 0; seed < 20; ++seed) {
        EXPECT_EQ(randomPack(folder.path(), "Order", seeded(seed)), Pack::read("UA|UAB|"));
    }
    folder.write("Never.pw", header(1, 0, 1) + record("AB", "+") + record("A", "-") + end());
    EXPECT_FALSE(randomPack(folder.path(), "Never", seeded(1)));

    std::string text = "2,0,0\n21,0,0\n";
    for (int i = 0; i < 20; ++i) {
        text += "UA\n";
    }
    folder.write("Stuck.ord", text + "UB\n");
    EXPECT_EQ(realPack(folder.path(), "Stuck", [] { return 0.0; }), Pack::read("UA|UB|"));
    EXPECT_FALSE(realPack(folder.path(), "None", seeded(1)));
}

TEST(Seating, EveryOrderComesFromItsOwnEqualShareOfTheDraw) {
    for (int n = 1; n <= 8; ++n) {
        std::vector<int> seats(static_cast<std::size_t>(n));
        std::iota(seats.begin(), seats.end(), 0);
        const int orders = factorial(n);
        std::set<std::vector<int>> reached;
        for (int r = 0; r < orders; ++r) {
            const auto order = seatAtRandom(seats, (r + 0.5) / orders);
            ASSERT_TRUE(std::is_permutation(order.begin(), order.end(), seats.begin()));
            reached.insert(order);
        }
        EXPECT_EQ(reached.size(), static_cast<std::size_t>(orders));
    }
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.0), testing::ElementsAre(0, 1, 3));
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.5), testing::ElementsAre(1, 3, 0));
    EXPECT_THAT(seatAtRandom({0, 1, 3}, 0.9999999), testing::ElementsAre(3, 1, 0));
}

}  // namespace
}  // namespace packwise
