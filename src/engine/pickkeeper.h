// Keeps what one player sees of a draft, as the server's messages tell it. Anything may come at any
// time; what makes no sense is passed over, and what goes on for longer than a draft is not kept.
#pragma once

#include "engine/picktext.h"
#include "protocol/pack.h"

#include <array>
#include <string>
#include <string_view>

namespace packwise {

class PickKeeper {
public:
    // A draft of the format 'B' or 'R' begins.
    void begin(char format) { format_ = format; }

    // Who sits at a table position, 0 to 7, and whether that is the player who sees all this.
    void seat(int position, std::string_view name, bool isSelf);

    // Display names of the draft's sets.
    void sets(const std::array<std::string, kMostPacks>& names) { sets_ = names; }

    // A new round, as the server words it: "2", or "2:5" for the fifth pack of the second set.
    void round(std::string_view text);

    void pack(const Pack& pack);

    // Booster: the player has taken that token out of the pack that came last.
    void take(std::string_view token);

    // Rochester: the table position, 0 to 7, has taken the row of the pack that lies there.
    void takeRow(int position, int row);

    // Without an event and a time.
    const PickLog& log() const { return log_; }

private:
    void see(const Pack& pack, const std::string& player, int taken);

    PickLog log_;
    char format_ = ' ';
    std::array<std::string, kMostPacks> sets_;
    std::string set_;  // of the round
    int packs_ = 0;    // begun
    int picks_ = 0;    // in the pack that was begun last
    Pack lying_;       // Rochester: what is left of the pack
    std::size_t seenBytes_ = 0;
};

}  // namespace packwise
