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

bool Pack::isLessOneOf(const Pack& before) const {
    if (size_ + 1 != before.size_) {
        return false;
    }
    // Clients keep the order, so that one card is cut out of the text.
    const auto differ =
        std::mismatch(text_.begin(), text_.end(), before.text_.begin(), before.text_.end()).first;
    std::size_t start = static_cast<std::size_t>(differ - text_.begin());
    start = start == 0 ? 0 : before.text_.rfind(kFieldEnd, start - 1) + 1;
    const std::size_t cut = before.text_.find(kFieldEnd, start) + 1;
    if (std::string_view(text_).substr(start) == std::string_view(before.text_).substr(cut)) {
        return true;
    }
    std::vector<std::string> mine = cards();
    std::vector<std::string> theirs = before.cards();
    std::sort(mine.begin(), mine.end());
    std::sort(theirs.begin(), theirs.end());
    return std::includes(theirs.begin(), theirs.end(), mine.begin(), mine.end());
}

}  // namespace packwise
