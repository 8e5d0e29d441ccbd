#include "platform/rawsocket.h"

#ifdef Q_OS_WIN
#include <winsock2.h>

#include <algorithm>
#include <climits>
#else
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace packwise {

#ifdef Q_OS_WIN

namespace {

int lengthOf(std::size_t size) {
    return static_cast<int>(std::min<std::size_t>(size, INT_MAX));
}

}  // namespace

void closeRaw(qintptr descriptor) {
    closesocket(static_cast<SOCKET>(descriptor));
}

void preventSignals(qintptr) {}

// The system gives a vanished peer up in less time than that.
void limitSilence(qintptr) {}

RawWrite writeRaw(qintptr descriptor, std::string_view data) {
    const int sent = ::send(static_cast<SOCKET>(descriptor), data.data(), lengthOf(data.size()), 0);
    if (sent >= 0) {
        return {static_cast<std::size_t>(sent), RawWrite::None};
    }
    switch (WSAGetLastError()) {
        case WSAEWOULDBLOCK:
        case WSAENOBUFS:
            return {};
        case WSAECONNRESET:
        case WSAECONNABORTED:
            return {0, RawWrite::ByPeer};
        default:
            return {0, RawWrite::Other};
    }
}

std::size_t readRaw(qintptr descriptor, std::span<char> room) {
    const int got = ::recv(static_cast<SOCKET>(descriptor), room.data(), lengthOf(room.size()), 0);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

#else

void closeRaw(qintptr descriptor) {
    ::close(static_cast<int>(descriptor));
}

void preventSignals([[maybe_unused]] qintptr descriptor) {
#ifdef SO_NOSIGPIPE
    const int on = 1;
    setsockopt(static_cast<int>(descriptor), SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
}

void limitSilence([[maybe_unused]] qintptr descriptor) {
#ifdef Q_OS_LINUX
    const unsigned int milliseconds = 30000;
    setsockopt(static_cast<int>(descriptor), IPPROTO_TCP, TCP_USER_TIMEOUT, &milliseconds,
               sizeof milliseconds);
#endif
}

RawWrite writeRaw(qintptr descriptor, std::string_view data) {
#ifdef MSG_NOSIGNAL
    constexpr int kFlags = MSG_NOSIGNAL;
#else
    constexpr int kFlags = 0;
#endif
    ssize_t sent = 0;
    do {
        sent = ::send(static_cast<int>(descriptor), data.data(), data.size(), kFlags);
    } while (sent < 0 && errno == EINTR);
    if (sent >= 0) {
        return {static_cast<std::size_t>(sent), RawWrite::None};
    }
    if (errno == EAGAIN || errno == EWOULDBLOCK || errno == ENOBUFS) {
        return {};
    }
    return {0, errno == EPIPE || errno == ECONNRESET ? RawWrite::ByPeer : RawWrite::Other};
}

std::size_t readRaw(qintptr descriptor, std::span<char> room) {
    const ssize_t got = ::recv(static_cast<int>(descriptor), room.data(), room.size(), 0);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

#endif

}  // namespace packwise
