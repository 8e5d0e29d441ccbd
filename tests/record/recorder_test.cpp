// What the server tells of players who do what no honest client does.
#include "record/recorder.h"

#include "record/replay.h"
#include "server/smalltable.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

TEST(Recorder, NotesWhatNoHonestClientDoes) {
    struct Case {
        bool rochester;
        std::vector<std::pair<int, const char*>> received;  // by socket number
        const char* told;
    };
    for (const Case& c : {
             Case{false, {{1, "CARDU0a0"}, {1, "BPCKU0a1|U0a2|"}}, ""},
             Case{false, {{1, "CARDU0a1"}, {1, "BPCKU0a1|U0a2|"}}, "P1 has told another card"},
             Case{false, {{2, "BPCKU0a1|"}}, "P2 has sent back something else"},
             Case{false, {{2, "BPCKU0b1|U0b2|"}, {2, "BPCKx"}, {2, "BPCKx"}}, "P2 has sent a pick"},
             Case{false, {{1, "CODE5"}, {1, "CODE5"}}, ""},
             Case{false, {{1, "CODE5"}, {1, "CODE6"}, {1, "CODE7"}}, "P1 has reported a second"},
             Case{true, {{1, "RROK"}, {2, "RROK"}, {1, "RAND"}, {1, "RPCK0"}}, ""},
             Case{true, {{2, "RPCK0"}}, "P2 has sent a pick out of turn"},
             Case{true, {{1, "RROK"}, {2, "RROK"}, {2, "RPCK0"}}, "P2 has sent a pick out of turn"},
             // P1 has picked before he could know of it, once.
             Case{true, {{1, "RROK"}, {2, "RROK"}, {2, "RPCK0"}, {1, "RPCK0"}}, "P2 has sent a"},
             Case{true, {{1, "RROK"}, {2, "RROK"}, {1, "RPCK0"}, {1, "RPCK0"}}, "P1 has sent a"},
             Case{true, {{1, "RROK"}, {2, "RROK"}, {1, "RPCK3"}}, "P1 has sent back something"},
         }) {
        Recorder recorder([] { return std::string("now"); });
        recorder.giveUp();
        EXPECT_FALSE(recorder.isComplete()) << "there is no draft";
        std::vector<std::string> told;
        recorder.oddityNoted = [&](const std::string& line) { told.push_back(line); };
        SmallTable table(2, c.rochester, &recorder);
        table.begin();
        for (const auto& [socket, text] : c.received) {
            table.receive(socket, text);
        }
        recorder.giveUp();
        table.receiveFromAll("BPCKx");
        table.lose(2);  // who is told to leave does so
        const Replayed replayed = replay(recorder.record(), {});
        EXPECT_TRUE(replayed.isFollowed) << c.told;
        const std::string_view expected = c.told;
        ASSERT_EQ(told.size(), expected.empty() ? 0 : 1) << c.told;
        EXPECT_EQ(replayed.findings.empty(), expected.empty()) << c.told;
        for (const Finding& finding : replayed.findings) {
            EXPECT_EQ(finding.what, told.front());
            EXPECT_THAT(finding.what, testing::StartsWith(c.told));
        }
    }
}

}  // namespace
}  // namespace packwise
