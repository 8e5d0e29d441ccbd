// The server's speed with eight instant players on real sockets, beside a bare poll loop that
// reads and writes the same bytes in the same pattern; and what a start and a host cost.
#include "app/program.h"
#include "engine/samplefiles.h"
#include "passclients.h"
#include "widgets/look.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

namespace {

using namespace packwise;
using namespace Qt::Literals::StringLiterals;

constexpr int kPasses = 45;
constexpr int kDrafts = 20;

// Notes how long any one event holds the event loop.
class TimedApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        const auto from = std::chrono::steady_clock::now();
        const bool done = QApplication::notify(receiver, event);
        longest = std::max(
            longest,
            std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count());
        return done;
    }
    double longest = 0;  // seconds
};

// A host's console with an open port, in a folder with one set.
class Host {
public:
    Host() {
        cards_.write("Sample.pw", sample::wholeSet());
        QDir::setCurrent(QString::fromStdString(cards_.path().string()));
        program_.settings().write(u"Sets"_s, u"1"_s, u"Sample"_s);
        FrmServer& console = program_.frmServer();
        console.show();
        for (int i = 0; i < 3; ++i) {
            console.cboPack.at(static_cast<std::size_t>(i))->setCurrentIndex(0);
        }
        console.chkClient->setChecked(false);
        for (int port = 6000; port < 9999 && !console.cmdStart->isEnabled(); ++port) {
            port_ = static_cast<std::uint16_t>(port);
            console.txtPort->setText(QString::number(port));
            console.cmdOpenPort->click();
        }
    }

    std::uint16_t port() const { return port_; }
    Program& program() { return program_; }

    // Runs the players in a thread of their own and the event loop here until they are done.
    template <class Work>
    void serve(Work work) {
        QEventLoop loop;
        std::thread players([&] {
            work();
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        players.join();
    }

private:
    QTemporaryDir settings_;
    sample::TempFolder cards_;
    Program program_{settings_.filePath(u"Packwise.ini"_s), 1};
    std::uint16_t port_ = 0;
};

bench::DraftTimes playOnServer(bool measure) {
    Host host;
    host.program().boxes().setHook([](const Box&) { return true; });
    bench::DraftTimes times;
    bench::PassClients clients;
    host.serve([&] {
        clients.join(host.port());
        QMetaObject::invokeMethod(
            qApp, [&host] { host.program().frmServer->cmdStart->click(); }, Qt::QueuedConnection);
        clients.play(kPasses, measure, times);
    });
    return times;
}

bench::DraftTimes playOnBareLoop(bool measure) {
    bench::BareServer server;
    std::thread serving([&] { server.run(kPasses); });
    bench::DraftTimes times;
    {
        bench::PassClients clients;
        clients.join(server.port());
        clients.play(kPasses, measure, times);
    }
    serving.join();
    return times;
}

double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// What the real server and the bare loop took, in seconds.
struct Comparison {
    std::vector<double> server;
    std::vector<double> bare;

    // The medians, and how often the bare loop's goes into the server's.
    void report(benchmark::State& state) {
        state.SetIterationTime(median(server));
        state.counters["bare_ms"] = 1000 * median(bare);
        state.counters["ratio"] = median(server) / median(bare);
    }
};

// Both play turn about, so that they meet the machine in the same state.
void onePass(benchmark::State& state) {
    Comparison passes;
    for ([[maybe_unused]] auto _ : state) {
        for (int draft = 0; draft < kDrafts; ++draft) {
            const std::vector<double> bare = playOnBareLoop(true).passes;
            passes.bare.insert(passes.bare.end(), bare.begin(), bare.end());
            const std::vector<double> server = playOnServer(true).passes;
            passes.server.insert(passes.server.end(), server.begin(), server.end());
        }
        passes.report(state);
    }
}
BENCHMARK(onePass)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void wholeDraft(benchmark::State& state) {
    Comparison drafts;
    for ([[maybe_unused]] auto _ : state) {
        for (int draft = 0; draft < kDrafts; ++draft) {
            drafts.bare.push_back(playOnBareLoop(false).whole);
            drafts.server.push_back(playOnServer(false).whole);
        }
        drafts.report(state);
    }
}
BENCHMARK(wholeDraft)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void longestHandlerInADraft(benchmark::State& state) {
    auto& application = *static_cast<TimedApplication*>(qApp);
    for ([[maybe_unused]] auto _ : state) {
        application.longest = 0;
        playOnServer(false);
        state.SetIterationTime(application.longest);
    }
}
BENCHMARK(longestHandlerInADraft)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Runs this program once more in a role and gives the number that it prints.
double askChild(const QString& role) {
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {role, QString::number(secondsNow(), 'f', 6)});
    child.waitForFinished();
    return child.readAllStandardOutput().trimmed().toDouble();
}

void startToFirstPaint(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(askChild(u"--start"_s));
    }
}
BENCHMARK(startToFirstPaint)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void hostWithSevenPeers(benchmark::State& state) {
    double megabytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        megabytes = askChild(u"--memory"_s);
    }
    state.counters["resident_MB"] = megabytes;
}
BENCHMARK(hostWithSevenPeers)->Iterations(1);

class PaintWatch : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }
    bool painted = false;
};

double timeFirstPaint(double started) {
    const QTemporaryDir settings;
    Program program(settings.filePath(u"Packwise.ini"_s));
    PaintWatch watch;
    program.frmMain->installEventFilter(&watch);
    program.start();
    while (!watch.painted) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return secondsNow() - started;
}

double residentMegabytes() {
    Host host;
    host.program().boxes().setHook([](const Box&) { return true; });
    bench::PassClients clients;
    host.serve([&] { clients.join(host.port()); });
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(6)) / 1024;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    packwise::chooseEventLoop();
    TimedApplication application(argc, argv);
    packwise::applyLook(application);
    if (argc == 3 && std::string_view(argv[1]) == "--start") {
        std::printf("%f\n", timeFirstPaint(std::stod(argv[2])));
        return 0;
    }
    if (argc == 3 && std::string_view(argv[1]) == "--memory") {
        std::printf("%f\n", residentMegabytes());
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
