// A record, a deck and a file of picks as text, and the same with one thing changed.
#include "record/check.h"

#include "engine/deckfile.h"
#include "engine/samplefiles.h"

#include <gmock/gmock.h>

namespace packwise {
namespace {

using testing::HasSubstr;

// Two players and packs of two cards. Bob is lost in the second round.
const std::string kRecord =
    R"({"what":"draft","form":1,"version":"1.41","time":"2026-11-23T20:15:02+01:00",)"
    R"("format":"Booster","seating":"chance","sets":["Tiny","Tiny","Tiny"],)"
    R"("players":[{"name":"Zo)"
    "\xC3\xAB"
    R"(","seat":2},{"name":"Bob","seat":1}]}
{"what":"pack","round":1,"place":1,"dealt":"pools","cards":["UR1","UC1"]}
{"what":"pack","round":1,"place":2,"dealt":"pools","cards":["UR2","UC2"]}
{"what":"pick","place":1,"card":"UR1","by":"player"}
{"what":"pick","place":2,"card":"UR2","by":"player"}
{"what":"pick","place":1,"card":"UC2","by":"player"}
{"what":"pick","place":2,"card":"UC1","by":"player"}
{"what":"pack","round":2,"place":1,"dealt":"lists","cards":["UR3","UC3"]}
{"what":"pack","round":2,"place":2,"dealt":"lists","cards":["UR4","UC4"]}
{"what":"loss","place":2}
{"what":"pick","place":2,"card":"UC4","by":"chance"}
{"what":"pick","place":1,"card":"UR3","by":"player"}
{"what":"pick","place":2,"card":"UC3","by":"chance"}
{"what":"pick","place":1,"card":"UR4","by":"player"}
{"what":"pack","round":3,"place":1,"dealt":"pools","cards":["UR5","UC5"]}
{"what":"pack","round":3,"place":2,"dealt":"pools","cards":["UR6","UC6"]}
{"what":"pick","place":2,"card":"UR6","by":"chance"}
{"what":"pick","place":1,"card":"UC5","by":"player"}
{"what":"pick","place":2,"card":"UR5","by":"chance"}
{"what":"pick","place":1,"card":"UC6","by":"player"}
{"what":"end","how":"over","time":"2026-11-23T20:40:00+01:00"}
{"what":"code","place":1,"code":1234}
)";

const std::string kDeck =
    "//NAME: Z\r\n    1 R1\r\n    1 C2\r\n    1 R3\r\n    1 Swamp\r\n    1 Swamp\r\n"
    "SB: 1 R4\r\nSB: 1 C5\r\nSB: 1 C6\r\n";

const std::string kPicks =
    "Players:\n--> Zo\xC3\xAB\n    Bob\n\nPack 1 pick 1:\n--> R1\n    C1\n\nPack 1 pick 2:\n"
    "--> C2\n\nPack 2 pick 1:\n    C3\n--> R3\n\nPack 2 pick 2:\n--> R4\n\nPack 3 pick 1:\n"
    "    R5\n    C5\n\nPack 3 pick 2:\n--> C6\n";

