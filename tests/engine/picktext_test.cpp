#include "engine/picktext.h"

#include "engine/utf8.h"

#include <gtest/gtest.h>

namespace packwise {
namespace {

TEST(PickText, IsReadByOthersAndComesBack) {
    const PickLog log{"202611182015",
                      "2026-11-18 20:15:00",
                      {"Ada", "--> Bob", "    Eve:"},
                      1,
                      {{1, 1, "Cinder Orchard", "", {"Swamp", "Lim-D\xFBl's Cohort", "Swamp"}, 2},
                       {1, 2, "Cinder Orchard", "", {"Fire & Ice"}, -1},
                       {2, 1, "", "", {" ", "--> x", "\x81 \x80 ", "Pack 1 pick 1:"}, 1},
                       {48, 15, "------ A ------", "    Eve:", {"Island"}, 0}}};
    const std::string text = writePicks(log);
    EXPECT_TRUE(
        text.starts_with("Event #: 202611182015\n"
                         "Time:    2026-11-18 20:15:00\n"
                         "Players:\n"
                         "    Ada\n"
                         "--> --> Bob\n"
                         "        Eve:\n"
                         "\n"
                         "------ Cinder Orchard ------\n"
                         "\n"
                         "Pack 1 pick 1:\n"
                         "    Swamp\n"
                         "    Lim-D\xC3\xBBl's Cohort\n"
                         "--> Swamp\n"
                         "\n"
                         "Pack 1 pick 2:\n"))
        << text;
    PickTextFault fault;
    EXPECT_EQ(readPicks(text, fault), log) << fault.line << ": " << fault.what;

    std::string windows = "\xEF\xBB\xBF";
    for (const char c : text) {
        windows.append(c == '\n' ? "\r\n" : std::string(1, c));
    }
    EXPECT_EQ(readPicks(windows, fault), log) << fault.line << ": " << fault.what;
}

TEST(PickText, TellsTheLineOfADamage) {
    std::string crowded = "Pack 1 pick 1:\n";
    for (int card = 0; card <= kMostCardsInPack; ++card) {
        crowded += "    Swamp\n";
    }
    std::string endless;
    for (std::size_t turn = 0; turn <= kMostTurns; ++turn) {
        endless += "Pack 1 pick 1:\n";
    }
    struct Case {
        std::string text;
        int line;
    };
    const Case cases[] = {
        {"", 0},
        {"//NAME: Packwise deck\r\n    1 Swamp\r\n", 0},
        {std::string(kMostPickText, '\n') + "Pack 1 pick 1:", 0},
        {"Pack 0 pick 1:\n", 1},
        {"Pack 49 pick 1:\n", 1},
        {"Pack 1 pick 16:\n", 1},
        {"Pack 99999999999999999999 pick 1:\n", 1},
        {"Pack 1 pick 1", 1},
        {"Pack 1 pick 1:\n    Swamp\nIsland\n", 3},
        {"Pack 1 pick 1:\n--> Swamp\n--> Island\n", 3},
        {"Pack 1 pick 1:\n--> Swamp\n\n    Island\n", 4},
        {"Time: now\n\nPack 1 pick 1:\n    Lim-D\xFBl's Cohort\n", 4},
        {"Pack 1 pick 1:\n    \xC3", 2},
        {"Pack 1 pick 1:\n    \xED\xA0\x80", 2},      // half a character
        {"Pack 1 pick 1:\n    \xC0\xAF", 2},          // longer than it need be
        {"Pack 1 pick 1:\n    \xF4\x90\x80\x80", 2},  // past the last character
        {crowded, kMostCardsInPack + 2},
        {endless, static_cast<int>(kMostTurns) + 1},
    };
    for (const Case& c : cases) {
        PickTextFault fault;
        EXPECT_FALSE(readPicks(c.text, fault)) << c.text.substr(0, 60);
        EXPECT_EQ(fault.line, c.line) << c.text.substr(0, 60) << ": " << fault.what;
        EXPECT_FALSE(fault.what.empty());
    }
    PickTextFault fault;
    const std::string nameless =
        writePicks({"", "", {"", "Bob"}, 1, {{1, 1, "", "", {"a\nb"}, 0}}});
    const std::optional<PickLog> log = readPicks(nameless, fault);
    ASSERT_TRUE(log) << fault.what;
    EXPECT_EQ(log->players, (std::vector<std::string>{"?", "Bob"}));
    EXPECT_EQ(log->packs[0].cards, std::vector<std::string>{"a?b"});
    EXPECT_EQ(fromUtf8("\xCE\xA9mega \xF0\x9F\x98\x80!"), "?mega ?!");
}

}  // namespace
}  // namespace packwise
