// The server's own speed, without sockets and windows: eight seats on links that only count what
// is written to them. Everything else of a pass or a pick stands in it, from the bytes that arrive
// to the writes that go out.
#include "passclients.h"
#include "record/recorder.h"
#include "server/draftserver.h"
#include "server/quietview.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace packwise;

class CountingTable : private SeatLinks, private HostChoices, private QuietView {
public:
    CountingTable(bool rochester, bool recorded) : rochester_(rochester), recorded_(recorded) {}

    // A new server with eight players, at the first pick of a draft.
    void begin() {
        SeatLinks& links = *this;
        HostChoices& choices = *this;
        ServerView& view = *this;
        recorder_.emplace([] { return std::string(); });
        server_.emplace(
            links, choices, view, [] { return 0.0; }, recorded_ ? &*recorder_ : nullptr);
        for (int num = 1; num <= kSeats; ++num) {
            server_->welcome(num);
            arrive(num, to_server::Version{{std::string(kProtocolVersion)}}.write() +
                            to_server::Name{"P" + std::to_string(num)}.write());
        }
        server_->start();
        server_->seatByChance();
        server_->deal();
    }

    void arrive(int num, std::string_view bytes) {
        arrived_ = bytes;
        server_->onArrival(num);
    }

    const DraftServer& server() const { return *server_; }
    bool isOver() const { return server_->state() == DraftServer::State::Over; }

    std::int64_t writes = 0;

private:
    LinkState state(int /*num*/) const override { return LinkState::Open; }
    std::string address(int num) const override { return "127.0.0." + std::to_string(num); }
    void write(int /*num*/, std::string_view bytes) override {
        benchmark::DoNotOptimize(bytes.data());
        ++writes;
    }
    std::size_t unsent(int /*num*/) const override { return 0; }
    std::string read(int /*num*/, std::size_t most) override {
        std::string bytes(arrived_.substr(0, most));
        arrived_.remove_prefix(bytes.size());
        return bytes;
    }
    bool hasArrived(int /*num*/) const override { return !arrived_.empty(); }
    void close(int /*num*/) override {}

    bool isRochester() const override { return rochester_; }
    bool isTimed() const override { return false; }
    int pickSeconds() const override { return 1; }
    int packCount() const override { return 3; }
    std::string setName(int /*packIndex*/) const override { return "Sample"; }
    bool haltsOnDrop() const override { return false; }
    bool isSilent() const override { return false; }

    std::vector<Pack> dealPacks(int /*packIndex*/, int count) override {
        std::vector<Pack> packs(static_cast<std::size_t>(count));
        for (int seat = 0; seat < count; ++seat) {
            packs[static_cast<std::size_t>(seat)] = bench::makePack(kMostCardsInPack, seat);
        }
        return packs;
    }

    bool rochester_;
    bool recorded_;
    std::string_view arrived_;
    std::optional<Recorder> recorder_;
    std::optional<DraftServer> server_;
};

std::string pickOf(const CountingTable& table, int num) {
    const DraftServer& server = table.server();
    const Pack& pack = server.booster().seatPack(server.table().positionOfSocket(num));
    return to_server::Card{std::string(pack.card(0))}.write() +
           to_server::PackBack{pack.without(0)}.write();
}

// Every player takes the first card of its pack; without and with a record of the draft.
void passWithoutSockets(benchmark::State& state) {
    CountingTable table(false, state.range(0) != 0);
    std::vector<std::string> picks;
    for (table.begin(); !table.isOver();) {
        for (int num = 1; num <= kSeats; ++num) {
            picks.push_back(pickOf(table, num));
            table.arrive(num, picks.back());
        }
    }
    std::int64_t writes = 0;
    auto next = picks.cend();
    for ([[maybe_unused]] auto _ : state) {
        if (next == picks.cend()) {
            state.PauseTiming();
            table.begin();
            next = picks.cbegin();
            state.ResumeTiming();
        }
        const std::int64_t before = table.writes;
        for (int num = 1; num <= kSeats; ++num) {
            table.arrive(num, *next++);
        }
        writes += table.writes - before;
    }
    state.counters["writes"] =
        benchmark::Counter(static_cast<double>(writes), benchmark::Counter::kAvgIterations);
}
BENCHMARK(passWithoutSockets)->ArgName("recorded")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// Whoever is on turn takes the first card of the pack; the review and the pause are not timed.
void rochesterPickWithoutSockets(benchmark::State& state) {
    CountingTable table(true, false);
    table.begin();
    const std::string pick =
        to_server::Card{"UBenchmark Card 100"}.write() + to_server::Pick{0}.write();
    const std::string ready = to_server::ReviewDone{}.write() + to_server::PauseDone{}.write();
    std::int64_t writes = 0;
    for ([[maybe_unused]] auto _ : state) {
        if (table.server().rochester().turnPosition() < 0) {
            state.PauseTiming();
            if (table.isOver()) {
                table.begin();
            }
            while (table.server().rochester().turnPosition() < 0) {
                for (int num = 1; num <= kSeats; ++num) {
                    table.arrive(num, ready);
                }
            }
            state.ResumeTiming();
        }
        const DraftServer& server = table.server();
        const auto position = static_cast<std::size_t>(server.rochester().turnPosition());
        const std::int64_t before = table.writes;
        table.arrive(server.table().socketAt[position], pick);
        writes += table.writes - before;
    }
    state.counters["writes"] =
        benchmark::Counter(static_cast<double>(writes), benchmark::Counter::kAvgIterations);
}
BENCHMARK(rochesterPickWithoutSockets)->Unit(benchmark::kMicrosecond);

}  // namespace
