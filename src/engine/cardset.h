// Card set files: from a display name to its files, and the readers of both formats. Text is bytes
// in Windows-1252.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

inline constexpr std::string_view kCardFileExtension = ".pw";
inline constexpr std::string_view kOrderFileExtension = ".ord";
inline constexpr std::size_t kMostCardsInPool = 256;
// A pack of the longest tokens still fits into one message with room to spare.
inline constexpr std::size_t kMostTokenBytes = 4000;
// The colours of cards, one letter each, which is the first of a card's token.
inline constexpr std::string_view kTokenColors = "BUGRWAML";

// The base name of a set's files: the display name without blanks, cut to 8 characters.
std::string setFileBase(std::string_view displayName);

// The path of a set's file in `folder`: as spelled, else the only regular file whose name differs
// in case alone. When there is none, the path as spelled, which will not open.
std::filesystem::path setFilePath(const std::filesystem::path& folder, std::string_view displayName,
                                  std::string_view extension);

// Whether setFilePath() finds a file.
bool hasSetFile(const std::filesystem::path& folder, std::string_view displayName,
                std::string_view extension);

struct CardRecord {
    std::string name;
    std::string rarity;  // "-", "=", "+" or "." in a sound file
    std::string color;
    std::string cost;
    std::string type;
    std::string text;
    std::string pt;
};

// The pools of a set as the dealer sees them, in the order in which a pack is dealt.
enum class Pool { Rare, Uncommon, Common };

struct CardPools {
    std::array<int, 3> counts{};                       // by Pool: cards in one pack
    std::array<std::vector<std::string>, 3> tokens{};  // by Pool: card tokens in file order
};

// The dealer's reading of a .pw file. Nothing when it cannot be opened, is empty or damaged, larger
// than 64 MiB, holds more than kMostCardsInPool cards of a mark, one without a name or whose colour
// is none of kTokenColors or whose token is longer than kMostTokenBytes, asks for no card or more
// than kMostCardsInPack, or cannot fill its pack.
std::optional<CardPools> readCardPools(const std::filesystem::path& file);

// The popup's scan of a .pw file: the record of that name, else the END record, else a record with
// a bad mark in a damaged file. Nothing when the file cannot be opened.
std::optional<CardRecord> scanForCard(const std::filesystem::path& file, std::string_view name);

struct OrderFile {
    std::array<int, 3> counts{};                      // first, second, third list
    std::array<std::vector<std::string>, 3> lists{};  // card tokens, line by line
};

// An order file. Nothing when it cannot be opened, is empty, or cannot be dealt from.
std::optional<OrderFile> readOrderFile(const std::filesystem::path& file);

}  // namespace packwise
