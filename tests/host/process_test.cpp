// The program itself, with players of its own kind and others.
#include "engine/samplefiles.h"
#include "host/options.h"
#include "support/peer.h"

#include <QRegularExpression>

namespace packwise {
namespace {

using testing::HasSubstr;

constexpr int kPatience = 30'000;  // milliseconds; only a failing test waits that long

class HostProgram : public testing::Test {
protected:
    sample::TempFolder cards;
    QTemporaryDir decks;
    QTemporaryDir records;
    QProcess host;
    std::vector<std::unique_ptr<QProcess>> bots;
    std::string told;
    quint16 port = freePort();

    HostProgram() {
        cards.write("Sample.pw", sample::wholeSet());
        cards.write("Sample.ord", "broken");
        host.setProcessChannelMode(QProcess::MergedChannels);
    }
    ~HostProgram() override {
        for (const auto& each : bots) {
            each->kill();
            each->waitForFinished();
        }
        if (host.state() != QProcess::NotRunning) {
            host.kill();
            host.waitForFinished();
        }
    }

    QString cardFolder() const { return QString::fromStdString(cards.path().string()); }

    void start(const QStringList& more) {
        told.clear();
        host.start(QStringLiteral(PACKWISE_HOST),
                   QStringList{u"--sets"_s, u"Sample"_s, u"Sample"_s, u"Sample"_s, u"--cards"_s,
                               cardFolder(), u"--port"_s, QString::number(port), u"--records"_s,
                               records.path()} +
                       more);
    }
    bool tells(const std::string& text, int times = 1) {
        return QTest::qWaitFor(
            [&] {
                told += host.readAll().toStdString();
                int found = 0;
                for (std::size_t at = 0; (at = told.find(text, at)) != told.npos; ++at) {
                    ++found;
                }
                return found >= times;
            },
            kPatience);
    }
    void type(const char* line) { host.write(line); }
    void bring(int players, int table = 0) {
        auto party = std::make_unique<QProcess>();
        party->setStandardOutputFile(QProcess::nullDevice());
        party->start(QStringLiteral(PACKWISE_BOT),
                     {u"--seats"_s, QString::number(players), u"--port"_s,
                      QString::number(port + table), u"--decks"_s, decks.path(), u"--delay"_s,
                      u"0"_s, u"--picks"_s, u"--cards"_s, cardFolder()});
        bots.push_back(std::move(party));
    }
    void sendBotsHome() {
        for (const auto& each : bots) {
            each->terminate();
            EXPECT_TRUE(each->waitForFinished(kPatience));
        }
        bots.clear();
    }
    static void put(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // The exit status of packwise-draft for a record and files of its players, by name.
    QString checked;
    int check(const QString& record, const QStringList& files) {
        QStringList arguments = {u"check"_s, record, u"--cards"_s, cardFolder()};
        for (const QString& name : files) {
            arguments << (name.endsWith(u".dec"_s) ? u"--decks"_s : u"--picks"_s)
                      << QDir(decks.path()).filePath(name);
        }
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(PACKWISE_DRAFT), arguments);
        EXPECT_TRUE(program.waitForFinished(kPatience));
        checked = QString::fromUtf8(program.readAll());
        return program.exitCode();
    }

