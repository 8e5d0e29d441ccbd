// The pair of files that a set becomes: complete, or as it was.
#include "sets/writer.h"

#include "sets/setstest.h"
#include "sets/sheet.h"
#include "support/faults.h"

namespace packwise::sets {
namespace {

class Writer : public testing::Test {
protected:
    Writer() {
        source_.displayName = "Tarn";
        source_.counts = {0, 0, 1};
        source_.cards = {{"Tarn Fish", "-", "U", "U", "Creature", "", "1/1"}};
        layOutSheets(source_);
    }

    WriteResult write() {
        error_.clear();
        return writeSetFiles(source_, dir_.path().toStdString(), error_);
    }
    std::string bytes(const char* name) const {
        std::string all;
        return readWhole(dir_.filePath(QString::fromUtf8(name)).toStdString(), all) ? all
                                                                                    : "no file";
    }
    QStringList files() const {
        return QDir(dir_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir dir_;
    SetSource source_;
    std::string error_;
};

TEST_F(Writer, TakesTheOrderFileAwayFromASetThatHasNoneAnyMore) {
    ASSERT_EQ(WriteResult::Written, write());
    EXPECT_EQ(WriteResult::UpToDate, write());
    source_.order.reset();
    EXPECT_EQ(WriteResult::WrittenWithoutOrder, write());
    EXPECT_EQ(QStringList(u"Tarn.pw"_s), files());
    EXPECT_EQ(WriteResult::UpToDate, write());

    // A list that is too short to be walked is an order that would never be dealt from.
    layOutSheets(source_);
    source_.order->lists[0].resize(20);
    source_.cards[0].name = "Tarn Frog";
    EXPECT_EQ(WriteResult::WrittenWithoutOrder, write());
    EXPECT_EQ(QStringList(u"Tarn.pw"_s), files());
}

TEST_F(Writer, KeepsTheOlderPairWhenTheNewOneCannotBeCompleted) {
    ASSERT_EQ(WriteResult::Written, write());
    const std::string before = bytes("Tarn.pw");
    ASSERT_TRUE(QDir(dir_.path()).remove(u"Tarn.ord"_s));
    ASSERT_TRUE(QDir(dir_.path()).mkpath(u"Tarn.ord/in the way"_s));
    source_.cards[0].name = "Tarn Frog";
    EXPECT_EQ(WriteResult::Failed, write());
    EXPECT_FALSE(error_.empty());
    EXPECT_EQ(before, bytes("Tarn.pw"));
    EXPECT_EQ((QStringList{u"Tarn.ord"_s, u"Tarn.pw"_s}), files());

    QFile card(dir_.filePath(u"Tarn.pw"_s));
    ASSERT_TRUE(card.open(QIODevice::WriteOnly) && card.resize(9000));
    for (const int room :
         {10, 8000}) {  // too little for the new pair, or for the old one beside it
        const FullDisk disk(static_cast<rlim_t>(room));
        EXPECT_EQ(WriteResult::Failed, write());
        EXPECT_EQ(9000, card.size());
        EXPECT_EQ((QStringList{u"Tarn.ord"_s, u"Tarn.pw"_s}), files()) << room;
    }

    ASSERT_TRUE(QDir(dir_.path()).remove(u"Tarn.pw"_s));
    EXPECT_EQ(WriteResult::Failed, write());
    EXPECT_EQ(QStringList(u"Tarn.ord"_s), files()) << "no card file without its partner";
}

}  // namespace
}  // namespace packwise::sets
