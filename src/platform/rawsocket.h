// The system's own calls on a socket that does not wait, beside those that Qt makes on it.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <span>
#include <string_view>

namespace packwise {

void closeRaw(qintptr descriptor);

// A write to a peer that has gone sends this process no signal.
void preventSignals(qintptr descriptor);

// A peer whose machine has vanished is noticed after half a minute of unanswered writes.
void limitSilence(qintptr descriptor);

struct RawWrite {
    enum Fault { None, ByPeer, Other };

    std::size_t taken = 0;  // bytes; also 0 when the system has no room
    Fault fault = None;     // ByPeer when the peer has closed or reset the connection
};
RawWrite writeRaw(qintptr descriptor, std::string_view data);

// How many bytes have been put into `room`: what has arrived, as much as fits. 0 when there is no
// more or the connection is lost.
std::size_t readRaw(qintptr descriptor, std::span<char> room);

}  // namespace packwise
