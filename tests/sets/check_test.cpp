// Every kind of damage to the files of a folder is told, with its place.
#include "sets/cardfile.h"
#include "sets/folder.h"
#include "sets/setstest.h"
#include "sets/sheet.h"
#include "sets/writer.h"

#include <fstream>

namespace packwise::sets {
namespace {

// Thirty commons, "UFish aa" and so on, one of them in a pack.
SetSource smallSet() {
    SetSource source;
    source.displayName = "Small Set";
    source.counts = {0, 0, 1};
    for (char c = 'a'; c < 'a' + 24; ++c) {
        source.cards.push_back({.name = std::string("Fish ") + c + c,
                                .rarity = "-",
                                .color = "U",
                                .cost = "1U",
                                .type = "Creature - Fish",
                                .text = "",
                                .pt = "1/1"});
    }
    layOutSheets(source);
    return source;
}

class Check : public testing::Test {
protected:
    fs::path folder() const { return dir_.path().toStdString(); }
    void put(const char* file, const std::string& bytes) const {
        std::ofstream(folder() / file, std::ios::binary) << bytes;
    }
    // The fault of that file and place, and nothing but warnings besides.
    void expect(const char* file, const char* what, const char* where) const {
        const std::vector<FileFault> found = checkFolder(folder());
        EXPECT_TRUE(std::any_of(found.begin(), found.end(),
                                [&](const FileFault& f) {
                                    return f.file.filename() == file && !f.fault.warning &&
                                           f.fault.what.find(what) != std::string::npos &&
                                           f.fault.where.find(where) != std::string::npos;
                                }))
            << what << ", " << where
            << "; found: " << (found.empty() ? "nothing" : found[0].fault.what);
    }

    QTemporaryDir dir_;
};

TEST_F(Check, FindsNothingInASoundFolderAndNothingInAnEmptyOne) {
    EXPECT_TRUE(checkFolder(folder()).empty());
    std::string error;
    ASSERT_EQ(WriteResult::Written, writeSetFiles(smallSet(), folder(), error));
    EXPECT_TRUE(checkFolder(folder()).empty());
}

TEST_F(Check, TellsWhatIsWrongWithACardFile) {
    const auto named = [](std::size_t card, const std::string& name) {
        return [=](SetSource& s) { s.cards[card].name = name; };
    };
    const auto counted = [](const std::array<int, 3>& counts) {
        return [=](SetSource& s) { s.counts = counts; };
    };
    const std::tuple<const char*, const char*, std::function<void(SetSource&)>> cases[] = {
        {"mark \"--\"", "record 2 (Fish bb)", [](SetSource& s) { s.cards[1].rarity = "--"; }},
        {"colour \"\"", "record 3", [](SetSource& s) { s.cards[2].color = ""; }},
        {"reserved", "record 1", named(0, "Fi|sh")},
        {"reserved", "record 1", named(0, "Fish~")},
        {"no name", "record 1", named(0, "")},
        {"END record carries", "record 4", named(3, "END")},
        {"control character", "record 1", named(0, "Fi\nsh")},
        {"first at record 1 (Fish aa)", "record 5", named(4, "Fish aa")},
        {"longer than 3999", "record 1", named(0, std::string(4000, 'x'))},
        {"asks for 25 common", "", counted({0, 0, 25})},
        {"at most 15 fit", "", counted({0, 0, 16})},
        {"cannot hold -1", "", counted({0, -1, 1})},
        {"holds no cards", "", counted({})},
        {"257 common cards", "", [](SetSource& s) { s.cards.resize(257, s.cards[0]); }},
    };
    for (const auto& [what, where, damage] : cases) {
        SetSource source = smallSet();
        damage(source);
        put("SmallSet.pw", cardFileBytes(source));
        expect("SmallSet.pw", what, where);
    }
}

TEST_F(Check, TellsWhereACardFileBreaksOff) {
    const std::string whole = cardFileBytes(smallSet());
    const std::size_t record = (whole.size() - 6 - 18) / 24;
    std::string rareEnd = whole;
    rareEnd[whole.size() - 11] = '-';
    const std::tuple<std::string, const char*, std::string> cases[] = {
        {"", "is empty", "byte 0"},
        {whole.substr(0, 5), "header is cut", "byte 5"},
        {whole.substr(0, 6), "END record is missing", "record 1 at byte 6"},
        {whole.substr(0, 6 + 2 * record + 9), "cut off",
         "record 3 at byte " + std::to_string(6 + 2 * record)},
        {rareEnd, "END record carries the mark \"-\"", "record 25"},
    };
    for (const auto& [bytes, what, where] : cases) {
        put("SmallSet.pw", bytes);
        expect("SmallSet.pw", what, where.c_str());
    }
}

TEST_F(Check, TellsWhatIsWrongWithAnOrderFile) {
    put("SmallSet.pw", cardFileBytes(smallSet()));
    const auto list = [](int lines, int different) {
        std::string text;
        for (int i = 0; i < lines; ++i) {
            const char c = static_cast<char>('a' + i % different);
            text += std::string("UFish ") + c + c + "\n";
        }
        return text;
    };
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"", "is empty", "line 1"},
        {"one,0,0\n21,0,0\n" + list(21, 21), "three whole numbers", "line 1"},
        {"1,0,0\n22,0,0\n" + list(21, 21), "has 21 of 22 lines", "line 23"},
        {"1,0,0\n20,0,0\n" + list(20, 20), "needs 21", "line 3"},
        {"1,1,0\n21,21,0\n" + list(21, 21) + "UFish aa\nUFish zz\n" + list(19, 19), "UFish zz",
         "line 25"},
        {"1,0,0\n21,0,0\nRFish aa\n" + list(20, 20), "\"RFish aa\" is no card", "line 3"},
        {"4,0,0\n30,0,0\n" + list(30, 3), "3 different cards", "line 3"},
        {"16,0,0\n24,0,0\n" + list(24, 24), "a pack of 16", "line 1"},
    };
    for (const auto& [text, what, where] : cases) {
        put("SmallSet.ord", text);
        expect("SmallSet.ord", what, where);
    }
    put("SmallSet.ord", "1 0 0\r\n21 0 0\r\n" + list(21, 21));
    EXPECT_TRUE(checkFolder(folder()).empty());
    fs::remove(folder() / "SmallSet.ord");
    put("SMALLSET.ORD", "1 0 0\r\n21 0 0\r\n" + list(21, 21));
    EXPECT_TRUE(checkFolder(folder()).empty());
    fs::remove(folder() / "SmallSet.pw");
    expect("SMALLSET.ORD", "beside it", "");
}

}  // namespace
}  // namespace packwise::sets
