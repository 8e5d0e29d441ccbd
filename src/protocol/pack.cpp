#include "protocol/pack.h"

#include "protocol/framing.h"

#include <algorithm>

namespace packwise {

std::optional<Pack> Pack::read(std::string_view text) {
    Pack pack;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(kFieldEnd, start)) != std::string_view::npos;
         start = end + 1) {
        if (end - start < kShortestToken || ++pack.size_ > kMostCardsInPack) {
            return std::nullopt;
        }
    }
    if (start != text.size()) {
        return std::nullopt;
    }
    pack.text_ = text;
    return pack;
}

std::size_t Pack::startOf(int row) const {
    std::size_t start = 0;
    for (; row > 0; --row) {
        start = text_.find(kFieldEnd, start) + 1;
    }
    return start;
}

std::string_view Pack::card(int row) const {
    const std::size_t start = startOf(row);
    return std::string_view(text_).substr(start, text_.find(kFieldEnd, start) - start);
}

std::vector<std::string> Pack::cards() const {
    return readFields(text_);
}

void Pack::add(std::string_view token) {
    text_ += token;
    text_ += kFieldEnd;
    ++size_;
}

void Pack::remove(int row) {
    const std::size_t start = startOf(row);
    text_.erase(start, text_.find(kFieldEnd, start) + 1 - start);
    --size_;
}

Pack Pack::without(int row) const {
    Pack rest = *this;
    rest.remove(row);
    return rest;
}

std::string_view Pack::cardLessIn(const Pack& rest) const {
    if (rest.size_ + 1 != size_) {
        return {};
    }
    // Clients keep the order, so that one card is cut out of the text.
    const std::string_view whole = text_;
    const std::string_view less = rest.text_;
    const auto differ = std::mismatch(less.begin(), less.end(), whole.begin(), whole.end()).first;
    std::size_t start = static_cast<std::size_t>(differ - less.begin());
    start = start == 0 ? 0 : whole.rfind(kFieldEnd, start - 1) + 1;
    const std::size_t cut = whole.find(kFieldEnd, start) + 1;
    if (less.substr(start) == whole.substr(cut)) {
        return whole.substr(start, cut - 1 - start);
    }
    Pack left = *this;
    for (const std::string& token : rest.cards()) {
        int row = 0;
        while (row < left.size() && left.card(row) != token) {
            ++row;
        }
        if (row == left.size()) {
            return {};
        }
        left.remove(row);
    }
    int row = 0;
    while (card(row) != left.card(0)) {
        ++row;
    }
    return card(row);
}

}  // namespace packwise
