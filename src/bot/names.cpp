#include "bot/names.h"

#include <algorithm>
#include <array>

namespace packwise {

namespace {

constexpr std::array<const char*, 24> kNames = {
    "Ada Bot",   "Bruno Bot", "Clara Bot", "Dario Bot", "Edda Bot",  "Felix Bot",
    "Greta Bot", "Hugo Bot",  "Iris Bot",  "Jonas Bot", "Kira Bot",  "Leo Bot",
    "Mona Bot",  "Nils Bot",  "Olga Bot",  "Pavel Bot", "Quinn Bot", "Rosa Bot",
    "Sven Bot",  "Tilda Bot", "Udo Bot",   "Vera Bot",  "Willa Bot", "Yuri Bot"};

}  // namespace

std::optional<std::string> freeName(const std::set<std::string>& taken) {
    const auto name = std::find_if(kNames.begin(), kNames.end(),
                                   [&](const char* each) { return !taken.contains(each); });
    return name == kNames.end() ? std::nullopt : std::optional<std::string>(*name);
}

}  // namespace packwise
