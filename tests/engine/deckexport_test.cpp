#include "engine/deckexport.h"

#include <gtest/gtest.h>

namespace packwise {
namespace {

constexpr std::string_view kDeck =
    "//NAME: Packwise deck 11/18/2026 <&\r\n"
    "    1 Lim-D\xFBl's Cohort\r\n"
    "    1 Fire/Ice\r\n"
    "    2 Fire  //Ice\r\n"
    "    1 Lim-D\xFBl's Cohort\r\n"
    "// a remark\r\n"
    "\r\n"
    "SB: 1 /R&D's \"<Plan>\"/\r\n"
    "SB: 3 \x81\tA /B/ C";

TEST(DeckExport, IsWhatOtherProgramsRead) {
    struct Case {
        std::string_view word;
        std::string_view ending;
        std::string_view text;
    };
    const Case cases[] = {
        {"cod", ".cod",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<cockatrice_deck version=\"1\">\n"
         "    <deckname>Packwise deck 11/18/2026 &lt;&amp;</deckname>\n"
         "    <comments></comments>\n"
         "    <zone name=\"main\">\n"
         "        <card number=\"2\" name=\"Lim-D\xC3\xBBl's Cohort\"/>\n"
         "        <card number=\"3\" name=\"Fire // Ice\"/>\n"
         "    </zone>\n"
         "    <zone name=\"side\">\n"
         "        <card number=\"1\" name=\"/R&amp;D's &quot;&lt;Plan&gt;&quot;/\"/>\n"
         "        <card number=\"3\" name=\"\xC2\x81?A // B // C\"/>\n"
         "    </zone>\n"
         "</cockatrice_deck>\n"},
        {"txt", ".txt",
         "2 Lim-D\xC3\xBBl's Cohort\n"
         "3 Fire // Ice\n"
         "\n"
         "1 /R&D's \"<Plan>\"/\n"
         "3 \xC2\x81?A // B // C\n"},
        {"dek", ".dek",
         "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
         "<Deck xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\" "
         "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
         "  <NetDeckID>0</NetDeckID>\n"
         "  <PreconstructedDeckID>0</PreconstructedDeckID>\n"
         "  <Cards CatID=\"0\" Quantity=\"2\" Sideboard=\"false\" "
         "Name=\"Lim-D\xC3\xBBl's Cohort\" />\n"
         "  <Cards CatID=\"0\" Quantity=\"3\" Sideboard=\"false\" Name=\"Fire // Ice\" />\n"
         "  <Cards CatID=\"0\" Quantity=\"1\" Sideboard=\"true\" "
         "Name=\"/R&amp;D's &quot;&lt;Plan&gt;&quot;/\" />\n"
         "  <Cards CatID=\"0\" Quantity=\"3\" Sideboard=\"true\" "
         "Name=\"\xC2\x81?A // B // C\" />\n"
         "</Deck>\n"},
        {"arena", ".arena.txt",
         "Deck\n"
         "2 Lim-D\xC3\xBBl's Cohort\n"
         "3 Fire // Ice\n"
         "\n"
         "Sideboard\n"
         "1 /R&D's \"<Plan>\"/\n"
         "3 \xC2\x81?A // B // C\n"},
    };
    int line = 0;
    const std::optional<DeckList> deck = readDeckFile(kDeck, line);
    ASSERT_TRUE(deck) << line;
    for (const Case& c : cases) {
        const std::optional<DeckFormat> format = deckFormatOf(c.word);
        ASSERT_TRUE(format);
        EXPECT_EQ(endingOf(*format), c.ending);
        EXPECT_EQ(exportDeck(*format, *deck), c.text);
    }
    EXPECT_FALSE(deckFormatOf("Cod"));
}

TEST(DeckExport, TellsTheLineThatIsNoCard) {
    const std::pair<std::string, int> cases[] = {
        {"", 1},
        {"    1 Swamp", 1},
        {"//NAME: x\r\n    1 Swamp\r\nSwamp", 3},
        {"//NAME: x\n    0 Swamp", 2},
        {"//NAME: x\n    1 ", 2},
        {"//NAME: x\nSB:", 2},
        {"//NAME: x\n    99999999999 Swamp", 2},
        {"//NAME: x\n    9999 Swamp\n    1 Island\n    1 Island", 4},
        {"//NAME: x\n    9999 " + std::string(1'000'000, 'x'), 2},
    };
    for (const auto& [text, faulty] : cases) {
        int line = 0;
        EXPECT_FALSE(readDeckFile(text, line)) << text.substr(0, 60);
        EXPECT_EQ(line, faulty) << text.substr(0, 60);
    }
}

}  // namespace
}  // namespace packwise
