// What a fuzzer feeds: the readers of packwise-sets, of picks, decks and records, the server, the
// messages and the client.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace packwise::sets {

struct FuzzedReader {
    std::string_view name;  // of its folder in the corpus
    // Reads the bytes and ends the process when what it made of them breaks a rule.
    void (*read)(std::string_view bytes);
    // How many beginnings of a file, each a byte longer than the last, are replayed beside it.
    std::size_t replayedCuts = 400;
    // What the fuzzer feeds at most, in bytes; more only takes longer. 0 leaves it to the corpus.
    int longest = 0;
};

// Those that are linked.
std::span<const FuzzedReader> fuzzedReaders();

}  // namespace packwise::sets
