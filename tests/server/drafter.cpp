#include "server/drafter.h"

namespace packwise {

std::string Drafter::answer(int num, bool rochester, const Next& next) {
    std::string answer;
    while (const auto text = heard.next()) {
        const auto message = readMessage(*text);
        if (!message) {
            continue;
        }
        const std::string_view command = message->command;
        const std::string body(message->body);
        if (command == "PING") {
            answer += "PONG~";
        } else if (command == "SEAT" && body[0] - '0' == num - 1) {
            position_ = body[1] - '0';
        } else if (command == "BOOS") {
            pack_ = readFields(body);
            answer += rochester || pack_.empty() ? "" : pickBooster(next);
        } else if (command == "REVW") {
            answer += "RROK~";
        } else if (command == "RPAU") {
            answer += "RPOK~";
        } else if (command == "TURN" && body[0] - '1' == position_) {
            const auto row = next() % pack_.size();
            answer += "CARD" + pack_.at(row) + "~" + (next() % 5 == 0 ? "RAND~" : "") + "RPCK" +
                      std::to_string(row) + "~";
        } else if (command == "RPCK") {
            pack_.erase(pack_.begin() + std::stoi(body.substr(1)));
        } else if (command == "OVER") {
            answer += "CODE" + std::to_string(40000 + num) + "~";
        }
    }
    return answer;
}

std::string Drafter::pickBooster(const Next& next) const {
    const auto taken = next() % pack_.size();
    std::string rest;
    for (std::size_t i = 0; i < pack_.size(); ++i) {
        rest += i == taken ? "" : pack_[i] + '|';
    }
    return "CARD" + pack_.at(taken) + "~BPCK" + rest + "~";
}

}  // namespace packwise
