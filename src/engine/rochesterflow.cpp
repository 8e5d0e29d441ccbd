#include "engine/rochesterflow.h"

#include "protocol/messages.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace packwise {

RochesterTurns rochesterTurns(int seats, int rochSet, int roundNo) {
    RochesterTurns turns{};
    const bool odd = rochSet % 2 == 1;
    int seat = odd ? roundNo : seats + 1 - roundNo;
    int direction = odd ? 1 : -1;
    for (int i = 0; i < kMostCardsInPack; ++i) {
        turns[static_cast<std::size_t>(i)] = seat;
        if ((i + 1) % seats == 0) {
            direction = -direction;
            continue;
        }
        seat += direction;
        if (seat > seats) {
            seat = 1;
        } else if (seat < 1) {
            seat = seats;
        }
    }
    return turns;
}

class RochesterFlow::Busy {
public:
    explicit Busy(RochesterFlow& flow) : flow_(flow), before_(std::exchange(flow.busy_, true)) {}
    ~Busy() { flow_.busy_ = before_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    RochesterFlow& flow_;
    bool before_;
};

void RochesterFlow::begin() {
    rochSet_ = 1;
    table_.roundNo = 1;
    rochRandom_ = false;
    unusedTurns_.fill(0);
    phase_ = Phase::Opening;
    settle();
}

void RochesterFlow::openPack() {
    std::vector<Pack> packs = host_.makePacks(rochSet_ - 1, 1);
    if (packs.empty()) {
        phase_ = Phase::Idle;
        return;
    }
    pack_ = std::move(packs.front());
    rochCards_ = std::min(pack_.size(), kMostCardsInPack);
    host_.broadcastInDraft(
        to_client::Round{{std::to_string(rochSet_) + ":" + std::to_string(table_.roundNo)}}
            .write());
    host_.broadcastInDraft(to_client::ShowPack{pack_}.write());
    rochOrder_ = rochesterTurns(table_.playerCount, rochSet_, table_.roundNo);
    rochTurn_ = 0;
    answered_.fill(false);
    ++step_;
    phase_ = Phase::Review;
    host_.broadcastInDraft(to_client::Review{}.write());
}

void RochesterFlow::onReviewDone(int socket) {
    if (phase_ == Phase::Review) {
        answer(socket);
    }
}

void RochesterFlow::onPauseDone(int socket) {
    if (phase_ == Phase::Pause) {
        answer(socket);
    }
}

void RochesterFlow::answer(int socket) {
    const int position = table_.positionOfSocket(socket);
    if (position < 0 || answered_[static_cast<std::size_t>(position)]) {
        return;
    }
    {
        const Busy busy(*this);
        answered_[static_cast<std::size_t>(position)] = true;
        host_.broadcastInDraft(to_client::Answered{position}.write());
    }
    settle();
}

void RochesterFlow::onRandomMark(int socket) {
    if (running() && table_.positionOfSocket(socket) >= 0) {
        rochRandom_ = true;
    }
}

void RochesterFlow::onPick(int socket, std::optional<int> row) {
    const int position = table_.positionOfSocket(socket);
    if (!running() || position < 0) {
        return;
    }
    const bool isOnTurn = position == turnPosition();
    // Who has been overtaken may have picked before he could know of it.
    int& turns = unusedTurns_[static_cast<std::size_t>(position)];
    if (turns == 0) {
        host_.tellOddity(socket, Oddity::OutOfTurn);
    }
    turns = std::max(turns - 1, 0);
    if (phase_ != Phase::Turns) {
        return;
    }
    if (row && *row >= 0 && *row < rochCards_ - rochTurn_) {
        take(position, *row, rochRandom_ ? PickMaker::Clock : PickMaker::Player);
    } else if (isOnTurn) {
        {
            const Busy busy(*this);
            host_.tellReplacedPick(socket);
        }
        rochRandom_ = true;
        take(position, randomRow(), PickMaker::Chance);
    }
}

void RochesterFlow::take(int position, int row, PickMaker by) {
    {
        const Busy busy(*this);
        host_.tellPick(table_.socketAt[static_cast<std::size_t>(position)], pack_.card(row), by);
        pack_.remove(row);
        const bool random = std::exchange(rochRandom_, false);
        ++rochTurn_;
        host_.broadcastInDraft(to_client::Pick{position, row, random}.write());
        nextTurn();
    }
    settle();
}

void RochesterFlow::nextTurn() {
    if (rochTurn_ >= rochCards_) {
        endPack();
        return;
    }
    ++step_;
    const int seat = rochOrder_[static_cast<std::size_t>(rochTurn_)];
    ++unusedTurns_[static_cast<std::size_t>(seat - 1)];
    if (lost(static_cast<std::size_t>(seat - 1))) {
        host_.enableRandoms();
    }
    host_.broadcastInDraft(to_client::Turn{seat - 1}.write());
}

void RochesterFlow::endPack() {
    if (table_.roundNo == table_.playerCount && rochSet_ == table_.packCount) {
        phase_ = Phase::Idle;
        host_.draftOver();
        host_.broadcastInDraft(to_client::Over{}.write());
        return;
    }
    answered_.fill(false);
    ++step_;
    phase_ = Phase::Pause;
    host_.broadcastInDraft(to_client::Pause{}.write());
}

void RochesterFlow::onSeatLost() {
    settle();
}

void RochesterFlow::settle() {
    if (busy_) {
        return;
    }
    const Busy busy(*this);
    while (settleOnce()) {
    }
}

// One step that needs no message: an answer for a lost seat, or the way into the next phase. False
// when the flow has to wait.
bool RochesterFlow::settleOnce() {
    switch (phase_) {
        case Phase::Opening:
            openPack();
            return true;
        case Phase::Review:
            if (answerForOneLost()) {
                return true;
            }
            if (!allAnswered()) {
                return false;
            }
            phase_ = Phase::Turns;
            nextTurn();
            return true;
        case Phase::Pause:
            if (answerForOneLost()) {
                return true;
            }
            if (!allAnswered()) {
                return false;
            }
            if (++table_.roundNo > table_.playerCount) {
                table_.roundNo = 1;
                ++rochSet_;
            }
            phase_ = Phase::Opening;
            return true;
        case Phase::Idle:
        case Phase::Turns:
            return false;
    }
    return false;
}

bool RochesterFlow::answerForOneLost() {
    for (std::size_t i = 0; i < static_cast<std::size_t>(table_.playerCount); ++i) {
        if (!answered_[i] && lost(i)) {
            answered_[i] = true;
            host_.broadcastInDraft(to_client::Answered{static_cast<int>(i)}.write());
            return true;
        }
    }
    return false;
}

bool RochesterFlow::allAnswered() const {
    return std::count(answered_.begin(), answered_.end(), true) == table_.playerCount;
}

bool RochesterFlow::lost(std::size_t position) const {
    return host_.dropped(table_.socketAt[position]);
}

int RochesterFlow::turnPosition() const {
    return phase_ == Phase::Turns ? rochOrder_[static_cast<std::size_t>(rochTurn_)] - 1 : -1;
}

bool RochesterFlow::awaits(int position) const {
    const bool answering = phase_ == Phase::Review || phase_ == Phase::Pause;
    return answering ? !answered_.at(static_cast<std::size_t>(position))
                     : running() && position == turnPosition();
}

void RochesterFlow::onRandomsTick() {
    settle();
    if (phase_ != Phase::Turns || busy_) {
        return;
    }
    const auto position = static_cast<std::size_t>(turnPosition());
    if (!lost(position)) {
        return;
    }
    rochRandom_ = true;
    take(turnPosition(), randomRow(), PickMaker::Chance);
}

int RochesterFlow::randomRow() {
    const int rows = rochCards_ - rochTurn_;
    return std::min(static_cast<int>(rows * host_.draw()), rows - 1);
}

}  // namespace packwise
