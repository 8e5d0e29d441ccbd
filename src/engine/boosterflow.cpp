#include "engine/boosterflow.h"

#include "protocol/messages.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace packwise {

const Pack& BoosterFlow::seatPack(int position) const {
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
        host_.broadcastInDraft(to_client::Over{}.write());
        return;
    }
    host_.broadcastInDraft(to_client::Round{{std::to_string(table_.roundNo)}}.write());
    const int packIndex = table_.roundNo - 1;
    const std::string set = host_.setName(packIndex);
    if (set == "Ice Age" || set == "Alliances") {
        host_.broadcastInDraft(to_client::Snow{}.write());
    }
    std::vector<Pack> packs = host_.makePacks(packIndex, table_.playerCount);
    if (packs.empty()) {
        running_ = false;
        return;
    }
    std::move(packs.begin(), packs.end(), seatPack_.begin());
    handOutPacks();
}

void BoosterFlow::handOutPacks() {
    ++step_;
    for (std::size_t i = 0; i < static_cast<std::size_t>(table_.playerCount); ++i) {
        seatPicked_[i] = false;
        const int socket = table_.socketAt[i];
        if (host_.dropped(socket)) {
            host_.enableRandoms();
        } else {
            host_.sendInDraft(socket, to_client::ShowPack{seatPack_[i]}.write());
        }
    }
}

void BoosterFlow::onPackBack(int socket, const std::optional<Pack>& rest) {
    const int position = table_.positionOfSocket(socket);
    if (!running_ || position < 0) {
        return;
    }
    const auto seat = static_cast<std::size_t>(position);
    if (seatPicked_[seat]) {
        host_.tellOddity(socket, Oddity::OutOfTurn);
        return;
    }
    // Anything else would set the table's packs out of step, and ignored it would stop the table.
    const std::string_view card = rest ? seatPack_[seat].cardLessIn(*rest) : std::string_view();
    if (card.empty()) {
        host_.tellReplacedPick(socket);
        takeAtRandom(position);
        return;
    }
    take(position, card, *rest, PickMaker::Player);
}

void BoosterFlow::takeAtRandom(int position) {
    const Pack& pack = seatPack(position);
    const int row = std::min(static_cast<int>(pack.size() * host_.draw()), pack.size() - 1);
    take(position, pack.card(row), pack.without(row), PickMaker::Chance);
}

void BoosterFlow::take(int position, std::string_view card, Pack rest, PickMaker by) {
    const auto seat = static_cast<std::size_t>(position);
    host_.tellPick(table_.socketAt[seat], card, by);
    seatPack_[seat] = std::move(rest);
    seatPicked_[seat] = true;
    ++picksIn_;
    host_.broadcastInDraft(to_client::Picked{position}.write());
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
        if (!seatPicked_[seat] && host_.dropped(table_.socketAt[seat]) &&
            !seatPack_[seat].empty()) {
            takeAtRandom(i);
        }
    }
}

}  // namespace packwise
