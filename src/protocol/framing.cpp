#include "protocol/framing.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace packwise {

void MessageSplitter::append(std::string_view bytes) {
    if (overflowed_) {
        return;
    }
    if (taken_ == buffer_.size()) {
        buffer_.clear();
        complete_ -= taken_;
        taken_ = 0;
    } else if (taken_ > buffer_.size() / 2) {
        buffer_.erase(0, taken_);
        complete_ -= taken_;
        taken_ = 0;
    }

    std::size_t scanned = buffer_.size();
    if (bytes.find('\r') == std::string_view::npos && bytes.find('\n') == std::string_view::npos) {
        buffer_.append(bytes);
    } else {
        buffer_.reserve(buffer_.size() + bytes.size());
        std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(buffer_),
                     [](char c) { return c != '\r' && c != '\n'; });
    }

    for (;;) {
        const std::size_t end = buffer_.find(kTerminator, scanned);
        const bool whole = end != std::string::npos;
        if ((whole ? end : buffer_.size()) - complete_ > mostLength_) {
            buffer_.resize(complete_);
            overflowed_ = true;
            return;
        }
        if (!whole) {
            return;
        }
        complete_ = scanned = end + 1;
    }
}

std::optional<std::string> MessageSplitter::next() {
    if (taken_ == complete_) {
        return std::nullopt;
    }
    const std::size_t end = buffer_.find(kTerminator, taken_);
    std::string message = buffer_.substr(taken_, end - taken_);
    taken_ = end + 1;
    return message;
}

void MessageSplitter::clear() {
    *this = MessageSplitter(mostLength_);
}

std::optional<Message> readMessage(std::string_view text) {
    if (text.size() < kCommandLength) {
        return std::nullopt;
    }
    return Message{text.substr(0, kCommandLength), text.substr(kCommandLength)};
}

std::optional<int> readNumber(std::string_view text) {
    int number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    const std::string_view digits = text.substr(text.front() == '-' ? 1 : 0);
    if (digits.front() == '0' && text.size() > 1) {
        return std::nullopt;
    }
    return number;
}

std::optional<int> readSeatDigit(std::string_view body) {
    if (body.empty() || body.front() < '0' || body.front() >= '0' + kSeats) {
        return std::nullopt;
    }
    return body.front() - '0';
}

std::vector<std::string> readFields(std::string_view body) {
    std::vector<std::string> fields;
    for (std::size_t end; (end = body.find(kFieldEnd)) != std::string_view::npos;) {
        fields.emplace_back(body.substr(0, end));
        body.remove_prefix(end + 1);
    }
    return fields;
}

int countFields(std::string_view body) {
    return static_cast<int>(std::count(body.begin(), body.end(), kFieldEnd));
}

}  // namespace packwise
