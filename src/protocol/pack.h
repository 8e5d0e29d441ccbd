// A pack: card tokens, each one colour letter and the card's name. Text is bytes in Windows-1252.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

inline constexpr int kMostCardsInPack = 15;
inline constexpr std::size_t kShortestToken = 2;  // a card's colour letter and its name

class Pack {
public:
    Pack() = default;

    // The pack of a pack string: tokens, each followed by "|", and nothing else. Nothing for any
    // other text, for a token that is too short and for more than kMostCardsInPack.
    static std::optional<Pack> read(std::string_view text);

    // The pack string.
    const std::string& text() const { return text_; }
    int size() const { return size_; }
    bool empty() const { return size_ == 0; }

    // The token of a row, 0 to size() - 1. The view lives as long as the pack is not changed.
    std::string_view card(int row) const;
    std::vector<std::string> cards() const;

    // Adds a token, which holds no "|", at the end.
    void add(std::string_view token);
    // Takes the card of a row, 0 to size() - 1, out.
    void remove(int row);
    Pack without(int row) const;

    // The one card that stands here and not in `rest`, whatever the order; empty where `rest` is
    // anything but this pack less one card. The view lives as long as the pack is not changed.
    std::string_view cardLessIn(const Pack& rest) const;

    friend bool operator==(const Pack&, const Pack&) = default;

private:
    std::size_t startOf(int row) const;

    std::string text_;
    int size_ = 0;
};

}  // namespace packwise
