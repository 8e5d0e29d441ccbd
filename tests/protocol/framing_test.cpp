#include "protocol/framing.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::ElementsAre;

std::vector<std::string> drain(MessageSplitter& splitter) {
    std::vector<std::string> messages;
    while (auto message = splitter.next()) {
        messages.push_back(*message);
    }
    return messages;
}

void drainInto(MessageSplitter& splitter, std::vector<std::string>& messages) {
    for (std::string& message : drain(splitter)) {
        messages.push_back(std::move(message));
    }
}

TEST(MessageSplitter, GivesTheSameMessagesHoweverTheStreamIsCut) {
    const std::string stream = "HELO1~~ME\r\nSGa|b \n~BOOSUFirst|\r~\xE9~half";
    const std::vector<std::string> wanted = {"HELO1", "", "MESGa|b ", "BOOSUFirst|", "\xE9"};
    for (std::size_t i = 0; i <= stream.size(); ++i) {
        for (std::size_t k = i; k <= stream.size(); ++k) {
            MessageSplitter splitter;
            std::vector<std::string> messages;
            for (const std::string& piece :
                 {stream.substr(0, i), stream.substr(i, k - i), stream.substr(k)}) {
                splitter.append(piece);
                drainInto(splitter, messages);
            }
            ASSERT_EQ(messages, wanted) << i << ' ' << k;
            splitter.append("~");
            ASSERT_THAT(drain(splitter), ElementsAre("half"));
        }
    }
}

TEST(MessageSplitter, OverflowsByTheLengthOfOneMessageHoweverItComes) {
    const std::string most(kMostMessageLength, 'x');
    for (const std::size_t piece : {std::size_t{1}, std::size_t{1000}, most.size() + 100}) {
        for (const bool tooLong : {false, true}) {
            const std::string stream = "A~" + most + (tooLong ? "x" : "") + "~B~";
            MessageSplitter splitter;
            std::vector<std::string> messages;
            for (std::size_t i = 0; i < stream.size(); i += piece) {
                splitter.append(std::string_view(stream).substr(i, piece));
                drainInto(splitter, messages);
            }
            EXPECT_EQ(splitter.overflowed(), tooLong) << piece;
            EXPECT_EQ(messages, tooLong ? std::vector<std::string>{"A"}
                                        : (std::vector<std::string>{"A", most, "B"}))
                << piece;
            splitter.clear();
            splitter.append("C~");
            EXPECT_THAT(drain(splitter), ElementsAre("C")) << piece;
        }
    }
}

TEST(MessageSplitter, MayBeClearedWhileItsMessagesAreHandled) {
    MessageSplitter splitter;
    splitter.append("one~two~hal");
    while (auto message = splitter.next()) {
        EXPECT_EQ(*message, "one");
        splitter.clear();
    }
    splitter.append("three~");
    EXPECT_THAT(drain(splitter), ElementsAre("three"));
}

TEST(Protocol, ReadsMessagesNumbersAndFields) {
    EXPECT_FALSE(readMessage("PIN"));
    EXPECT_EQ(readMessage("PING")->body, "");
    EXPECT_EQ(readMessage("NAME0Fox")->command, "NAME");
    EXPECT_EQ(readMessage("NAME0Fox")->body, "0Fox");

    EXPECT_EQ(readNumber("44281"), 44281);
    EXPECT_EQ(readNumber("-17"), -17);
    EXPECT_EQ(readNumber("0"), 0);
    for (const char* bad : {"", "-", "+1", " 1", "1 ", "1x", "0x1", "99999999999", "--1", "1.0",
                            "01", "00", "-0", "-01"}) {
        EXPECT_FALSE(readNumber(bad)) << bad;
    }
    EXPECT_EQ(readSeatDigit("0Name"), 0);
    EXPECT_EQ(readSeatDigit("7"), 7);
    for (const char* bad : {"", "8", "/", "-1", "x"}) {
        EXPECT_FALSE(readSeatDigit(bad)) << bad;
    }
    EXPECT_THAT(readFields("Ice Age|||x"), ElementsAre("Ice Age", "", ""));
    EXPECT_THAT(readFields(""), ElementsAre());
    EXPECT_EQ(countFields("UFirst|BSecond|"), 2);
}

}  // namespace
}  // namespace packwise