    // The exit status once the program has ended by itself; -1 when it has not.
    int status() {
        const bool ended =
            QTest::qWaitFor([this] { return host.state() == QProcess::NotRunning; }, kPatience);
        told += host.readAll().toStdString();
        return ended && host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1;
    }
};

// What players disagree about is found: a deck that was changed, and a record.
TEST_F(HostProgram, HostsEightInEitherFormatAgainAndAgain) {
    for (const QStringList& format : {QStringList{}, QStringList{u"--rochester"_s}}) {
        start(format + QStringList{u"--again"_s});
        ASSERT_TRUE(tells("Listening on port"));
        std::vector<QStringList> saved(1);  // the files of all drafts so far
        const QDir folder(decks.path());
        for (int draft = 1; draft <= 2; ++draft) {
            bring(8);
            ASSERT_TRUE(tells("8 players are seated; the draft starts in 10 seconds", draft));
            type("start\n");
            ASSERT_TRUE(tells("has a deck of the code", 8 * draft)) << told;
            sendBotsHome();
            ASSERT_TRUE(tells("open anew", draft)) << told;
            ASSERT_TRUE(tells("The record of this draft is ", draft)) << told;
            saved.push_back(folder.entryList(QDir::Files));
        }
        host.terminate();
        EXPECT_EQ(status(), 0);
        EXPECT_EQ(saved.back().size(), 32);
        static const QRegularExpression line(u"The record of this draft is (.*)\\."_s);
        auto record = line.globalMatch(QString::fromStdString(told));
        for (std::size_t draft = 1; draft < saved.size(); ++draft) {
            QStringList files = saved[draft];
            files.removeIf([&](const QString& name) { return saved[draft - 1].contains(name); });
            const QString path = record.next().captured(1);
            EXPECT_EQ(check(path, files), 0) << checked.toStdString();
            const QString deck = files.filter(u".dec"_s).constFirst();
            put(folder.filePath(deck), bytesOf(folder.filePath(deck)) + "    1 Swamp\r\n");
            EXPECT_EQ(check(path, files), 1);
            EXPECT_TRUE(checked.contains(u"The code of this deck is "_s)) << checked.toStdString();
            QByteArray changed = bytesOf(path);
            const QByteArray first = "UOld ";  // of a rare in the first pack
            changed.replace(changed.indexOf(first), first.size(), "USld ");
            put(path, changed);
            EXPECT_EQ(check(path, {}), 1) << checked.toStdString();
            put(path, changed.chopped(20));
            EXPECT_EQ(check(path, {}), 2) << checked.toStdString();
        }
        for (const QString& name : saved.back()) {
            QFile::remove(folder.filePath(name));
        }
    }
}

TEST_F(HostProgram, HostsTwoTablesAtOnce) {
    start({u"--tables"_s, u"2"_s});
    ASSERT_TRUE(tells("Listening on port"));
    bring(4, 0);
    bring(3, 1);
    ASSERT_TRUE(tells(" has come from 127.0.0.1", 7));
    type("1 start\n2 start\n");
    EXPECT_TRUE(tells("table 1: The draft is over"));
    EXPECT_TRUE(tells("table 2: The draft is over"));
    EXPECT_TRUE(tells("has a deck of the code", 7));
    sendBotsHome();
    EXPECT_EQ(status(), 0) << "nothing is left to do";
}

TEST_F(HostProgram, TellsThePlayersWhenItIsStoppedInMidDraft) {
    start({});
    ASSERT_TRUE(tells("Listening on port"));
    std::array<Peer, 3> peers;
    for (std::size_t i = 0; i < peers.size(); ++i) {
        ASSERT_TRUE(peers[i].connectTo(port));
        peers[i].say("VERS1.41~NAME\x1b]0;p" + std::to_string(i) + "\x07~");
        ASSERT_TRUE(peers[i].hearsSometime("~NAME7"));
    }
    type("start\n");
    for (Peer& peer : peers) {
        EXPECT_TRUE(peer.hearsSometime("BOOS"));
    }
    host.terminate();
    for (Peer& peer : peers) {
        EXPECT_TRUE(peer.hearsSometime("CLOS~"));
        EXPECT_TRUE(peer.waitClosed());
    }
    EXPECT_EQ(status(), 0);
    EXPECT_THAT(told, HasSubstr("?]0;p1? has come"));
    EXPECT_EQ(told.find_first_of("\x1b\x07"), std::string::npos);
    const QDir folder(records.path());
    EXPECT_EQ(check(folder.filePath(folder.entryList(QDir::Files).join(u' ')), {}), 0)
        << checked.toStdString();
}

TEST_F(HostProgram, ServesOnWhenNobodyReadsItsLinesAnyMore) {
    QProcess reader;
    host.setStandardOutputProcess(&reader);
    start({});
    reader.start(QStringLiteral(PACKWISE_HOST), {u"--version"_s});
    ASSERT_TRUE(reader.waitForFinished(kPatience));
    Peer peer;
    ASSERT_TRUE(QTest::qWaitFor([&] { return peer.connectTo(port); }, kPatience));
    for (const char* name : {"Ada", "Bob", "Cleo"}) {
        peer.say("NAME" + std::string(name) + "~");
        EXPECT_TRUE(peer.hearsSometime(std::string("MESG") + name + " has joined~"));
    }
    host.terminate();
    EXPECT_EQ(status(), 0);
}

TEST_F(HostProgram, StartsNothingWhenSomethingIsWrong) {
    QTcpServer taken;
    ASSERT_TRUE(taken.listen(QHostAddress::AnyIPv4, static_cast<quint16>(port + 1)));
    struct Case {
        QStringList arguments;
        int status;
        const char* line;
    };
    for (const Case& c : {
             Case{{u"--tables"_s, u"2"_s}, 1, "cannot be opened"},
             Case{{u"--address"_s, u"192.0.2.1"_s}, 1, "cannot be opened"},
             Case{{u"--sets"_s, u"Else"_s}, 1, "\"Else\" cannot be dealt. There is no card file"},
             Case{{u"--real"_s}, 1, "leave out --real"},
             Case{{u"--sets=\x1b"_s, u"a"_s, u"b"_s, u"c"_s}, 2, "3 to 6 sets"},
             Case{{u"--sets=a|b"_s}, 2, "cannot be a set's name"},
             Case{{u"--timed"_s, u"20"_s}, 2, "--rochester"},
             Case{{u"--rochester"_s, u"--timed"_s, u"31"_s}, 2, "1 to 30"},
             Case{{u"--players"_s, u"9"_s}, 2, "1 to 8"},
             Case{{u"--port"_s, u"65535"_s, u"--tables"_s, u"2"_s}, 2, "room for all tables"},
             Case{{u"--address"_s, u"home"_s}, 2, "an address of this machine"},
             Case{{u"--settings"_s, u"/nowhere"_s}, 2, "cannot be read"},
             Case{{u"--nonsense"_s}, 2, "nonsense"},
         }) {
        start(c.arguments);
        EXPECT_EQ(status(), c.status) << c.arguments.join(u' ').toStdString();
        EXPECT_THAT(told, HasSubstr(c.line));
        EXPECT_EQ(told.find('\n') + 1, told.size()) << told;
        EXPECT_EQ(told.find('\x1b'), std::string::npos) << told;
    }
}

TEST(HostSettings, AreOptionsThatTheCommandLineGoesBefore) {
    const sample::TempFolder folder;
    const auto read = [&](const char* file, const QStringList& more) {
        const QString path = QString::fromStdString(folder.write("host.ini", file).string());
        return readHostCommandLine(QStringList{u"packwise-host"_s, u"--settings"_s, path} + more);
    };
    const char* const file =
        "; our evenings\nsets=Ice Age, \"Odd, Even\", Alliances\nrochester=true\ntimed=20\n"
        "again=false\nport=6000\ncards=/srv/a, b\n";
    const auto options = read(file, {u"--port"_s, u"7000"_s}).options;
    ASSERT_TRUE(options);
    EXPECT_EQ(options->sets, (QStringList{u"Ice Age"_s, u"Odd, Even"_s, u"Alliances"_s}));
    EXPECT_EQ(options->cards, u"/srv/a, b"_s);
    EXPECT_TRUE(options->isRochester && options->isTimed && !options->again);
    EXPECT_EQ(options->pickSeconds, 20);
    EXPECT_EQ(options->port, 7000);
    EXPECT_EQ(read(file, {u"--sets"_s, u"A"_s, u"B"_s, u"C"_s}).options->sets.size(), 3);
    for (const char* bad : {"colour=red\n", "again=perhaps\n", "port=x\n", "again\n"}) {
        EXPECT_TRUE(read(bad, {u"--sets"_s, u"A"_s, u"B"_s, u"C"_s}).isError) << bad;
    }
}

}  // namespace
}  // namespace packwise
