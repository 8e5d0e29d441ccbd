#include "platform/codepage.h"

#include "support/test.h"

namespace packwise {
namespace {

TEST(CodePage, EveryByteSurvivesTheScreen) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(toBytes(fromBytes(all)), all);
    EXPECT_TRUE(fitsCodePage(fromBytes(all)));
}

TEST(CodePage, OneCharacterIsOneByte) {
    struct Case {
        QString text;
        std::string bytes;
        bool fits;
    };
    const Case cases[] = {
        {u"Æther Œuvre"_s, "\xC6ther \x8Cuvre", true},
        {u"10 \u20AC \u2013 \u201Cok\u201D"_s, "10 \x80 \x96 \x93ok\x94", true},
        {u"e\u0301"_s, "\xE9", true},  // a letter and its accent typed apart
        {u"\u03A9mega"_s, "?mega", false},
        {QChar(0xDC00) + u"x"_s, "?x", false},  // half a character
        {u"\U0001F600!"_s, "?!", false},        // one character outside the basic plane, one "?"
    };
    for (const Case& c : cases) {
        EXPECT_EQ(toBytes(c.text), c.bytes);
        EXPECT_EQ(fitsCodePage(c.text), c.fits) << c.bytes;
    }
}

}  // namespace
}  // namespace packwise
