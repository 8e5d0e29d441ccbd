#include "common/settings.h"

#include "platform/settingsstore.h"
#include "support/faults.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

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
    struct Row {
        setting::Key key;
        QString stored;  // section, key and default
    };
    const Row rows[] = {{setting::serverPort, u"Server Port 5252"_s},
                        {setting::runClient, u"Server RunClient 1"_s},
                        {setting::draftType, u"Server DraftType B"_s},
                        {setting::timed, u"Server Timed 1"_s},
                        {setting::time, u"Server Time 25"_s},
                        {setting::fixSeats, u"Server FixSeats 0"_s},
                        {setting::packCount, u"Server PackCount 3"_s},
                        {setting::pack[0], u"Server Pack1 "_s},
                        {setting::pack[1], u"Server Pack2 "_s},
                        {setting::pack[2], u"Server Pack3 "_s},
                        {setting::pack[3], u"Server Pack4 "_s},
                        {setting::pack[4], u"Server Pack5 "_s},
                        {setting::pack[5], u"Server Pack6 "_s},
                        {setting::silence, u"Server Silence 0"_s},
                        {setting::halt, u"Server Halt 0"_s},
                        {setting::reality, u"Server Reality 0"_s},
                        {setting::clientName, u"Client Name "_s},
                        {setting::clientPort, u"Client Port 5252"_s},
                        {setting::showInfo, u"Client ShowInfo 1"_s},
                        {setting::savePath, u"Client SavePath "_s},
                        {setting::serverPlace, u"Forms Server 0 0"_s},
                        {setting::clientPlace, u"Forms Client 0 0"_s},
                        {setting::messagePlace, u"Forms Message 0 0"_s},
                        {setting::messageSize, u"Forms MessageSize 5895 2385"_s},
                        {setting::securityPlace, u"Forms Security 0 0"_s}};
    const StoreFile file;
    const SettingsStore empty(file.path);
    for (const Row& row : rows) {
        const SettingsStore::Entry entry = row.key.entry(row.key.read(empty));
        EXPECT_EQ(QStringList({entry.section, entry.key, entry.value}).join(u' '), row.stored);
    }
}

}  // namespace
}  // namespace packwise
