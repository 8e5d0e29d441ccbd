#include "passclients.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <stdexcept>

namespace packwise::bench {

namespace {

constexpr int kPatience = 5000;  // milliseconds

void noDelay(int fd) {
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

void writeAll(int fd, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t sent = ::send(fd, text.data() + done, text.size() - done, MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        done += static_cast<std::size_t>(sent);
    }
}

// Appends what has arrived. False when the other side has closed.
bool readInto(int fd, std::string& buffer) {
    std::array<char, 16384> block;
    const ssize_t got = ::recv(fd, block.data(), block.size(), 0);
    if (got <= 0) {
        return false;
    }
    buffer.append(block.data(), static_cast<std::size_t>(got));
    return true;
}

// The next whole message, taken off the buffer.
bool nextMessage(std::string& buffer, std::string& message) {
    const std::size_t end = buffer.find('~');
    if (end == std::string::npos) {
        return false;
    }
    message.assign(buffer, 0, end);
    buffer.erase(0, end + 1);
    return true;
}

double seconds(std::chrono::steady_clock::time_point from) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

}  // namespace

Pack makePack(int cards, int seat) {
    Pack pack;
    for (int card = 0; card < cards; ++card) {
        pack.add("UBenchmark Card " + std::to_string(seat * 100 + card));
    }
    return pack;
}

PassClients::~PassClients() {
    for (const Player& player : players_) {
        if (player.fd >= 0) {
            ::close(player.fd);
        }
    }
}

template <class Condition>
bool PassClients::waitFor(Condition condition) {
    while (!condition()) {
        if (!readSome(kPatience)) {
            return false;
        }
    }
    return true;
}

bool PassClients::join(std::uint16_t port) {
    const sockaddr_in address = loopback(port);
    int number = 0;
    for (Player& player : players_) {
        player.fd = ::socket(AF_INET, SOCK_STREAM, 0);
        if (::connect(player.fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
            0) {
            return false;
        }
        noDelay(player.fd);
        writeAll(player.fd, to_server::Version{{std::string(kProtocolVersion)}}.write() +
                                to_server::Name{"P" + std::to_string(++number)}.write());
        if (!waitFor([&] { return player.joined; })) {
            return false;
        }
    }
    return true;
}

bool PassClients::readSome(int timeoutMilliseconds) {
    std::array<pollfd, kSeats> waits;
    for (std::size_t i = 0; i < players_.size(); ++i) {
        waits[i] = {players_[i].fd, POLLIN, 0};
    }
    if (::poll(waits.data(), waits.size(), timeoutMilliseconds) <= 0) {
        return false;
    }
    std::string bytes;
    for (std::size_t i = 0; i < players_.size(); ++i) {
        if (waits[i].revents == 0) {
            continue;
        }
        Player& player = players_[i];
        bytes.clear();
        if (!readInto(player.fd, bytes)) {
            return false;
        }
        player.stream.append(bytes);
        while (const auto message = player.stream.next()) {
            dispatchTo<to_client::Picked, to_client::ShowPack, to_client::Name>(*message, player);
        }
    }
    return true;
}

void PassClients::Player::on(const to_client::Name& message) {
    joined = joined || message.seat == kSeats - 1;
}

void PassClients::Player::on(const to_client::ShowPack& message) {
    pack = message.pack;
}

void PassClients::Player::on(const to_client::Picked& /*message*/) {
    ++picksHeard;
}

void PassClients::pick(Player& player) {
    writeAll(player.fd, to_server::Card{std::string(player.pack.card(0))}.write());
    writeAll(player.fd, to_server::PackBack{player.pack.without(0)}.write());
    player.pack = {};
}

bool PassClients::play(int passes, bool measure, DraftTimes& times) {
    const auto allHavePacks = [this] {
        return std::none_of(players_.begin(), players_.end(),
                            [](const Player& player) { return player.pack.empty(); });
    };
    if (!waitFor(allHavePacks)) {
        return false;
    }
    const auto begin = std::chrono::steady_clock::now();
    for (int pass = 0; pass < passes; ++pass) {
        const bool last = pass + 1 == passes;
        if (!measure) {
            // Packs come only when all have picked, so each player picks once before the wait.
            for (Player& player : players_) {
                pick(player);
            }
            if (!last && !waitFor(allHavePacks)) {
                return false;
            }
            continue;
        }
        for (Player& player : players_) {
            player.picksHeard = 0;
        }
        std::for_each(players_.begin(), players_.end() - 1, pick);
        if (!waitFor([this] {
                return std::all_of(players_.begin(), players_.end(), [](const Player& player) {
                    return player.picksHeard == kSeats - 1;
                });
            })) {
            return false;
        }
        pick(players_.back());
        const auto from = std::chrono::steady_clock::now();
        if (!last) {
            if (!waitFor(allHavePacks)) {
                return false;
            }
            times.passes.push_back(seconds(from));
        }
    }
    times.whole = seconds(begin);
    return true;
}

BareServer::BareServer() : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof address;
    if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
        ::listen(listener_, 16) != 0 ||
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        throw std::runtime_error("no port for the bare server");
    }
    port_ = ntohs(address.sin_port);
}

BareServer::~BareServer() {
    ::close(listener_);
}

void BareServer::run(int passes) {
    constexpr std::size_t kPlayers = kSeats;
    std::array<pollfd, kPlayers> peers{};
    std::array<std::string, kPlayers> buffers;
    std::array<std::string, kPlayers> packs;
    const auto toAll = [&](const std::string& text) {
        for (const pollfd& peer : peers) {
            if (peer.fd > 0) {
                writeAll(peer.fd, text);
            }
        }
    };
    for (std::size_t seat = 0; seat < kPlayers; ++seat) {
        peers[seat] = {::accept(listener_, nullptr, nullptr), POLLIN, 0};
        noDelay(peers[seat].fd);
        writeAll(peers[seat].fd, "NAME7~");
    }
    const auto deal = [&] {
        for (std::size_t seat = 0; seat < kPlayers; ++seat) {
            packs[seat] = makePack(kMostCardsInPack, static_cast<int>(seat)).text();
        }
    };
    const auto handOut = [&] {
        for (std::size_t seat = 0; seat < kPlayers; ++seat) {
            writeAll(peers[seat].fd, "BOOS" + packs[seat] + "~");
        }
    };
    deal();
    handOut();
    std::size_t picksIn = 0;
    while (passes > 0 && ::poll(peers.data(), peers.size(), kPatience) > 0) {
        for (std::size_t seat = 0; seat < kPlayers; ++seat) {
            if (peers[seat].revents == 0) {
                continue;
            }
            if (!readInto(peers[seat].fd, buffers[seat])) {
                passes = 0;
                break;
            }
            std::string message;
            while (nextMessage(buffers[seat], message)) {
                if (!message.starts_with("BPCK")) {
                    continue;
                }
                packs[seat] = message.substr(4);
                toAll("BSTA" + std::to_string(seat) + "~");
                if (++picksIn < kPlayers) {
                    continue;
                }
                picksIn = 0;
                if (--passes == 0) {
                    break;
                }
                if (packs[0].empty()) {
                    toAll("ROUN~");
                    deal();
                } else {
                    std::rotate(packs.begin(), packs.end() - 1, packs.end());
                }
                handOut();
            }
        }
    }
    for (const pollfd& peer : peers) {
        ::close(peer.fd);
    }
}

}  // namespace packwise::bench
