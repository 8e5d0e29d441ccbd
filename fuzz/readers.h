// The readers of packwise-sets as a fuzzer feeds them.
#pragma once

#include <string_view>

namespace packwise::sets {

struct FuzzedReader {
    std::string_view name;  // of its folder in the corpus
    // Reads the bytes and ends the process when what it made of them breaks a rule.
    void (*read)(std::string_view bytes);
};

extern const FuzzedReader kFuzzedReaders[6];

}  // namespace packwise::sets
