#include "engine/boosterflow.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace packwise {

namespace {

// Whether the text is a pack string that holds all cards of `pack` but one.
bool isLessOne(std::string_view text, const std::string& pack) {
    std::vector<std::string> before = readFields(pack);
    std::vector<std::string> after = readFields(text);
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    return (text.empty() || text.back() == kFieldEnd) && after.size() + 1 == before.size() &&
           std::includes(before.begin(), before.end(), after.begin(), after.end());
}

std::string withoutCard(const std::string& pack, int card) {
    std::vector<std::string> cards = readFields(pack);
    cards.erase(cards.begin() + card);
    std::string rest;
    for (const std::string& token : cards) {
        rest += token + kFieldEnd;
    }
    return rest;
}

}  // namespace

const std::string& BoosterFlow::seatPack(int position) const {
    return seatPack_.at(static_cast<std::size_t>(position));
}

bool BoosterFlow::seatPicked(int position) const {
    return seatPicked_.at(static_cast<std::size_t>(position));
}

void BoosterFlow::begin() {
    running_ = true;
    picksIn_ = 0;
    seatPack_.fill({});
    seatPicked_.fill(false);
    table_.roundNo = 1;
    startRound();
}

void BoosterFlow::startRound() {
    direction_ = 2 * (table_.roundNo % 2) - 1;
    if (table_.roundNo > table_.packCount) {
        running_ = false;
        host_.draftOver();
        host_.broadcast("OVER~");
        return;
    }
    host_.broadcast("ROUN" + std::to_string(table_.roundNo) + kTerminator);
    const int packIndex = table_.roundNo - 1;
    const std::string set = host_.setName(packIndex);
    if (set == "Ice Age" || set == "Alliances") {
        host_.broadcast("SNOW~");
    }
    std::vector<std::string> packs = host_.makePacks(packIndex, table_.playerCount);
    if (packs.empty()) {
        running_ = false;
        return;
    }
    std::move(packs.begin(), packs.end(), seatPack_.begin());
    handOutPacks();
}

void BoosterFlow::handOutPacks() {
    for (std::size_t i = 0; i < static_cast<std::size_t>(table_.playerCount); ++i) {
        seatPicked_[i] = false;
        const int socket = table_.socketAt[i];
        if (host_.dropped(socket)) {
            host_.enableRandoms();
        } else {
            host_.send(socket, "BOOS" + seatPack_[i] + kTerminator);
        }
    }
}

void BoosterFlow::onPackBack(int socket, std::string_view rest) {
    const int position = table_.positionOfSocket(socket);
    if (!running_ || position < 0) {
        return;
    }
    const auto seat = static_cast<std::size_t>(position);
    if (seatPicked_[seat]) {
        return;
    }
    // Anything else would set the table's packs out of step, and ignored it would stop the table.
    const bool sound = isLessOne(rest, seatPack_[seat]);
    if (!sound) {
        host_.tellReplacedPick(socket);
    }
    seatPack_[seat] = sound ? std::string(rest) : lessRandomCard(seatPack_[seat]);
    seatPicked_[seat] = true;
    ++picksIn_;
    host_.broadcast("BSTA" + std::to_string(position) + kTerminator);
    if (picksIn_ != table_.playerCount) {
        return;
    }
    picksIn_ = 0;
    if (seatPack_[0].empty()) {
        ++table_.roundNo;
        startRound();
        return;
    }
    passPacks();
    handOutPacks();
}

void BoosterFlow::passPacks() {
    const auto first = seatPack_.begin();
    const auto last = first + table_.playerCount;
    if (direction_ == 1) {
        std::rotate(first, last - 1, last);
    } else {
        std::rotate(first, first + 1, last);
    }
}

void BoosterFlow::onRandomsTick() {
    for (int i = 0; running_ && i < table_.playerCount; ++i) {
        const auto seat = static_cast<std::size_t>(i);
        if (!seatPicked_[seat] && host_.dropped(table_.socketAt[seat])) {
            randomPick(i);
        }
    }
}

void BoosterFlow::randomPick(int position) {
    const auto seat = static_cast<std::size_t>(position);
    if (!seatPack_[seat].empty()) {
        host_.dispatch(table_.socketAt[seat], "BPCK" + lessRandomCard(seatPack_[seat]));
    }
}

std::string BoosterFlow::lessRandomCard(const std::string& pack) {
    const int cards = countCards(pack);
    return withoutCard(pack, std::min(static_cast<int>(cards * host_.draw()), cards - 1));
}

}  // namespace packwise
