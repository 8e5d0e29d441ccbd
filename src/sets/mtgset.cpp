#include "sets/mtgset.h"

#include "platform/codepage.h"
#include "protocol/pack.h"
#include "sets/mtgcard.h"
#include "sets/rules.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <set>
#include <string_view>

namespace packwise::sets {

namespace {

constexpr std::string_view kPlayedKinds[] = {"draft", "default", "play"};

const MtgBooster* boosterOf(const MtgSet& set) {
    for (const std::string_view kind : kPlayedKinds) {
        for (const MtgBooster& booster : set.boosters) {
            if (booster.kind == kind && !booster.configurations.empty()) {
                return &booster;
            }
        }
    }
    for (const MtgBooster& booster : set.boosters) {
        if (!booster.configurations.empty()) {
            return &booster;
        }
    }
    return nullptr;
}

const MtgSheet* sheetOf(const MtgBooster& booster, const std::string& name) {
    const auto found = std::find_if(booster.sheets.begin(), booster.sheets.end(),
                                    [&](const MtgSheet& sheet) { return sheet.name == name; });
    return found == booster.sheets.end() ? nullptr : &*found;
}

bool hasFoil(const MtgBooster& booster, const MtgConfiguration& configuration) {
    return std::any_of(configuration.contents.begin(), configuration.contents.end(),
                       [&](const auto& content) {
                           const MtgSheet* const sheet = sheetOf(booster, content.first);
                           return sheet && sheet->foil;
                       });
}

// The configuration of the greatest weight, one without foils before any with them.
const MtgConfiguration& configurationOf(const MtgBooster& booster) {
    return *std::max_element(booster.configurations.begin(), booster.configurations.end(),
                             [&](const MtgConfiguration& one, const MtgConfiguration& two) {
                                 const bool oneFoil = hasFoil(booster, one);
                                 const bool twoFoil = hasFoil(booster, two);
                                 return oneFoil != twoFoil ? oneFoil : one.weight < two.weight;
                             });
}

bool isUsable(double number) {
    return std::isfinite(number) && number > 0;
}

class Mapping {
public:
    Mapping(const MtgSet& set, const std::string& displayName) : set_(set) {
        read_.source.displayName = nearest_.bytes(displayName.empty() ? set.name : displayName);
        if (const MtgBooster* const booster = boosterOf(set)) {
            booster_ = booster;
            configuration_ = &configurationOf(*booster);
            for (const auto& [name, count] : configuration_->contents) {
                noteSheet(name);
            }
        }
        takeCards();
        if (booster_) {
            countFromSheets();
        }
        if (!booster_ || std::accumulate(shares_.begin(), shares_.end(), 0.0) <= 0) {
            countAsUsual();
        }
    }

    ReadSource finish() {
        std::vector<Fault>& faults = read_.faults;
        const auto add = [&faults](std::vector<Fault> more) {
            std::move(more.begin(), more.end(), std::back_inserter(faults));
        };
        add(nearest_.warnings());
        add(mendDisplayName(read_.source.displayName));
        add(setFaults(read_.source, [this](std::size_t card) { return places_[card]; }));
        add(packFaults(read_.source.counts, read_.source.cards));
        return std::move(read_);
    }

private:
    void warn(std::string what) { read_.faults.push_back({std::move(what), {}, true}); }

    void noteSheet(const std::string& name) {
        if (const MtgSheet* const sheet = sheetOf(*booster_, name)) {
            for (const auto& [uuid, weight] : sheet->cards) {
                onSheets_.insert(uuid);
            }
        }
    }

    // Whether a card is on a sheet or, when there are none, meant for boosters.
    bool isDealt(const MtgFace& face) const {
        return booster_ ? onSheets_.contains(face.uuid) : !namesBoosters_ || isForBoosters(face);
    }
    static bool isForBoosters(const MtgFace& face) {
        return std::find_first_of(face.boosterTypes.begin(), face.boosterTypes.end(),
                                  std::begin(kPlayedKinds),
                                  std::end(kPlayedKinds)) != face.boosterTypes.end();
    }

