#include "platform/settingsstore.h"
#include "support/faults.h"
#include "support/test.h"

namespace packwise {
namespace {

struct StoreFile {
    QTemporaryDir folder;
    QString path = folder.filePath(u"deep/Packwise.ini"_s);
};

TEST(SettingsStore, WritesAreOnTheDiskAtOnceAndKeepTheRest) {
    const StoreFile file;
    SettingsStore store(file.path);
    EXPECT_EQ(store.read(u"Server"_s, u"Port"_s, u"5252"_s), u"5252"_s);
    EXPECT_TRUE(store.readAll(u"Sets"_s).isEmpty());

    store.write(u"Server"_s, u"Port"_s, u"6000"_s);
    store.write(u"Client"_s, u"Port"_s, u"7000"_s);
    store.write(u"Client"_s, u"Name"_s, u"Zoë | \"Ünal\", %x"_s);

    const SettingsStore other(file.path);
    EXPECT_EQ(other.read(u"Server"_s, u"Port"_s), u"6000"_s);
    EXPECT_EQ(other.read(u"Client"_s, u"Port"_s), u"7000"_s);
    EXPECT_EQ(other.read(u"Client"_s, u"Name"_s), u"Zoë | \"Ünal\", %x"_s);

    {
        const FullDisk disk(20);
        store.write(u"Client"_s, u"Port"_s, u"8000"_s);
        store.remove(u"Client"_s, u"Port"_s);
    }
    EXPECT_EQ(other.read(u"Server"_s, u"Port"_s), u"6000"_s) << "an older value is lost";
    EXPECT_EQ(other.read(u"Client"_s, u"Port"_s), u"7000"_s);
}

TEST(SettingsStore, ASectionComesInTheOrderOfItsKeys) {
    const StoreFile file;
    SettingsStore store(file.path);
    store.write(u"Sets"_s, u"10"_s, u"Tenth"_s);
    store.write(u"Sets"_s, u"house"_s, u"By hand"_s);
    store.write(u"Sets"_s, u"2"_s, u"Second"_s);
    QFile hand(file.path);
    ASSERT_TRUE(hand.open(QIODevice::Append | QIODevice::Text));
    hand.write("1=First, with a comma\n");
    hand.close();

    QStringList values;
    for (const auto& [key, value] : store.readAll(u"Sets"_s)) {
        values += value;
    }
    EXPECT_EQ(values,
              (QStringList{u"First, with a comma"_s, u"Second"_s, u"Tenth"_s, u"By hand"_s}));
}

}  // namespace
}  // namespace packwise
