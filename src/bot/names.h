// Names for players who are none.
#pragma once

#include <optional>
#include <set>
#include <string>

namespace packwise {

// The first name of the list that is not in `taken`; nothing when all are. Names have at most 12
// characters.
std::optional<std::string> freeName(const std::set<std::string>& taken);

}  // namespace packwise
