#include "client/cardcolors.h"

namespace packwise {

const std::array<CardColor, kColors> kCardColors{{
    {'B', u"Black", u"---BLACK---", {0, 0, 0}, {0, 0, 0}},
    {'U', u"Blue", u"---BLUE---", {0, 0, 255}, {0, 0, 255}},
    {'G', u"Green", u"---GREEN---", {0, 255, 0}, {0, 255, 0}},
    {'R', u"Red", u"---RED---", {255, 0, 0}, {255, 0, 0}},
    {'W', u"White", u"---WHITE---", {255, 255, 255}, {255, 255, 255}},
    {'A', u"Artifact", u"---ARTIFACT---", {170, 108, 0}, {170, 108, 0}},
    {'M', u"Multicolour", u"---MULTI---", {255, 255, 0}, {255, 255, 0}},
    {'L', u"Land", u"---LAND---", {208, 192, 192}, {192, 192, 208}},
}};

std::optional<int> colorIndexOf(char letter) {
    for (std::size_t index = 0; index < kCardColors.size(); ++index) {
        if (kCardColors[index].letter == letter) {
            return static_cast<int>(index);
        }
    }
    return std::nullopt;
}

}  // namespace packwise
