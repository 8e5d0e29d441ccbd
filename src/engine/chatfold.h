// Folding chat lines to the width of the chat window. Text is bytes in Windows-1252.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// The lines that a message makes at that width (1 or more characters): cut behind the last blank
// at or before the width, or at the width where there is none. Always one line at least; a text of
// exactly the width makes a further line.
std::vector<std::string> foldChat(std::string_view message, int maxChars);

}  // namespace packwise
