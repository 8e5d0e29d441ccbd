// What a table of a host costs: memory, and time of a pass, with eight instant players at each of
// 1, 10, 100 and 200 tables. The players are in a process of their own.
#include "engine/samplefiles.h"
#include "host/hosttable.h"
#include "platform/descriptors.h"
#include "protocol/framing.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace packwise;

constexpr int kFirstPort = 21000;
constexpr int kPasses = 45;
constexpr int kDescriptors = 4000;

// Joins eight players at each table, who answer each pack at once, until every draft is over.
int playAll(int tables) {
    struct Player {
        int descriptor;
        MessageSplitter heard;
    };
    std::vector<Player> players;
    const int poll = epoll_create1(0);
    for (int i = 0; i < tables * kSeats; ++i) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(kFirstPort + i / kSeats));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
        if (connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
            return 1;
        }
        const std::string hello = "VERS1.41~NAMEP" + std::to_string(i) + "~";
        if (write(descriptor, hello.data(), hello.size()) < 0) {
            return 1;
        }
        players.push_back({descriptor, MessageSplitter()});
        epoll_event event{EPOLLIN, {.u32 = static_cast<std::uint32_t>(i)}};
        epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event);
    }
    std::size_t over = 0;
    std::vector<epoll_event> events(256);
    std::string block(64 * 1024, '\0');
    while (over < players.size()) {
        const int ready = epoll_wait(poll, events.data(), static_cast<int>(events.size()), 60'000);
        if (ready <= 0) {
            return 1;
        }
        for (int i = 0; i < ready; ++i) {
            Player& player = players.at(events.at(static_cast<std::size_t>(i)).data.u32);
            const ssize_t got = read(player.descriptor, block.data(), block.size());
            if (got <= 0) {
                return 1;
            }
            player.heard.append(std::string_view(block).substr(0, static_cast<std::size_t>(got)));
            while (const auto message = player.heard.next()) {
                if (message->starts_with("OVER")) {
                    ++over;
                } else if (message->starts_with("BOOS")) {
                    const std::string rest =
                        "BPCK" + message->substr(message->find('|') + 1) + kTerminator;
                    if (write(player.descriptor, rest.data(), rest.size()) < 0) {
                        return 1;
                    }
                }
            }
        }
    }
    return 0;
}

double residentKilobytes() {
    std::ifstream statm("/proc/self/statm");
    double all = 0;
    double resident = 0;
    statm >> all >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024;
}

double processorSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

template <class Condition>
void serveUntil(Condition condition) {
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
}

// In a process of its own, so that no run finds the memory of another. Prints a row.
void measure(int tables, const HostOptions& options, int argc, char** argv) {
    const pid_t players = fork();
    if (players == 0) {
        usleep(300'000);  // until the ports are open
        _exit(playAll(tables));
    }
    const QCoreApplication application(argc, argv);
    std::mt19937_64 generator(1);
    const auto draw = [&] { return std::uniform_real_distribution<double>(0, 1)(generator); };
    const double before = residentKilobytes();
    std::vector<std::unique_ptr<HostTable>> all;
    for (int i = 0; i < tables; ++i) {
        all.push_back(std::make_unique<HostTable>(options, static_cast<quint16>(kFirstPort + i),
                                                  draw, [](const QString&) {}));
        if (!all.back()->open()) {
            std::fprintf(stderr, "port %d cannot be opened\n", kFirstPort + i);
            _exit(1);
        }
    }
    const auto everyTable = [&](auto condition) {
        return [&all, condition] { return std::all_of(all.begin(), all.end(), condition); };
    };
    serveUntil(everyTable(
        [](const auto& table) { return table->server().namedSeats().size() == kSeats; }));
    const double processor = processorSeconds();
    QElapsedTimer clock;
    clock.start();
    for (const auto& table : all) {
        table->start();
    }
    serveUntil(everyTable(
        [](const auto& table) { return table->server().state() == DraftServer::State::Over; }));
    const double passes = kPasses * static_cast<double>(tables);
    std::printf("%6d %12.1f %20.1f %18.1f\n", tables, (residentKilobytes() - before) / tables,
                (processorSeconds() - processor) * 1e6 / passes,
                static_cast<double>(clock.nsecsElapsed()) / 1e3 / passes);
    std::fflush(stdout);
    int status = 0;
    waitpid(players, &status, 0);
    _exit(status == 0 ? 0 : 1);
}

}  // namespace

int main(int argc, char** argv) {
    if (!allowDescriptors(kDescriptors)) {
        std::fprintf(stderr, "the limit of open files is too low\n");
        return 1;
    }
    const sample::TempFolder cards;
    cards.write("Sample.pw", sample::wholeSet());
    HostOptions options;
    options.cards = QString::fromStdString(cards.path().string());
    options.sets = QStringList(3, QStringLiteral("Sample"));
    options.address = QStringLiteral("127.0.0.1");
    std::printf("tables  KiB a table  processor us a pass  wall-clock us a pass\n");
    std::fflush(stdout);
    for (const int tables : {1, 10, 100, 200}) {
        const pid_t run = fork();
        if (run == 0) {
            measure(tables, options, argc, argv);
        }
        int status = 0;
        if (waitpid(run, &status, 0) != run || status != 0) {
            std::fprintf(stderr, "the run of %d tables has failed\n", tables);
            return 1;
        }
    }
    return 0;
}
