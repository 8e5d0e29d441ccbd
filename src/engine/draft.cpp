#include "engine/draft.h"

namespace packwise {

void DraftTable::clear() {
    playerCount = 0;
    packCount = 0;
    roundNo = 0;
    tableOf.fill(-1);
    socketAt.fill(0);
}

void DraftTable::place(int seatIndex, int position) {
    tableOf.at(static_cast<std::size_t>(seatIndex)) = position;
    socketAt.at(static_cast<std::size_t>(position)) = seatIndex + 1;
}

int DraftTable::positionOfSocket(int socket) const {
    if (socket < 1 || socket > kSeats) {
        return -1;
    }
    return tableOf[static_cast<std::size_t>(socket - 1)];
}

}  // namespace packwise
