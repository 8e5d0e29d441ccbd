// The sets that are shipped, read the way Packwise reads them.
#include "engine/cardset.h"
#include "engine/dealing.h"
#include "protocol/framing.h"
#include "sets/folder.h"
#include "sets/setstest.h"
#include "sets/sheet.h"
#include "sets/textsource.h"
#include "sets/writer.h"

#include <random>

namespace packwise::sets {
namespace {

class Samples : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        QFile file(QString::fromUtf8(PACKWISE_DATA "/") + QString::fromUtf8(GetParam()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ReadSource read = readTextSource(file.readAll());
        for (const Fault& fault : read.faults) {
            ADD_FAILURE() << fault.what << ", " << fault.where;
        }
        source_ = std::move(read.source);
        layOutSheets(source_);
        std::string error;
        ASSERT_EQ(WriteResult::Written, writeSetFiles(source_, folder(), error)) << error;
    }

    fs::path folder() const { return dir_.path().toStdString(); }

    QTemporaryDir dir_;
    SetSource source_;
};

TEST_P(Samples, HoldTheCardsOfAWholeSetAndNoFault) {
    EXPECT_TRUE(checkFolder(folder()).empty());
    const auto pools = readCardPools(setFilePath(folder(), source_.displayName, ".pw"));
    ASSERT_TRUE(pools);
    EXPECT_THAT(pools->counts, ElementsAre(1, 3, 11));
    const std::array<std::size_t, 3> sizes = {22, 36, 66};
    for (std::size_t pool = 0; pool < sizes.size(); ++pool) {
        EXPECT_EQ(sizes.at(pool), pools->tokens.at(pool).size());
        std::set<char> colors;
        for (const std::string& token : pools->tokens.at(pool)) {
            colors.insert(token.front());
        }
        EXPECT_EQ(8U, colors.size()) << "pool " << pool;
    }
}

TEST_P(Samples, LieOnTheSheetWithCopiesApartAndColoursMixed) {
    const auto order = readOrderFile(setFilePath(folder(), source_.displayName, ".ord"));
    ASSERT_TRUE(order);
    EXPECT_THAT(order->counts, ElementsAre(11, 3, 1));
    const std::array<std::size_t, 3> cards = {66, 36, 22};
    for (std::size_t list = 0; list < order->lists.size(); ++list) {
        const std::vector<std::string>& lines = order->lists.at(list);
        ASSERT_EQ(121U, lines.size());
        std::map<std::string, std::vector<std::size_t>> places;
        int sameColor = 0;
        for (std::size_t line = 0; line < lines.size(); ++line) {
            places[lines[line]].push_back(line);
            for (const std::size_t next : {line + 1, line + kSheetWidth}) {
                sameColor += next < lines.size() && lines[next][0] == lines[line][0] ? 1 : 0;
            }
        }
        EXPECT_EQ(0, sameColor) << "list " << list;
        EXPECT_EQ(cards.at(list), places.size());
        for (const auto& [token, at] : places) {
            EXPECT_GE(at.size(), lines.size() / places.size()) << token;
            EXPECT_LE(at.size(), lines.size() / places.size() + 1) << token;
            for (std::size_t copy = 1; copy < at.size(); ++copy) {
                EXPECT_GE(at[copy] - at[copy - 1], kSheetLines / (2 * at.size())) << token;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shipped, Samples,
                         testing::Values("saltmarsh-bells.set", "cinder-orchard.set"));

TEST(Sheet, GivesCopiesByWeightAndEveryCardAPlace) {
    const std::vector<SheetCard> cards = {
        {"UOften", 6}, {"RSeldom", 0.01}, {"GEven", 3}, {"WOdd", 3}};
    std::map<std::string, int> copies;
    for (const std::string& token : layOutSheet(cards, 121)) {
        ++copies[token];
    }
    EXPECT_NEAR(60, copies["UOften"], 1);
    EXPECT_NEAR(30, copies["GEven"], 1);
    EXPECT_NEAR(30, copies["WOdd"], 1);
    EXPECT_EQ(1, copies["RSeldom"]);
}

}  // namespace
}  // namespace packwise::sets
