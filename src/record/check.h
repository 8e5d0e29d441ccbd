// Whether a draft was played by the rules: its record, the packs, the players' decks and picks.
// Text is bytes in Windows-1252.
#pragma once

#include "engine/cardset.h"
#include "engine/picktext.h"
#include "record/replay.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// What came of it, a sentence for each.
struct Report {
    std::vector<std::string> checked;
    std::vector<std::string> unchecked;  // and why
    std::vector<Finding> findings;
};

class DraftCheck {
public:
    // Plays the draft. `record` outlives this.
    explicit DraftCheck(const DraftRecord& record);

    // Whether each pack could have been dealt from the files of its set in that folder.
    void checkPacks(const std::filesystem::path& folder);
    // The next two give whether the file could be held to the draft.
    // A deck file's bytes: whether its cards are among its player's picks, free lands apart, and
    // whether its code is the one that was reported.
    bool checkDeck(const std::string& file, std::string_view bytes);
    // The bytes of a file of one player's picks: whether he saw what the record says.
    bool checkPicks(const std::string& file, std::string_view utf8);

    const Report& report() const { return report_; }

private:
    // What is kept of a turn.
    struct Turn {
        int packIndex;
        int pack;
        int pick;
        int position;
        std::vector<std::string> cards;  // names, sorted
        std::string taken;
    };

    std::vector<std::string> differencesOf(const SeenPack& seen, const Turn& turn) const;
    void find(Finding::About about, const std::string& place, std::string what);
    int ownerOf(const std::string& file, const std::vector<std::string>& cards,
                std::int32_t code) const;
    std::vector<std::string> takenBy(int position) const;  // names, sorted
    std::vector<std::int32_t> codesOf(int position) const;
    bool isFreeLand(std::string_view card) const;
    const std::string& nameAt(int position) const;

    const DraftRecord& record_;
    std::vector<Turn> turns_;
    bool isFollowed_ = false;
    Report report_;
};

// Whether dealing could have made such a pack.
bool couldComeFromPools(const Pack& pack, const CardPools& pools);
bool couldComeFromLists(const Pack& pack, const OrderFile& order);

}  // namespace packwise
