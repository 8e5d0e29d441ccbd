// Plays the record of a draft again by the rules. Text is bytes in Windows-1252.
#pragma once

#include "engine/picktext.h"
#include "record/draftrecord.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// One card leaves a pack.
struct PlayedTurn {
    int packIndex = 0;  // of its set, 0 to 5
    int pack = 1;       // from 1. Booster: the round; Rochester: the packs of the draft
    int pick = 1;       // from 1, within that pack
    int position = 0;   // the table position of who takes it
    const Pack& cards;  // the pack before
    int row = 0;        // of the card in it
    PickMaker by = PickMaker::Player;
};

struct Finding {
    enum class About {
        Record,  // the server cannot have seen it so
        Player   // a player, or one's file, does not agree with it
    };
    About about = About::Record;
    std::string place;  // "Round 2, pick 3", or a file; may be empty
    std::string what;   // a sentence
};

struct Replayed {
    std::vector<Finding> findings;
    bool isFollowed = false;  // to the end; behind a fault of the record nothing can be
};

// `onTurn` is called for each card, in order; the pack that it is given lives as long as the call.
Replayed replay(const DraftRecord& record, const std::function<void(const PlayedTurn&)>& onTurn);

// What the player of a table position saw, without an event and a time. Rochester: what all saw.
PickLog picksOf(const DraftRecord& record, int position);

// The name of a card's token.
std::string_view nameOfToken(std::string_view token);

}  // namespace packwise
