// The server and the messages as a fuzzer feeds them: any bytes on any link, in any order.
#pragma once

#include <string_view>

namespace packwise {

// Steps of a table of up to eight links, coded in the bytes. Ends the process when a rule breaks.
void fuzzServer(std::string_view bytes);

// Reads the bytes as messages of either side, writes what was read, and reads it again.
void fuzzMessages(std::string_view bytes);

}  // namespace packwise
