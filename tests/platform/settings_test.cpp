#include "platform/settings.h"

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

TEST(Settings, AreStoredWhereTheyAlwaysWere) {
    using namespace setting;
    const Key keys[] = {serverPort,  runClient,   draftType,    timed,       time,
                        fixSeats,    packCount,   pack[0],      pack[1],     pack[2],
                        pack[3],     pack[4],     pack[5],      silence,     halt,
                        reality,     clientName,  clientPort,   showInfo,    savePath,
                        serverPlace, clientPlace, messagePlace, messageSize, securityPlace};
    const QString stored =
        u"Server/Port=5252, Server/RunClient=1, Server/DraftType=B, Server/Timed=1, "
        u"Server/Time=25, "
        u"Server/FixSeats=0, Server/PackCount=3, Server/Pack1=, Server/Pack2=, Server/Pack3=, "
        u"Server/Pack4=, Server/Pack5=, Server/Pack6=, Server/Silence=0, Server/Halt=0, "
        u"Server/Reality=0, Client/Name=, Client/Port=5252, Client/ShowInfo=1, Client/SavePath=, "
        u"Forms/Server=0 0, Forms/Client=0 0, Forms/Message=0 0, Forms/MessageSize=5895 2385, "
        u"Forms/Security=0 0"_s;
    const StoreFile file;
    const SettingsStore empty(file.path);
    QStringList all;
    for (const Key& key : keys) {
        const SettingsStore::Entry entry = key.entry(key.read(empty));
        all += entry.section + u'/' + entry.key + u'=' + entry.value;
    }
    EXPECT_EQ(all.join(u", "_s), stored);
}

}  // namespace
}  // namespace packwise
