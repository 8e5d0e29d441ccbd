// What a fuzzer feeds: the readers of packwise-sets, the server and the messages.
#pragma once

#include <string_view>

namespace packwise::sets {

struct FuzzedReader {
    std::string_view name;  // of its folder in the corpus
    // Reads the bytes and ends the process when what it made of them breaks a rule.
    void (*read)(std::string_view bytes);
};

extern const FuzzedReader kFuzzedReaders[8];

}  // namespace packwise::sets
