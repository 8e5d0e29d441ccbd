// A well-behaved client without a link: it hears bytes and gives its answers.
#pragma once

#include "protocol/framing.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace packwise {

class Drafter {
public:
    using Next = std::function<std::uint64_t()>;  // any numbers, for its taste

    MessageSplitter heard;

    // What the client of the socket number 1 to 8 answers to all that it has heard since; empty
    // when nothing was asked.
    std::string answer(int num, bool rochester, const Next& next);

private:
    std::string pickBooster(const Next& next) const;

    int position_ = -1;
    std::vector<std::string> pack_;  // as it is shown
};

}  // namespace packwise
