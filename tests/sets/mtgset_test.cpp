// Every rule by which an MTGJSON set becomes a card set.
#include "sets/mtgsample.h"
#include "sets/sheet.h"

namespace packwise::sets {
namespace {

ReadSource sourceOf(const std::string& json) {
    const ReadSets read = readSets(json);
    EXPECT_TRUE(read.faults.empty()) << read.faults[0].what << ", " << read.faults[0].where;
    EXPECT_EQ(1U, read.sets.size());
    return read.sets.empty() ? ReadSource() : setFromMtgJson(read.sets[0], {});
}

// The record of one card, which may be several faces, of a set without boosters.
CardRecord recordFrom(const std::string& faces) {
    const ReadSource read = sourceOf(mtgSet(faces));
    EXPECT_EQ(1U, read.source.cards.size()) << faces;
    return read.source.cards.empty() ? CardRecord() : read.source.cards[0];
}

std::string namesOf(const ReadSource& read) {
    std::string names;
    for (const CardRecord& card : read.source.cards) {
        names += card.rarity + card.color + card.name + ";";
    }
    return names;
}

void expectFault(const ReadSource& read, const char* what, const char* where, bool warning) {
    EXPECT_TRUE(holdsFault(read.faults, what, where, warning));
}

TEST(MtgSet, GivesEveryCardItsMarkAndColour) {
    const std::pair<const char*, const char*> cases[] = {
        {R"("rarity":"common")", "-U"},
        {R"("rarity":"uncommon")", "=U"},
        {R"("rarity":"rare")", "+U"},
        {R"("rarity":"mythic")", "+U"},
        {R"("rarity":"special")", ".U"},
        {R"("supertypes":["Basic","Snow"],"types":["Land"],"colors":[])", ".L"},
        {R"("types":["Land"],"colors":[],"colorIdentity":["G"])", "-L"},
        {R"("types":["Artifact"],"colors":[])", "-A"},
        {R"("types":["Artifact","Creature"],"colors":["G"])", "-G"},
        {R"("types":["Land"],"colors":["W"])", "-W"},
        {R"("colors":["B","R"])", "-M"},
    };
    for (const auto& [json, expected] : cases) {
        const CardRecord card = recordFrom(mtgCard("Tarn Fish", json));
        EXPECT_EQ(expected, card.rarity + card.color) << json;
    }
    expectFault(sourceOf(mtgSet(mtgCard("Odd", R"("rarity":"fabled")"))), "rarity \"fabled\"", "",
                true);
}

TEST(MtgSet, WritesCostTextAndFigures) {
    const std::tuple<const char*, std::string CardRecord::*, const char*> cases[] = {
        {R"("manaCost":"{1}{W}{W}")", &CardRecord::cost, "1WW"},
        {R"("manaCost":"{X}{10}{W/U}{2/W}{U/P}")", &CardRecord::cost, "X10(W/U)(2/W)(U/P)"},
        {R"("manaCost":"{1}{2}{broken")", &CardRecord::cost, "1(2){broken"},
        {R"("power":"1+*","toughness":"3.5")", &CardRecord::pt, "1+*/3.5"},
        {R"("loyalty":"4")", &CardRecord::pt, "4"},
        {R"("text":"Swim.\nDive \u2014 deep.")", &CardRecord::text, "Swim.\nDive \x97 deep."},
    };
    for (const auto& [json, field, expected] : cases) {
        EXPECT_EQ(expected, recordFrom(mtgCard("Tarn Fish", json)).*field) << json;
    }
}

std::string face(const std::string& name, const std::string& faceName, const char* layout,
                 char side, const std::string& more) {
    return mtgCard(name, R"("layout":")" + std::string(layout) + R"(","side":")" + side +
                             R"(","faceName":")" + faceName + R"(","uuid":"id-)" + side +
                             R"(","otherFaceIds":["id-)" + (side == 'a' ? 'b' : 'a') + R"("],)" +
                             more);
}

TEST(MtgSet, MakesOneRecordOfACardWithTwoFaces) {
    for (const char* layout : {"split", "aftermath"}) {
        const CardRecord card = recordFrom(joined(
            {face("Ebb // Flow", "Flow", layout, 'b', R"("colors":["R"],"manaCost":"{R}")"),
             face("Ebb // Flow", "Ebb", layout, 'a', R"("manaCost":"{1}{U}","text":"Out.")")}));
        EXPECT_EQ("MEbb // Flow, 1U // R", card.color + card.name + ", " + card.cost) << layout;
        EXPECT_EQ("Out.", card.text);
    }
    for (const char* layout : {"transform", "flip", "adventure", "modal_dfc"}) {
        const CardRecord card =
            recordFrom(joined({face("Reedday // Reednight", "Reedday", layout, 'a',
                                    R"("text":"Shine.","manaCost":"{U}")"),
                               face("Reedday // Reednight", "Reednight", layout, 'b',
                                    R"("colors":["B"],"text":"Gloom.")")}));
        EXPECT_EQ("UReedday, U", card.color + card.name + ", " + card.cost) << layout;
        EXPECT_THAT(card.text, HasSubstr("Shine.\n//\nReednight, Creature"));
        EXPECT_THAT(card.text, HasSubstr("Gloom."));
    }
    const std::string back = R"("layout":"meld","side":"b")";
    EXPECT_EQ("-UHead;-UTail;",
              namesOf(sourceOf(mtgSet(joined(
                  {mtgCard("Head // Whole", R"("layout":"meld","side":"a","faceName":"Head")"),
                   mtgCard("Tail // Whole", R"("layout":"meld","side":"a","faceName":"Tail")"),
                   mtgCard("Whole", back)})))));
}

TEST(MtgSet, ReplacesWhatTheCodePageLacksAndWarnsOnceAKind) {
    const ReadSource read = sourceOf(mtgSet(joined(
        {mtgCard("Tam-R\u00fbl\u2019s \u0141oss", R"("text":"\u22121 and \u22122 or \u221E")"),
         mtgCard("\u6771")})));
    EXPECT_EQ("Tam-R\xFBl\x92s Loss", read.source.cards[0].name);
    EXPECT_EQ("-1 and -2 or infinity", read.source.cards[0].text);
    EXPECT_EQ("?", read.source.cards[1].name);
    expectFault(read, "U+2212 is not in Windows-1252 and becomes \"-\", 2 times", "", true);
    expectFault(read, "U+221E is not in Windows-1252 and becomes \"infinity\", 1 time", "", true);
    expectFault(read, "U+0141", "", true);
    expectFault(read, "U+6771 is not in Windows-1252 and becomes \"?\"", "", true);
}

// The sheets of the cases: 4 commons, 4 uncommons, 4 rares, a basic land and a stranger.
std::string sheet(const char* name, const char* kinds, bool foil = false) {
    std::vector<std::string> cards;
    for (const char* kind = kinds; *kind != '\0'; ++kind) {
        const int copies = *kind == 'x' || *kind == 'l' ? 1 : 4;
        for (int i = 0; i < copies; ++i) {
            cards.push_back(std::string("\"id ") + *kind + std::to_string(i) + "\":1");
        }
    }
    return '"' + std::string(name) + R"(":{"foil":)" + (foil ? "true" : "false") +
           R"(,"totalWeight":9,"cards":{)" + joined(cards) + "}}";
}

std::string booster(const std::string& kind, const std::string& configurations,
                    const std::vector<std::string>& sheets) {
    return '"' + kind + R"(":{"boosters":[)" + configurations + R"(],"sheets":{)" + joined(sheets) +
           "}}";
}

ReadSource withBooster(const std::string& boosters, const std::string& more = {}) {
    std::vector<std::string> cards;
    const std::pair<char, const char*> kinds[] = {
        {'c', "common"}, {'u', "uncommon"}, {'r', "rare"}, {'n', "common"}};
    for (const auto& [kind, rarity] : kinds) {
        for (int i = 0; i < 4; ++i) {
            cards.push_back(
                mtgCard(kind + std::to_string(i), R"("rarity":")" + std::string(rarity) + '"'));
        }
    }
    cards.push_back(mtgCard("l0", R"("supertypes":["Basic"],"types":["Land"],"colors":[])"));
    if (!more.empty()) {
        cards.push_back(more);
    }
    return sourceOf(mtgSet(joined(cards), R"("booster":{)" + boosters + "}"));
}

TEST(MtgSet, CountsThePackFromItsSheets) {
    const std::string one = sheet("c", "c");
    const std::string two = sheet("u", "u");
    const std::string three = sheet("r", "r");
    const auto pack = [](const char* contents, int weight) {
        return std::string(R"({"contents":{)") + contents + R"(},"weight":)" +
               std::to_string(weight) + "}";
    };
    const std::string plain = pack(R"("c":3,"u":2,"r":1)", 5);
    const std::tuple<std::string, std::array<int, 3>, const char*> cases[] = {
        {booster("default", plain, {one, two, three}), {1, 2, 3}, ""},
        {booster("default", pack(R"("c":1)", 1) + "," + plain, {one, two, three}), {1, 2, 3}, ""},
        {booster("default", plain + "," + pack(R"("f":4)", 99),
                 {one, two, three, sheet("f", "c", true)}),
         {1, 2, 3},
         ""},
        {booster("arena", pack(R"("c":1)", 1), {one}) + "," +
             booster("play", plain, {one, two, three}),
         {1, 2, 3},
         ""},
        {booster("default", pack(R"("c":1)", 1), {one}) + "," +
             booster("draft", plain, {one, two, three}),
         {1, 2, 3},
         ""},
        {booster("premium", plain, {one, two, three}), {1, 2, 3}, ""},
        // One sheet of uncommons and rares, of which three in five are uncommon by weight.
        {booster("default", pack(R"("c":3,"m":2)", 1),
                 {one, R"("m":{"cards":{"id u0":3,"id u1":3,"id r0":2,"id r1":2}})"}),
         {1, 1, 3},
         ""},
        // A third each of four cards: the pack still has four.
        {booster("default", pack(R"("m":4)", 1), {sheet("m", "cur")}), {2, 1, 1}, ""},
        // Lands that are not dealt and cards of other sets leave their part to the others.
        {booster("default", pack(R"("m":3)", 1), {sheet("m", "cxl")}), {0, 0, 3}, ""},
        {booster("default", pack(R"("c":3,"l":1)", 1), {one, sheet("l", "l")}),
         {0, 0, 3},
         "sheet \"l\""},
        {booster("default", pack(R"("c":3,"gone":1)", 1), {one}), {0, 0, 3}, "sheet \"gone\""},
    };
    for (const auto& [json, counts, warning] : cases) {
        const ReadSource read = withBooster(json);
        EXPECT_EQ(counts, read.source.counts) << json;
        for (const Fault& fault : read.faults) {
            EXPECT_TRUE(fault.warning && *warning != '\0') << json << ": " << fault.what;
        }
        if (*warning != '\0') {
            expectFault(read, warning, "", true);
        }
    }
    const ReadSource large = withBooster(booster("default", pack(R"("c":16)", 1), {one}));
    EXPECT_THAT(large.source.counts, ElementsAre(0, 0, 15));
    expectFault(large, "a pack of 16 cards is cut to 15", "", true);
}

TEST(MtgSet, TakesTheCardsOfTheSheetsAndTheBasicLands) {
    const std::string one = booster("default", R"({"contents":{"s":2},"weight":1})",
                                    {R"("s":{"cards":{"id c0":1,"id c1":2,"id twin":4}})"});
    const ReadSource read = withBooster(
        one, mtgCard("c0", R"("uuid":"id twin","number":"9b","text":"Another picture.")"));
    EXPECT_EQ("-Uc0;-Uc1;.Ll0;", namesOf(read));
    ASSERT_EQ(3U, read.source.weights.size());
    EXPECT_NEAR(2.5, read.source.weights[0] / read.source.weights[1], 1e-9);
    SetSource source = read.source;
    layOutSheets(source);
    const std::vector<std::string>& lines = source.order->lists[0];
    ASSERT_EQ(121U, lines.size());
    EXPECT_NEAR(121 * 5 / 7.0, static_cast<double>(std::count(lines.begin(), lines.end(), "Uc0")),
                1);
}

TEST(MtgSet, WithoutBoostersHasOneThreeElevenOfTheCardsMeantForThem) {
    std::vector<std::string> cards = usualCards();
    const ReadSource all = sourceOf(mtgSet(joined(cards)));
    EXPECT_TRUE(all.faults.empty());
    EXPECT_THAT(all.source.counts, ElementsAre(1, 3, 11));
    EXPECT_EQ("Reed Marsh", all.source.displayName);
    cards.push_back(mtgCard("Meant One", R"("boosterTypes":["deck","draft"])"));
    cards.push_back(mtgCard("Meant Two", R"("boosterTypes":["play"])"));
    cards.push_back(mtgCard("Shoal", R"("supertypes":["Basic"])"));
    EXPECT_EQ("-UMeant One;-UMeant Two;.UShoal;", namesOf(sourceOf(mtgSet(joined(cards)))));
    const ReadSource strangers =
        sourceOf(mtgSet(joined(usualCards()),
                        R"("booster":{"default":{"boosters":[{"contents":{"s":9},"weight":1}],)"
                        R"("sheets":{"s":{"cards":{"id elsewhere":1}}}}})"));
    EXPECT_THAT(strangers.source.counts, ElementsAre(1, 3, 11));
    expectFault(strangers, "name no card of this set", "", true);
}

TEST(MtgSet, IsRefusedWithTheCardAtFault) {
    expectFault(sourceOf(mtgSet(mtgCard("Fi|sh"))), "reserved", "card Fi|sh, number 1", false);
    expectFault(sourceOf(mtgSet(R"({"name":7,"rarity":[],"colors":"U"})")), "no name",
                "card , number ", false);
    expectFault(sourceOf(mtgSet(mtgCard("Lone Fish"))), "asks for 11 common cards", "", false);
    EXPECT_FALSE(sourceOf(R"({"cards":[]})").faults.empty());
}

TEST(MtgJson, ReadsOneSetBareOrWrappedAndTheWantedOfAll) {
    const std::string set = mtgSet(joined(usualCards()), R"("translations":{"data":"x"})");
    const std::pair<std::string, std::size_t> cases[] = {
        {set, 1U},
        {"\xEF\xBB\xBF " + set + "\n", 1U},
        {R"({"meta":{"name":"no set"},"data":)" + set + "}", 1U},
        {R"({"data":{"ONE":)" + set + R"(,"TWO":)" + set + R"(},"meta":{}})", 2U},
        {"{}", 0U},
        {R"({"data":{"ONE":{"name":"No Cards"}}})", 0U},
        {"[" + set + "]", 0U},
    };
    for (const auto& [json, count] : cases) {
        const ReadSets read = readSets(json);
        EXPECT_TRUE(read.faults.empty()) << json.substr(0, 40);
        ASSERT_EQ(count, read.sets.size()) << json.substr(0, 40);
        for (const MtgSet& one : read.sets) {
            EXPECT_EQ("Reed Marsh", one.name);
            EXPECT_EQ(count == 1 ? "RMS" : &one == &read.sets[0] ? "ONE" : "TWO", one.code);
            EXPECT_EQ(15U, one.faces.size());
        }
    }
}

TEST(MtgJson, TellsTheByteOfDamage) {
    const std::string whole = R"({"data":)" + mtgSet(joined(usualCards())) + "}";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const ReadSets cut = readSets(whole.substr(0, length));
        ASSERT_EQ(1U, cut.faults.size()) << length;
        EXPECT_THAT(cut.faults[0].where, HasSubstr("byte ")) << length;
        EXPECT_THAT(cut.faults[0].what, HasSubstr("again")) << length;
    }
    const std::string deep = R"({"a":)" + std::string(100000, '[');
    for (const std::string& bad :
         {whole + "}", whole + std::string("\0x", 2), deep, std::string("{\"a\":\"\xFF\"}"),
          std::string("{\"a\":1e999}"), std::string("<html></html>")}) {
        EXPECT_EQ(1U, readSets(bad).faults.size()) << bad.substr(0, 20);
    }
}

}  // namespace
}  // namespace packwise::sets
