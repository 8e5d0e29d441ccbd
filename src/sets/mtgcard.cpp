#include "sets/mtgcard.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace packwise::sets {

namespace {

constexpr std::pair<std::string_view, std::string_view> kRarityMarks[] = {
    {"common", "-"}, {"uncommon", "="}, {"rare", "+"}, {"mythic", "+"},
    {"basic", "."},  {"special", "."},  {"bonus", "."}};

constexpr std::string_view kBetweenHalves = " // ";

bool holds(const std::vector<std::string>& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool hasTwoHalves(const MtgFace& face) {
    return face.layout == "split" || face.layout == "aftermath";
}

// "{1}{W}{W}" as "1WW"; symbols of several signs keep a bracket: "{2/W}" is "(2/W)".
std::string costOf(std::string_view manaCost) {
    std::string cost;
    for (std::size_t at = 0; at < manaCost.size();) {
        const std::size_t end =
            manaCost[at] == '{' ? manaCost.find('}', at) : std::string_view::npos;
        if (end == std::string_view::npos) {
            cost += manaCost[at++];
            continue;
        }
        const std::string_view symbol = manaCost.substr(at + 1, end - at - 1);
        const bool isNumber =
            !symbol.empty() && symbol.find_first_not_of("0123456789") == std::string_view::npos;
        const bool afterNumber = !cost.empty() && cost.back() >= '0' && cost.back() <= '9';
        const bool plain = isNumber ? !afterNumber : symbol.size() == 1;
        cost += plain ? std::string(symbol) : "(" + std::string(symbol) + ")";
        at = end + 1;
    }
    return cost;
}

std::string ptOf(const MtgFace& face) {
    return face.power.empty() && face.toughness.empty() ? face.loyalty
                                                        : face.power + "/" + face.toughness;
}

void append(std::string& text, std::string_view between, const std::string& more) {
    text += (text.empty() || more.empty() ? std::string_view() : between);
    text += more;
}

// The back of a card as paragraphs under the front's text.
std::string backText(const MtgFace& back) {
    std::string head = back.faceName.empty() ? back.name : back.faceName;
    append(head, " ", costOf(back.manaCost));
    append(head, ", ", back.type);
    append(head, ", ", ptOf(back));
    append(head, "\n", back.text);
    return "//\n" + head;
}

}  // namespace

std::vector<MtgCard> cardsOf(const std::vector<MtgFace>& faces) {
    std::map<std::string_view, const MtgFace*> byUuid;
    for (const MtgFace& face : faces) {
        byUuid.emplace(face.uuid, &face);
    }
    std::vector<MtgCard> cards;
    for (const MtgFace& face : faces) {
        if (!face.side.empty() && face.side != "a") {
            continue;
        }
        MtgCard card = {&face};
        for (const std::string& other : face.otherFaceIds) {
            const auto found = byUuid.find(other);
            if (found != byUuid.end() && found->second->side > "a" &&
                std::find(card.begin(), card.end(), found->second) == card.end()) {
                card.push_back(found->second);
            }
        }
        std::stable_sort(card.begin() + 1, card.end(), [](const MtgFace* one, const MtgFace* two) {
            return one->side < two->side;
        });
        cards.push_back(std::move(card));
    }
    return cards;
}

const std::string& nameOf(const MtgFace& front) {
    return hasTwoHalves(front) || front.faceName.empty() ? front.name : front.faceName;
}

CardRecord recordOf(const MtgCard& card, Nearest& nearest) {
    const MtgFace& front = *card.front();
    std::vector<std::string> colors = front.colors;
    std::string cost = costOf(front.manaCost);
    std::string type = front.type;
    std::string text = front.text;
    for (auto back = card.begin() + 1; back != card.end(); ++back) {
        if (hasTwoHalves(front)) {
            colors.insert(colors.end(), (*back)->colors.begin(), (*back)->colors.end());
            append(cost, kBetweenHalves, costOf((*back)->manaCost));
            append(type, kBetweenHalves, (*back)->type);
            append(text, "\n//\n", (*back)->text);
        } else {
            append(text, "\n", backText(**back));
        }
    }
    const std::string mark = holds(front.supertypes, "Basic") ? "." : markOfRarity(front.rarity);
    return {.name = nearest.bytes(nameOf(front)),
            .rarity = mark.empty() ? "." : mark,
            .color = colorOf(colors, holds(front.types, "Land")),
            .cost = nearest.bytes(cost),
            .type = nearest.bytes(type),
            .text = nearest.bytes(text),
            .pt = nearest.bytes(ptOf(front))};
}

std::string markOfRarity(std::string_view rarity) {
    const auto* const found =
        std::find_if(std::begin(kRarityMarks), std::end(kRarityMarks),
                     [rarity](const auto& row) { return row.first == rarity; });
    return found == std::end(kRarityMarks) ? std::string() : std::string(found->second);
}

std::string colorOf(const std::vector<std::string>& colors, bool isLand) {
    const std::set<std::string> different(colors.begin(), colors.end());
    if (different.size() > 1) {
        return "M";
    }
    return !different.empty() ? *different.begin() : isLand ? "L" : "A";
}

}  // namespace packwise::sets
