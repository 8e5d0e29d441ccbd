// One reader under libFuzzer: the one that PACKWISE_READER names.
#include "readers.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& reader : packwise::sets::fuzzedReaders()) {
        if (reader.name == PACKWISE_READER) {
            reader.read({reinterpret_cast<const char*>(data), size});
        }
    }
    return 0;
}