std::string last(const std::string& record) {
    const auto lines = std::count(record.begin(), record.end(), '\n') + 1;
    return R"({"what":"last","lines":)" + std::to_string(lines) + "}\n";
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

class Checks : public testing::Test {
protected:
    Checks() {
        std::string cards = sample::header(1, 0, 1);
        std::string order = "1,0,1\n21,21,21\n";
        for (const char mark : {'+', '-'}) {
            for (int i = 1; i <= 6; ++i) {
                cards += sample::record((mark == '+' ? "R" : "C") + std::to_string(i),
                                        std::string(1, mark));
            }
        }
        // The commons first; a card at a place for each step.
        for (const char* letter : {"C", "U", "R"}) {
            for (int i = 0; i < 21; ++i) {
                order += std::string("U") + letter + std::to_string(i % 6 + 1) + "\n";
            }
        }
        folder.write("Tiny.pw", cards + sample::end());
        folder.write("Tiny.ord", order);
    }

    // All that is told of them, a line each; "!" before a finding.
    std::string check(const std::string& record, std::string deck, const std::string& picks) {
        RecordFault fault;
        const auto read = readRecord(record, fault);
        if (!read) {
            return "unreadable, line " + std::to_string(fault.line) + ": " + fault.what;
        }
        DraftCheck checked(*read);
        checked.checkPacks(folder.path());
        checked.checkDeck("evening/zo-.dec", deck);
        checked.checkPicks("zo.picks.txt", picks);
        std::string told;
        for (const auto* lines : {&checked.report().checked, &checked.report().unchecked}) {
            for (const std::string& line : *lines) {
                told += line + '\n';
            }
        }
        for (const Finding& finding : checked.report().findings) {
            told += "! " + finding.place + ": " + finding.what + '\n';
        }
        return told;
    }

    sample::TempFolder folder;
    int code = codeOfDeckFile(kDeck).value();
};

TEST_F(Checks, FindWhatIsNotAsItWasPlayed) {
    std::string record = kRecord;
    replaceAll(record, "1234", std::to_string(code));
    const std::string sound = check(record + last(record), kDeck, kPicks);
    EXPECT_EQ(sound,
              "12 picks stood in their packs as they went round.\n6 packs could come from Tiny.\n"
              "evening/zo-.dec: 8 cards of Zo\xEB.\nzo.picks.txt: 6 of 6 picks agree with what "
              "Zo\xEB saw.\n");

    struct Case {
        const char* from;  // wherever it stands
        const char* to;
        const char* told;
    };
    for (const Case& c : {
             // What could not have been played.
             Case{R"("UR1","by)", R"("UR2","by)",
                  "! Round 1, pick 1: Zo\xEB takes R2, which is not in the pack, but in that before"
                  " Bob."},
             Case{R"("UR1","by)", R"("UC1","by)",
                  "! Round 1, pick 2: Bob takes C1, which is not in the pack."},
             Case{R"(2,"card":"UR2")", R"(1,"card":"UR2")", "Zo\xEB picks twice."},
             Case{R"("UC4","by":"chance")", R"("UC4","by":"player")", "only chance could have"},
             Case{R"("UR3","by":"player")", R"("UR3","by":"chance")", "without a reason"},
             Case{R"("UR3","by":"player")", R"("UR3","by":"clock")", "A clock picks"},
             Case{R"("loss","place":2)", R"("loss","place":1)", "without a reason"},
             Case{R"({"what":"loss","place":2})",
                  R"({"what":"odd","place":2,"how":"unsound pick"})",
                  "! Round 2, pick 1: Bob has sent back something else"},
             Case{"{\"what\":\"pick\",\"place\":1,\"card\":\"UC6\",\"by\":\"player\"}\n", "",
                  "over, and cards are left"},
             Case{R"("round":2,"place":2)", R"("round":2,"place":1)", "another round or place"},
             Case{R"(["UR2","UC2"])", R"(["UR2"])", "not of one size"},
             Case{R"({"what":"loss","place":2})",
                  R"({"what":"pack","round":3,"place":1,"dealt":"pools","cards":["UR5","UC5"]})",
                  "dealt where none can be"},
             Case{R"("seat":1})", R"("seat":2})", "one seat or name"},
             Case{R"({"what":"code")",
                  R"({"what":"end","how":"over","time":""})"
                  "\n"
                  R"({"what":"code")",
                  "ends twice"},
             Case{R"("how":"over")", R"("how":"given up")", "zo.picks.txt: 6 of 6"},
             Case{R"({"what":"loss","place":2})", R"({"what":"end","how":"halted","time":""})",
                  "! Round 2, pick 1: Bob takes a card where there is none."},
             Case{"loss\",\"place\":2}\n", "loss\",\"place\":2}\n{\"what\":\"loss\",\"place\":2}\n",
                  "Bob is lost when there is nobody to lose."},
             // What could not have been dealt.
             Case{"UC1\"", "UC9\"",
                  "! Round 1, the pack of Zo\xEB: It cannot be dealt from the files of Tiny"},
             Case{R"(["UR5","UC5"])", R"(["UC5","UR5"])", "It cannot be dealt"},
             Case{R"(["UR4","UC4"])", R"(["UC4","UR4"])", "It cannot be dealt"},
             Case{R"("Tiny"])", R"("Else"])", "The packs of Else: the files that they were"},
             // What its host has changed so that it could have been played: the player knows.
             Case{"UR1\"", "UR2\"",
                  "! zo.picks.txt, pack 1 pick 1: The record has, and the player did not see: R2."},
             Case{"UR1\"", "UR2\"",
                  "! evening/zo-.dec: Cards of this deck are not among the picks of Zo\xEB: R1."},
             // Decks.
             Case{"1 C5\r\n", "1 R6\r\n", "are not among the picks of Zo\xEB: R6."},
             Case{"1 C5\r\n", "1 C5\r\nSB: 1 C5\r\n", "are not among the picks of Zo\xEB: C5."},
             Case{"1 C5\r\n", "1 Snow-Covered Swamp\r\n", "picks of Zo\xEB: Snow-Covered Swamp."},
             Case{"//NAME: Z\r\n", "//NAME: Y\r\n", "! evening/zo-.dec: The code of this deck is"},
             Case{"//NAME: Z\r\n", "", "evening/zo-.dec: it is no deck file"},
             Case{R"({"what":"code")",
                  R"({"what":"odd","place":1,"how":"second code"})"
                  "\n"
                  R"({"what":"code")",
                  "! : Zo\xEB has reported a second code."},
             // Picks.
             Case{"--> R1\n    C1", "    R1\n--> C1",
                  "! zo.picks.txt, pack 1 pick 1: The player saw C1 taken, the record says R1."},
             Case{"    C3\n", "    C4\n", "The player saw, and the record has not: C4."},
             Case{"Pack 3 pick 2", "Pack 4 pick 2", "The record knows of no such pick."},
             Case{"--> Zo\xC3\xAB", "--> Eve", "zo.picks.txt: it is by nobody who played here."},
             Case{"--> C2\n", "--> C2\n--> C2\n", "zo.picks.txt: it is no file of picks; line 11"},
             // What is no record.
             Case{R"("what":"draft","form":1)", R"("what":"draft","form":2)",
                  "line 1: a record of"},
             Case{R"({"what":"end")", R"({"what":"end)", "unreadable, line 21: no JSON object"},
             Case{R"("by":"chance")", R"("by":"me")", "line 11: its \"by\" is missing or makes"},
             Case{R"(2,"card":"UR2")", R"(3,"card":"UR2")", "line 5: its \"place\" is missing"},
             Case{R"("cards":["UR1","UC1"])", R"("cards":["UR1|UC1"])", "line 2: its \"cards\""},
             Case{R"("sets":["Tiny","Tiny",)", R"("sets":["Tiny",)", "line 1: its \"sets\""},
         }) {
        std::string changed = record;
        std::string deck = kDeck;
        std::string picks = kPicks;
        for (std::string* text : {&changed, &deck, &picks}) {
            replaceAll(*text, c.from, c.to);
        }
        EXPECT_THAT(check(changed + last(changed), deck, picks), HasSubstr(c.told))
            << c.from << " -> " << c.to;
    }
    EXPECT_THAT(check(record, kDeck, kPicks), HasSubstr("line 22: it breaks off behind"));
    EXPECT_THAT(check(record + last("\n"), kDeck, kPicks), HasSubstr("its \"lines\""));
    EXPECT_THAT(check(record + last(record) + record, kDeck, kPicks), HasSubstr("behind the last"));
    EXPECT_THAT(check("", kDeck, kPicks), HasSubstr("empty"));
    EXPECT_THAT(check(std::string(kMostRecordBytes + 1, ' '), "", ""), HasSubstr("too long"));
}

}  // namespace
}  // namespace packwise
