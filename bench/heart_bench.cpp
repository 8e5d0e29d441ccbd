// The heart's speed: dealing beside reading and cutting the same file once, and cutting a stream.
#include "engine/dealing.h"
#include "engine/samplefiles.h"
#include "protocol/framing.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace packwise;

const std::filesystem::path& sampleFolder() {
    static const sample::TempFolder folder;
    static const bool written = [] {
        folder.write("Sample.pw", sample::wholeSet());
        folder.write("Sample.ord", sample::wholeOrder());
        return true;
    }();
    benchmark::DoNotOptimize(written);
    return folder.path();
}

std::string readWhole(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string bytes(std::filesystem::file_size(file), '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void readAndCutCards(benchmark::State& state) {
    const auto file = sampleFolder() / "Sample.pw";
    for ([[maybe_unused]] auto _ : state) {
        const std::string bytes = readWhole(file);
        std::vector<CardRecord> records;
        std::size_t at = 6;
        while (at < bytes.size()) {
            CardRecord record;
            for (std::string* field : {&record.name, &record.rarity, &record.color, &record.cost,
                                       &record.type, &record.text, &record.pt}) {
                const auto low = static_cast<unsigned char>(bytes[at]);
                const auto high = static_cast<unsigned char>(bytes[at + 1]);
                const auto length = static_cast<std::size_t>(low | high << 8);
                field->assign(bytes, at + 2, length);
                at += 2 + length;
            }
            records.push_back(std::move(record));
        }
        benchmark::DoNotOptimize(records);
    }
}
BENCHMARK(readAndCutCards);

void readAndCutOrder(benchmark::State& state) {
    const auto file = sampleFolder() / "Sample.ord";
    for ([[maybe_unused]] auto _ : state) {
        const std::string bytes = readWhole(file);
        std::vector<std::string> lines;
        std::size_t at = 0;
        for (std::size_t end; (end = bytes.find("\r\n", at)) != std::string::npos; at = end + 2) {
            lines.emplace_back(bytes, at, end - at);
        }
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(readAndCutOrder);

template <auto Deal>
void deal(benchmark::State& state) {
    std::mt19937 engine(1);
    const Draw draw = [&engine] {
        return std::uniform_real_distribution<double>(0.0, 1.0)(engine);
    };
    for ([[maybe_unused]] auto _ : state) {
        auto pack = Deal(sampleFolder(), "Sample", draw);
        if (!pack || pack->size() != kMostCardsInPack) {
            state.SkipWithError("no pack");
        }
        benchmark::DoNotOptimize(pack);
    }
}
BENCHMARK(deal<randomPack>)->Name("randomPack");
BENCHMARK(deal<realPack>)->Name("realPack");

// 10 MB of the messages of a draft, in the pieces of that many bytes that a socket hands over.
void cutStream(benchmark::State& state) {
    const std::vector<std::string> messages = {"PING~",
                                               "CARDUSmall Lantern 100~",
                                               "BSTA3~",
                                               "MESG<Fox> who takes that?~",
                                               "BOOS" + std::string(300, 'x') + "~",
                                               "BPCK" + std::string(150, 'x') + "~",
                                               "~"};
    std::string stream;
    for (std::size_t i = 0; stream.size() < 10'000'000; ++i) {
        stream += messages[i % messages.size()];
    }
    const auto piece = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        MessageSplitter splitter;
        for (std::size_t at = 0; at < stream.size(); at += piece) {
            splitter.append(std::string_view(stream).substr(at, piece));
            while (auto message = splitter.next()) {
                benchmark::DoNotOptimize(message);
            }
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(stream.size()) * state.iterations());
}
BENCHMARK(cutStream)
    ->Arg(100)
    ->Arg(1460)
    ->Arg(65536)
    ->Arg(10'100'000)
    ->Unit(benchmark::kMillisecond);

// Six different sets of 350 cards, as the card popup meets them when the card is the last one.
std::vector<std::filesystem::path> sixSets() {
    static const sample::TempFolder folder;
    std::vector<std::filesystem::path> files;
    for (int set = 0; set < 6; ++set) {
        std::string bytes = sample::header(1, 3, 11);
        for (int card = 0; card < 350; ++card) {
            bytes += sample::record("Set " + std::to_string(set) + " Card " + std::to_string(card),
                                    card % 2 == 0 ? "-" : "=", "G", std::string(120, 'x'));
        }
        files.push_back(folder.write("Set" + std::to_string(set) + ".pw", bytes + sample::end()));
    }
    return files;
}

void readSixSets(benchmark::State& state) {
    const auto files = sixSets();
    for ([[maybe_unused]] auto _ : state) {
        for (const auto& file : files) {
            std::string bytes = readWhole(file);
            benchmark::DoNotOptimize(bytes);
        }
    }
}
BENCHMARK(readSixSets);

void scanSixSetsForTheLastCard(benchmark::State& state) {
    const auto files = sixSets();
    for ([[maybe_unused]] auto _ : state) {
        for (const auto& file : files) {
            auto record = scanForCard(file, "Set 5 Card 349");
            benchmark::DoNotOptimize(record);
        }
    }
}
BENCHMARK(scanSixSetsForTheLastCard);

}  // namespace

BENCHMARK_MAIN();
