// The record of a draft: what its server saw of it. Text is bytes in Windows-1252; a table position
// is the place round the table, 0 to 7.
#pragma once

#include "server/interfaces.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace packwise {

struct RecordPlayer {
    std::string name;
    int seat = 0;  // seat index, 0 to 7

    friend bool operator==(const RecordPlayer&, const RecordPlayer&) = default;
};

// Booster: the pack that a table position opens. Rochester: the next one on the table.
struct PackDealt {
    int packIndex = 0;  // 0 to 5
    int position = 0;   // Booster; 0 in Rochester
    bool alongLists = false;
    Pack pack;

    friend bool operator==(const PackDealt&, const PackDealt&) = default;
};

struct CardTaken {
    int position = 0;
    std::string card;  // its token
    PickMaker by = PickMaker::Player;

    friend bool operator==(const CardTaken&, const CardTaken&) = default;
};

struct PlayerLost {
    int position = 0;

    friend bool operator==(const PlayerLost&, const PlayerLost&) = default;
};

struct OddityNoted {
    int position = 0;
    Oddity what = Oddity::OutOfTurn;

    friend bool operator==(const OddityNoted&, const OddityNoted&) = default;
};

struct CodeReported {
    int position = 0;
    std::int32_t code = 0;

    friend bool operator==(const CodeReported&, const CodeReported&) = default;
};

struct DraftEnded {
    DraftEnd how = DraftEnd::Over;
    std::string time;

    friend bool operator==(const DraftEnded&, const DraftEnded&) = default;
};

using RecordEvent =
    std::variant<PackDealt, CardTaken, PlayerLost, OddityNoted, CodeReported, DraftEnded>;

struct DraftRecord {
    std::string version;  // of the server
    std::string time;     // of the start, as "2026-11-23T20:15:02+01:00"
    bool isRochester = false;
    bool isTimed = false;  // Rochester
    int pickSeconds = 0;
    bool isSeatedByChance = false;
    std::vector<std::string> sets;      // display name of the set of each pack, 3 to 6
    std::vector<RecordPlayer> players;  // by table position, 1 to 8
    std::vector<RecordEvent> events;    // in order of time

    friend bool operator==(const DraftRecord&, const DraftRecord&) = default;
};

// More than any draft has, however its players behave.
inline constexpr int kMostRecordEvents = 4000;

// "Ada has sent a pick out of turn", for the name "Ada".
std::string wordsFor(Oddity what, std::string_view name);

// The lines of a record's file, see docs/records.md. UTF-8.
std::string writeRecord(const DraftRecord& record);

struct RecordFault {
    int line = 0;  // from 1; 0 where no single line is at fault
    std::string what;
};

inline constexpr std::size_t kMostRecordBytes = std::size_t{32} * 1024 * 1024;

// The reading of any bytes. Nothing, and a fault, for what is no whole record. What stands in it
// need not make sense as a draft, but all numbers are within their ranges.
std::optional<DraftRecord> readRecord(std::string_view utf8, RecordFault& fault);

}  // namespace packwise
