// Files in UTF-8 that are made and read without Qt: everything else of the heart is bytes in
// Windows-1252.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace packwise {

// Every byte has a character, as in platform/codepage.
std::string toUtf8(std::string_view bytes);

// The bytes of a text in UTF-8; characters that the code page lacks become "?". Nothing for what
// is not UTF-8.
std::optional<std::string> fromUtf8(std::string_view utf8);

}  // namespace packwise
