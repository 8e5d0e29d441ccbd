// Feeds every reader its corpus again, each file whole and cut short at every length up to a bound.
#include "readers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace packwise::sets {
namespace {

TEST(Replay, LeavesEveryReaderStanding) {
    for (const FuzzedReader& reader : fuzzedReaders()) {
        const auto folder = std::filesystem::path(PACKWISE_CORPUS) / reader.name;
        int files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            SCOPED_TRACE(entry.path());
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(in), {});
            reader.read(bytes);
            for (std::size_t length = 0; length < std::min(bytes.size(), reader.replayedCuts);
                 ++length) {
                reader.read(std::string_view(bytes).substr(0, length));
            }
            ++files;
        }
        EXPECT_GT(files, 0) << folder;
    }
}

}  // namespace
}  // namespace packwise::sets
