#include "server/scene.h"

#include "engine/dealing.h"

#include <filesystem>
#include <utility>

namespace packwise {

Scene::Scene(SceneChoices wanted, std::uint64_t seed)
    : choices(std::move(wanted)),
      server(*this, *this, *this, [this] { return draw(); }),
      random_(seed * 2654435761U + 1) {}

void Scene::connect() {
    note("> connect");
    if (listening_) {
        const int num = server.socketForNewcomer();
        if (num > 0) {
            at(num).state = LinkState::Open;
            server.welcome(num);
        } else {
            note("9 STATServer is full~\n9 closed");
        }
    }
    settle();
}

void Scene::join(int num, const std::string& name) {
    connect();
    say(num, "VERS1.41~NAME" + name + "~");
}

void Scene::say(int num, const std::string& bytes) {
    if (at(num).state != LinkState::Open) {
        return;
    }
    note("> " + std::to_string(num) + " says " + bytes.substr(0, 60));
    at(num).arrived += bytes;
    server.onArrival(num);
    settle();
}

void Scene::hangUp(int num) {
    note("> " + std::to_string(num) + " closes");
    if (at(num).state == LinkState::Open) {
        at(num).state = LinkState::Broken;
        server.onArrival(num);
    }
    at(num).client.heard.clear();
    settle();
}

void Scene::breakAtWrite(int num, int write) {
    at(num).breaksAt = at(num).writes + write;
}

void Scene::breakNow(int num) {
    note("> " + std::to_string(num) + " breaks unseen");
    at(num).state = LinkState::Broken;
}

void Scene::poke() {
    note("> poke");
    server.poke();
    settle();
}

void Scene::tick() {
    if (ticks_) {
        note("> tick");
        server.tick();
        settle();
    }
}

void Scene::kick(int num) {
    note("> kick " + std::to_string(num));
    if (!server.seat(num - 1).name.empty()) {
        server.kick(num);
    }
    settle();
}

void Scene::ping(int num) {
    note("> ping " + std::to_string(num));
    server.ping(num);
    settle();
}

bool Scene::nobodyIsLeft() {
    if (server.canGoOn()) {
        return false;
    }
    box("No valid connections");
    return true;
}

void Scene::start() {
    note("> start");
    if (listening_) {
        startAsTheHost();
    }
    settle();
}

void Scene::startAsTheHost() {
    if (server.namedSeats().empty()) {
        box("No valid connections");
        return;
    }
    server.start();
    listening_ = false;
    if (nobodyIsLeft()) {
        return;
    }
    if (choices.fixSeats && server.hasHole()) {
        choices.fixSeats = false;
        box("Can't fix seat with connection hole.");
        if (nobodyIsLeft()) {
            return;
        }
    }
    if (choices.fixSeats) {
        server.tellOfSeating();
        order_ = server.players();
        return;
    }
    server.seatByChance();
    if (!nobodyIsLeft()) {
        server.deal();
    }
}

void Scene::seated(const std::vector<std::pair<int, int>>& exchanges) {
    note("> seated");
    for (const auto& [a, b] : exchanges) {
        if (!order_.empty()) {
            std::swap(order_.at(static_cast<std::size_t>(a)),
                      order_.at(static_cast<std::size_t>(b)));
        }
    }
    for (std::size_t position = 0; position < order_.size(); ++position) {
        server.seatAt(order_[position], static_cast<int>(position));
    }
    if (!std::exchange(order_, {}).empty() && !nobodyIsLeft()) {
        server.deal();
    }
    settle();
}

void Scene::box(const std::string& text) {
    note("box " + text);
    if (duringABox) {
        std::exchange(duringABox, {})();
    }
}

// What the event loop does once a handler has ended.
void Scene::settle() {
    for (bool more = true; more;) {
        more = std::exchange(turn_, false);
        if (more) {
            server.turn();
        }
        for (int num = 1; num <= kSeats; ++num) {
            if (at(num).state == LinkState::Broken) {
                server.onArrival(num);
                at(num).client.heard.clear();
                more = true;
            }
        }
    }
}

bool Scene::act(const std::function<void(int)>& before) {
    bool acted = false;
    for (int num = 1; num <= kSeats; ++num) {
        const std::string answer =
            at(num).client.answer(num, choices.rochester, [this] { return next(); });
        if (!answer.empty()) {
            acted = true;
            if (before) {
                before(num);
            }
            say(num, answer);
        }
    }
    return acted;
}

void Scene::play(int rounds) {
    for (; rounds > 0; --rounds) {
        if (!act()) {
            const std::size_t before = transcript.size();
            tick();
            if (transcript.size() <= before + std::string("> tick\n").size()) {
                return;
            }
        }
    }
}

std::uint64_t Scene::next() {
    random_ ^= random_ << 13U;
    random_ ^= random_ >> 7U;
    random_ ^= random_ << 17U;
    return random_;
}

std::string Scene::address(int num) const {
    return num % 2 == 1 ? "127.0.0.1" : "10.0.0." + std::to_string(num);
}

void Scene::write(int num, std::string_view bytes) {
    Link& link = at(num);
    note(std::to_string(num) + ' ' + std::string(bytes));
    link.client.heard.append(bytes);
    if (++link.writes == link.breaksAt) {
        note(std::to_string(num) + " breaks");
        link.state = LinkState::Broken;
    }
}

std::string Scene::read(int num, std::size_t most) {
    std::string& arrived = at(num).arrived;
    std::string bytes = arrived.substr(0, most);
    arrived.erase(0, bytes.size());
    return bytes;
}

void Scene::close(int num) {
    if (at(num).state != LinkState::Free) {
        note(std::to_string(num) + " closed");
    }
    at(num).state = LinkState::Free;
    at(num).arrived.clear();
}

std::vector<Pack> Scene::dealPacks(int packIndex, int count) {
    const DealtRound round = dealRound(std::filesystem::current_path(), setName(packIndex),
                                       choices.real, count, [this] { return draw(); });
    choices.real = round.alongLists;
    return round.packs;
}

}  // namespace packwise
