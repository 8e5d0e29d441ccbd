// One reader under libFuzzer: the one that PACKWISE_READER names.
#include "readers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

const packwise::sets::FuzzedReader& reader() {
    const auto readers = packwise::sets::fuzzedReaders();
    return *std::find_if(readers.begin(), readers.end(),
                         [](const auto& each) { return each.name == PACKWISE_READER; });
}

}  // namespace

// The reader's bound stands before the options that were given, the last one of which counts.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static std::string bound = "-max_len=" + std::to_string(reader().longest);
    static std::vector<char*> arguments(*argv, *argv + *argc);
    arguments.insert(arguments.begin() + 1, bound.data());
    arguments.push_back(nullptr);
    *argc += 1;
    *argv = arguments.data();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reader().read({reinterpret_cast<const char*>(data), size});
    return 0;
}
