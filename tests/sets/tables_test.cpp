// Sets from tables, and cubes from lists.
#include "platform/codepage.h"
#include "sets/cube.h"
#include "sets/mtgsample.h"
#include "sets/table.h"

namespace packwise::sets {
namespace {

std::string asText(const CardRecord& c) {
    return c.rarity + c.color + c.name + "/" + c.cost + "/" + c.type + "/" + c.text + "/" + c.pt;
}

TEST(Table, IsReadInAnyOrderWithQuotedFields) {
    const std::tuple<const char*, const char*> cases[] = {
        {"Name,Rarity,Colour,Cost,Type,Text,Power and "
         "Toughness\nElk,common,Green,1G,Beast,Runs.,2/2\n",
         "-GElk/1G/Beast/Runs./2/2"},
        {"toughness;NAME;Colors;power;rarity\r\n4;Elk;WU;3;M\r\n", "+MElk////3/4"},
        {"\"Text\"\tName\tColor\tRarity\n\"He said \"\"go\"\",\ntwice\"\tElk\t\tu\n",
         "=AElk///He said \"go\",\ntwice/"},
        {"name,rarity,colour,type,unknown\n Elk ,Uncommon,,Basic Land,x\n", "=LElk//Basic Land//"},
        {"name,rarity,colour\nElk,.,colourless", ".AElk////"},
        {"name,rarity,colour\n\n,,\n", nullptr},
        {"name,rarity,colour\nElk,r,{R}\n", "+RElk////"},
        {"name,rarity,colour,p/t\n\"Elk, \xE2\x88\x9E\",r,gold,1/1\n", "+MElk, infinity////1/1"},
    };
    for (const auto& [text, expected] : cases) {
        const ReadSource read = readTable(text, u"Elks"_s);
        EXPECT_THAT(read.source.counts, ElementsAre(1, 3, 11)) << text;
        if (expected) {
            ASSERT_EQ(1U, read.source.cards.size()) << text;
            EXPECT_EQ(expected, asText(read.source.cards[0]));
            EXPECT_TRUE(holdsFault(read.faults, "asks for 11 common", "", false)) << text;
        } else {
            EXPECT_FALSE(read.faults.empty());
        }
    }
}

TEST(Table, IsRefusedWithTheLineOfTheFault) {
    const std::string head = "name,rarity,colour\n";
    const std::tuple<std::string, const char*, const char*> cases[] = {
        {"name,colour\nElk,G\n", "header line", "line 1"},
        {head + "Elk,c,G\nEl|k,c,G\n", "reserved", "line 3"},
        {head + "Elk,c,G\nStag,c,G\nElk,c,G\n", "stands twice, first at line 2", "line 4"},
        {head + "\"El\nk\",c,G\nStag,odd,G\n", "\"odd\" is no rarity", "line 4"},
        {head + "Elk,c,teal\n", "\"teal\" is no colour", "line 2"},
        {head + "Elk,c,G,more\n", "more fields", "line 2"},
        {head + "Elk,c,G\n\"Stag,c,G\n", "never closed", "line 3"},
        {head + "Elk,c,G\nSt\xFFg,c,G\n", "not UTF-8", "line 3"},
    };
    for (const auto& [text, what, where] : cases) {
        const ReadSource read = readTable(QByteArray::fromStdString(text), u"Elks"_s);
        EXPECT_TRUE(holdsFault(read.faults, what, where, false)) << text;
    }
}

TEST(Table, GetsASetNameThatNamesFilesOrIsRefused) {
    const std::tuple<QString, std::string, const char*> cases[] = {
        {u"Elks: All / of \"Them\""_s, "Elks All of \"Them\"", nullptr},
        {u"| E?l\n*k :s"_s, "Elk s", nullptr},
        {u"Elk Herds: Two"_s, "Elk Herds: Two", nullptr},
        {u"?: "_s, "", "the set has no name"},
        {u"Elks~"_s, "Elks~", "the set's name holds a reserved"},
        {u"Elks in the |"_s, "Elks in the |", "the set's name holds"},
        {u"../Elks"_s, "..Elks", "cannot be a file name"},
        {u"The \u00C6lks"_s, "The \xC6lks", "cannot be a file"},
        {QString(101, u'e'), std::string(101, 'e'), "longer than 100"},
    };
    for (const auto& [name, called, fault] : cases) {
        const ReadSource read = readTable("name,rarity,colour\nElk,r,G\n", name);
        EXPECT_EQ(called, read.source.displayName);
        EXPECT_EQ(toBytes(name) != called,
                  holdsFault(read.faults, "the set is called \"" + called + '"', "", true));
        EXPECT_EQ(fault != nullptr,
                  holdsFault(read.faults, fault ? fault : "the set's name", "", false));
    }
}

TEST(Table, WarnsOnceOfCardsThatKeepOthersOutOfAPack) {
    const ReadSource read = readTable(
        "name,rarity,colour\nElk,r,G\nElk Herd,c,G\nElk Herder,c,G\nElk Hero,c,W\n", u"Elks"_s);
    EXPECT_TRUE(holdsFault(read.faults,
                           "never gets \"Elk\" once it holds \"Elk Herd\", which begins alike, and "
                           "so with 1 more",
                           "line 2", true));
    EXPECT_EQ(1, std::count_if(read.faults.begin(), read.faults.end(),
                               [](const Fault& fault) { return fault.warning; }));
}

std::string cubeOf(int cards) {
    std::string list;
    for (int i = 0; i < cards; ++i) {
        list += "Card " + std::to_string(1000 + i) + "\n";
    }
    return list;
}

TEST(Cube, IsSpreadOverTheThreePoolsAndDealtAlike) {
    for (const int size : {15, 360, 361, 720, 768}) {
        const ReadSource read =
            readCube(QByteArray::fromStdString(cubeOf(size)), u"My Cube"_s, nullptr);
        EXPECT_THAT(read.source.counts, ElementsAre(5, 5, 5));
        std::map<std::string, int> marks;
        for (const CardRecord& card : read.source.cards) {
            ++marks[card.rarity];
        }
        EXPECT_THAT(marks,
                    ElementsAre(testing::Pair("+", (size + 2) / 3), testing::Pair("-", size / 3),
                                testing::Pair("=", (size + 1) / 3)));
        ASSERT_EQ(1U, read.faults.size());
        EXPECT_TRUE(holdsFault(read.faults, "--cards", "", true));
    }
    EXPECT_TRUE(holdsFault(readCube(cubeOf(769).c_str(), u"C"_s, nullptr).faults,
                           "769 cards, and a cube has at most 768", "", false));
    EXPECT_TRUE(holdsFault(readCube(cubeOf(14).c_str(), u"C"_s, nullptr).faults, "the list has 14",
                           "", false));
    EXPECT_TRUE(holdsFault(readCube("", u"C"_s, nullptr).faults, "the list has 0", "", false));
}

TEST(Cube, PassesOverWhatIsNoCardAndTakesACardOnce) {
    const ReadSource read = readCube(
        "# mine\r\n\r\n[Blue]\r\n1 Elk\r\n1x Stag\n2X  Doe\n// Red\n//Green\nElk\nRoe #fast\n"
        "4th Hart\nBad|Name\n",
        u"Herd"_s, nullptr);
    std::string names;
    for (const CardRecord& card : read.source.cards) {
        names += card.name + ";";
    }
    EXPECT_EQ("Elk;Stag;Doe;Roe;4th Hart;Bad|Name;", names);
    EXPECT_TRUE(holdsFault(read.faults, "stands twice, first at line 4", "line 9", true));
    EXPECT_TRUE(holdsFault(read.faults, "reserved", "line 12", false));
    EXPECT_TRUE(holdsFault(readCube("Elk\nSt\xFFg\n", u"C"_s, nullptr).faults, "not UTF-8",
                           "line 2", false));
}

TEST(Cube, LooksItsCardsUpUnderEverySpelling) {
    const std::string two = R"("side":"a","otherFaceIds":["back"],"layout":)";
    const ReadSets read = readSets(mtgSet(joined({
        mtgCard("Ebb // Flow", two + R"("split","faceName":"Ebb")"),
        mtgCard("Reedday // Reednight", two + R"("transform","faceName":"Reedday")"),
        mtgCard("Reedday // Reednight",
                R"("uuid":"back","side":"b","faceName":"Reednight","text":"Gloom.")"),
        mtgCard("J\u00f6tun\u2019s Elk", R"("asciiName":"Jotun's Elk","manaCost":"{1}{G}")"),
        mtgCard("1996 Elk"),
        mtgCard("Stranger"),
    })));
    const std::pair<const char*, const char*> cases[] = {
        {"1 ebb / flow", "Ebb // Flow"},
        {"Ebb//Flow", "Ebb // Flow"},
        {"Reedday", "Reedday"},
        {"2x REEDDAY // REEDNIGHT", "Reedday"},
        {"Jotun's elk", "J\xF6tun\x92s Elk"},
        {"J\xC3\xB6tun's Elk", "J\xF6tun\x92s Elk"},
        {"1996 Elk", "1996 Elk"},
        {"Reednight", nullptr},
        {"Elk of None", nullptr},
    };
    for (const auto& [line, name] : cases) {
        CardDetails details;
        for (const CubeLine& wanted : cubeLines(line)) {
            details.want({wanted.name, wanted.whole});
        }
        MtgSet kept = read.sets.at(0);
        std::erase_if(kept.faces, [&](const MtgFace& face) { return !details.wants(face); });
        EXPECT_LE(kept.faces.size(), 2U) << line;
        details.take(kept);
        const ReadSource cube = readCube(line, u"Herd"_s, &details);
        EXPECT_EQ(!name, holdsFault(cube.faults, "hold no card", "line 1", false)) << line;
        EXPECT_EQ(name ? 1U : 0U, cube.source.cards.size()) << line;
        if (name && !cube.source.cards.empty()) {
            EXPECT_EQ(std::string("U") + name,
                      cube.source.cards[0].color + cube.source.cards[0].name);
        }
    }
}

}  // namespace
}  // namespace packwise::sets
