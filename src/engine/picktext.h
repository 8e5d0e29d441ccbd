// What one player saw of a draft, pack by pack, and the text form in which it is kept and which
// other programs read: "Pack 1 pick 1:", a card a line, "-->" before the one that was taken. Text
// is bytes in Windows-1252; the form itself is UTF-8.
#pragma once

#include "protocol/framing.h"
#include "protocol/pack.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

// A Rochester draft opens a pack for each player and set, and has a turn for each of its cards.
inline constexpr int kMostSeenPacks = kMostPacks * kSeats;
inline constexpr std::size_t kMostTurns = std::size_t{kMostSeenPacks} * kMostCardsInPack;
inline constexpr std::size_t kMostPickText = std::size_t{16} * 1024 * 1024;  // bytes

// Booster: a pack as it came to the player. Rochester: the pack on the table before one turn.
struct SeenPack {
    int pack = 1;  // from 1. Booster: the round; Rochester: the packs of the draft, counted through
    int pick = 1;  // from 1, within that pack
    std::string set;                 // the display name of its set; may be empty
    std::string player;              // Rochester: whose turn it was; Booster: empty, for oneself
    std::vector<std::string> cards;  // names, in the order of the pack
    int taken = -1;                  // the row of `cards` that was taken, or -1 where none was seen

    friend bool operator==(const SeenPack&, const SeenPack&) = default;
};

struct PickLog {
    std::string event;                 // a number that names the draft; may be empty
    std::string time;                  // of its beginning
    std::vector<std::string> players;  // round the table, at most kSeats
    int self = -1;                     // the index in `players` of the one who saw this, or -1
    std::vector<SeenPack> packs;       // in order of time, at most kMostTurns

    friend bool operator==(const PickLog&, const PickLog&) = default;
};

// What the name of a file of this form ends with.
inline constexpr std::string_view kPickTextEnding = ".picks.txt";

struct PickTextFault {
    int line = 0;  // from 1; 0 where no single line is at fault
    std::string what;
};

// The whole file. Ends of lines within a name become "?".
std::string writePicks(const PickLog& log);

// The reading of any bytes. Lines of other programs before the first pack are passed over; anything
// that is not as it should be after that is a fault. Nothing, and a fault, for what is no such
// text, is longer than kMostPickText or holds more than a draft has.
std::optional<PickLog> readPicks(std::string_view utf8, PickTextFault& fault);

}  // namespace packwise