    void takeCards() {
        namesBoosters_ = std::any_of(set_.faces.begin(), set_.faces.end(), isForBoosters);
        if (booster_ && std::none_of(set_.faces.begin(), set_.faces.end(),
                                     [this](const MtgFace& face) { return isDealt(face); })) {
            warn("the booster data name no card of this set and are left out");
            booster_ = nullptr;
        }
        std::set<std::string> unknown;
        for (const MtgCard& card : cardsOf(set_.faces)) {
            const MtgFace& front = *card.front();
            const auto& basics = front.supertypes;
            const bool isBasic = std::find(basics.begin(), basics.end(), "Basic") != basics.end();
            if (!isBasic && !isDealt(front)) {
                continue;
            }
            const auto [known, isNew] = indexOf_.emplace(nameOf(front), read_.source.cards.size());
            if (isNew) {
                read_.source.cards.push_back(recordOf(card, nearest_));
                places_.push_back("card " + toBytes(QString::fromStdString(nameOf(front))) +
                                  ", number " + toBytes(QString::fromStdString(front.number)));
                if (markOfRarity(front.rarity).empty() && unknown.insert(front.rarity).second) {
                    warn("the rarity \"" + toBytes(QString::fromStdString(front.rarity)) +
                         "\" is not known; its cards are not dealt");
                }
            }
            cardOf_.emplace(front.uuid, known->second);
        }
    }

    // The part of a sheet that each of its cards takes. Cards that are not dealt, or not in this
    // set, leave their part to the others.
    void countFromSheets() {
        read_.source.weights.assign(read_.source.cards.size(), 0);
        for (const auto& [name, count] : configuration_->contents) {
            const MtgSheet* const sheet = sheetOf(*booster_, name);
            std::vector<std::pair<std::size_t, double>> dealt;
            double total = 0;
            for (const auto& [uuid, weight] :
                 sheet ? sheet->cards : std::vector<std::pair<std::string, double>>()) {
                const auto card = cardOf_.find(uuid);
                if (card != cardOf_.end() && isUsable(weight) &&
                    read_.source.cards[card->second].rarity != ".") {
                    dealt.emplace_back(card->second, weight);
                    total += weight;
                }
            }
            if (!isUsable(count) || count > kMostOfASheet || !isUsable(total)) {
                warn("the sheet \"" + toBytes(QString::fromStdString(name)) +
                     "\" of the booster data holds no card of this set that is dealt; a pack goes "
                     "without it");
                continue;
            }
            for (const auto& [card, weight] : dealt) {
                const double share = count * weight / total;
                read_.source.weights[card] += share;
                addShare(read_.source.cards[card].rarity, share);
            }
        }
        roundCounts();
        cutCounts();
    }

    void addShare(const std::string& mark, double share) {
        for (const Pool pool : kPools) {
            if (mark == poolMark(pool)) {
                shares_.at(static_cast<std::size_t>(pool)) += share;
            }
        }
    }

    // Rounds down, then gives what is left of the pack to the greatest remainders.
    void roundCounts() {
        constexpr double kTrifle = 1e-6;
        std::array<int, 3>& counts = read_.source.counts;
        int left =
            static_cast<int>(std::lround(std::accumulate(shares_.begin(), shares_.end(), 0.0)));
        std::array<double, 3> remainders{};
        for (std::size_t pool = 0; pool < counts.size(); ++pool) {
            counts.at(pool) = static_cast<int>(std::floor(shares_.at(pool) + kTrifle));
            remainders.at(pool) = shares_.at(pool) - counts.at(pool);
            left -= counts.at(pool);
        }
        for (; left > 0; --left) {
            auto* const most = std::max_element(remainders.begin(), remainders.end());
            ++counts.at(static_cast<std::size_t>(most - remainders.begin()));
            *most = -1;
        }
    }

    // Takes from the commons first, then from the uncommons.
    void cutCounts() {
        std::array<int, 3>& counts = read_.source.counts;
        const int size = std::accumulate(counts.begin(), counts.end(), 0);
        int over = size - kMostCardsInPack;
        if (over > 0) {
            warn("a pack of " + std::to_string(size) + " cards is cut to " +
                 std::to_string(kMostCardsInPack));
        }
        for (auto count = counts.rbegin(); count != counts.rend() && over > 0; ++count) {
            const int cut = std::min(over, *count);
            *count -= cut;
            over -= cut;
        }
    }

    void countAsUsual() {
        read_.source.counts = kUsualPack;
        read_.source.weights.clear();
    }

    // No printed pack holds so many.
    static constexpr double kMostOfASheet = 1000;

    const MtgSet& set_;
    const MtgBooster* booster_ = nullptr;
    const MtgConfiguration* configuration_ = nullptr;
    std::set<std::string> onSheets_;  // uuids
    bool namesBoosters_ = false;
    ReadSource read_;
    Nearest nearest_;
    std::vector<std::string> places_;  // by card
    std::map<std::string, std::size_t> indexOf_;
    std::map<std::string, std::size_t> cardOf_;  // by uuid
    std::array<double, 3> shares_{};             // by Pool
};

}  // namespace

ReadSource setFromMtgJson(const MtgSet& set, const std::string& displayName) {
    return Mapping(set, displayName).finish();
}

}  // namespace packwise::sets
