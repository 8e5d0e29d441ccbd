// The console and the host without a window are two front ends of one server: on the same steps
// and the same draws, everybody hears the same from either.
#include "console/consoleworld.h"
#include "host/hosttable.h"
#include "server/drafter.h"

namespace packwise {
namespace {

constexpr int kNever = 1'000'000'000;  // milliseconds

std::function<double()> sameDraws() {
    return [value = std::make_shared<double>(0.0)] {
        *value += 0.137;
        return *value -= static_cast<int>(*value);
    };
}

class FrontEnd {
public:
    virtual ~FrontEnd() = default;
    virtual quint16 port() = 0;
    virtual void start() = 0;
    virtual void poke() = 0;
    virtual void tick() = 0;
    virtual void kick(int num) = 0;
};

class TheConsole : public FrontEnd {
public:
    TheConsole(ConsoleWorld& world, const HostOptions& options) : console_(world.console()) {
        world.draw = sameDraws();
        world.listen();
        for (QTimer* timer : {console_.tmrPoke, console_.tmrRandoms}) {
            timer->setInterval(kNever);
        }
        (options.isRochester ? console_.optRochester : console_.optBooster)->setChecked(true);
        console_.chkTimed->setChecked(options.isTimed);
        console_.vsbSecs->setValue(30 - options.pickSeconds);
        console_.chkReal->setChecked(options.triesRealPacks);
        console_.chkHalt->setChecked(options.haltsOnDrop);
        console_.chkSilence->setChecked(options.isSilent);
        console_.optPack.at(static_cast<std::size_t>(options.sets.size() - 1))->setChecked(true);
        for (qsizetype i = 0; i < options.sets.size(); ++i) {
            console_.cboPack.at(static_cast<std::size_t>(i))->setCurrentText(options.sets.at(i));
        }
    }
    quint16 port() override { return console_.wskServer[0]->localPort(); }
    void start() override { console_.cmdStart_Click(); }
    void poke() override { console_.tmrPoke_Timer(); }
    void tick() override { console_.tmrRandoms_Timer(); }
    void kick(int num) override {
        console_.lstNames->setCurrentRow(num - 1);
        console_.cmdKick_Click();
    }

private:
    FrmServer& console_;
};

class TheTable : public FrontEnd {
public:
    explicit TheTable(const HostOptions& options)
        : table_(options, freePort(), sameDraws(), [](const QString&) {}) {
        EXPECT_TRUE(table_.open());
        for (QTimer* timer : table_.findChildren<QTimer*>()) {
            timer->setInterval(timer->interval() > 0 ? kNever : 0);
        }
    }
    quint16 port() override { return table_.port(); }
    void start() override { EXPECT_EQ(table_.start().toStdString(), ""); }
    void poke() override { table_.onSecond(); }
    void tick() override { table_.onTick(); }
    void kick(int num) override { table_.kick(num); }

private:
    HostTable table_;
};

// The connections of one script, and what each of them hears.
class Script {
public:
    explicit Script(FrontEnd& host) : host_(host) {}

    int connect() {
        auto line = std::make_unique<Line>();
        EXPECT_TRUE(line->peer.connectTo(host_.port()));
        lines_.push_back(std::move(line));
        settle();
        return static_cast<int>(lines_.size());
    }
    void say(int num, const std::string& bytes) {
        lines_.at(static_cast<std::size_t>(num - 1))->peer.say(bytes);
        settle();
    }
    void close(int num) {
        lines_.at(static_cast<std::size_t>(num - 1))->peer.close();
        settle();
    }
    // Each of the first `players` answers in turn until nobody has anything to answer, with a tick
    // between; number `lost` closes before its answer number `losesAt`.
    void play(int players, bool rochester, int lost, int losesAt) {
        std::uint64_t taste = 1;
        const auto next = [&taste] { return taste = taste * 6364136223846793005U + 1; };
        for (std::size_t before = 0; before != bytesHeard_;) {
            before = bytesHeard_;
            for (int num = 1; num <= players; ++num) {
                Line& line = *lines_.at(static_cast<std::size_t>(num - 1));
                const std::string answer = line.drafter.answer(num, rochester, next);
                if (!answer.empty() && num == lost && --losesAt == 0) {
                    close(num);
                } else if (!answer.empty() && line.peer.isConnected()) {
                    say(num, answer);
                }
            }
            host_.tick();
            settle();
        }
    }
    void settle() {
        for (int quiet = 0; quiet < 3; ++quiet) {
            QCoreApplication::processEvents();
            for (const auto& line : lines_) {
                const std::string bytes = line->peer.socket().readAll().toStdString();
                line->heard += bytes;
                bytesHeard_ += bytes.size();
                line->drafter.heard.append(bytes);
                quiet = bytes.empty() ? quiet : 0;
            }
        }
    }
    std::vector<std::string> heard() const {
        std::vector<std::string> all;
        for (const auto& line : lines_) {
            all.push_back(line->heard);
        }
        return all;
    }

private:
    struct Line {
        Peer peer;
        Drafter drafter;
        std::string heard;
    };

    FrontEnd& host_;
    std::vector<std::unique_ptr<Line>> lines_;
    std::size_t bytesHeard_ = 0;
};

// A lobby with all that can happen there, and a draft of three that loses one of them.
std::vector<std::string> played(FrontEnd& host, const HostOptions& options, int losesAt) {
    Script script(host);
    for (const char* name : {"Ada", "Bob", "Cleo"}) {
        script.say(script.connect(), "VERS1.41~NAME" + std::string(name) + "~");
    }
    const int old = script.connect();
    script.say(old, "VERS1.3~NAMEOld~MESG<Old> hello~PING~");
    script.say(script.connect(), "VERS1.41~NAMEBob~");
    script.connect();
    host.poke();
    script.settle();
    host.kick(old);
    std::string more = "MESG<Ada> bye~NONSENSE~CODE7~";  // than a turn takes
    for (int i = 0; i < 70; ++i) {
        more += "PING~";
    }
    script.say(1, more);
    host.start();
    script.settle();
    script.play(3, options.isRochester, 2, losesAt);
    host.poke();
    script.settle();
    return script.heard();
}

TEST(FrontEnds, SoundAlikeToEveryPlayer) {
    for (const auto& [given, losesAt] :
         {std::pair{u"--sets Sample Other Sample"_s, 0},
          std::pair{u"--sets Other Sample Sample --silent"_s, 5},
          std::pair{u"--sets Sample Sample Other Other --real --halt-on-drop"_s, 20},
          std::pair{u"--sets Sample Other Sample --rochester"_s, 2},
          std::pair{u"--sets Sample Other Sample --rochester --timed 30"_s, 30}}) {
        SCOPED_TRACE(given.toStdString());
        ConsoleWorld world;
        world.folder.write("Sample.ord", sample::wholeOrder());
        const auto options =
            readHostCommandLine(QStringList{u"packwise-host"_s} + given.split(u' ')).options;
        ASSERT_TRUE(options);
        TheConsole console(world, *options);
        TheTable table(*options);
        const std::vector<std::string> atTheConsole = played(console, *options, losesAt);
        EXPECT_NE(atTheConsole.at(0).find(losesAt == 20 ? "CLOS~" : "OVER~"), std::string::npos);
        const std::vector<std::string> atTheTable = played(table, *options, losesAt);
        for (std::size_t i = 0; i < atTheConsole.size(); ++i) {
            EXPECT_EQ(atTheConsole[i], atTheTable.at(i)) << "connection " << i + 1;
        }
    }
}

}  // namespace
}  // namespace packwise
