#include "engine/chatfold.h"

#include <algorithm>
#include <cstddef>

namespace packwise {

std::vector<std::string> foldChat(std::string_view message, int maxChars) {
    const auto width = static_cast<std::size_t>(std::max(maxChars, 1));
    std::vector<std::string> lines;
    while (message.size() >= width) {
        const std::size_t blank = message.rfind(' ', width - 1);
        const std::size_t length = blank == std::string_view::npos ? width : blank + 1;
        lines.emplace_back(message.substr(0, length));
        message.remove_prefix(length);
    }
    lines.emplace_back(message);
    return lines;
}

}  // namespace packwise
