#include "platform/commandline.h"

#include "support/test.h"

namespace packwise {
namespace {

TEST(Patterns, BecomeTheFilesThatTheyFit) {
    const QTemporaryDir folder;
    for (const QString& name : {u"b.set"_s, u"a.set"_s, u"[ab].set"_s, u"a.txt"_s}) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"c.set"_s));
    const auto expanded = [&](const QString& word) {
        QString names = expandPatterns({folder.filePath(word)}).join(u' ');
        return names.remove(folder.path() + u'/').toStdString();
    };
    EXPECT_EQ(expanded(u"*.set"_s), "[ab].set a.set b.set");
    EXPECT_EQ(expanded(u"?.set"_s), "a.set b.set");
    EXPECT_EQ(expanded(u"[ab]*"_s), "[ab].set");
    EXPECT_EQ(expanded(u"*.dec"_s), "*.dec") << "so that its reader names what is missing";
    EXPECT_EQ(expanded(u"a.set"_s), "a.set");
}

}  // namespace
}  // namespace packwise
