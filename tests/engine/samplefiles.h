// Card files for tests and benchmarks, made on the spot in a folder that goes away again.
#pragma once

#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace packwise::sample {

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        path_ = std::filesystem::temp_directory_path() /
                ("packwise-heart-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directory(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};

inline std::string number16(int value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

inline std::string header(int rares, int uncommons, int commons) {
    return number16(rares) + number16(uncommons) + number16(commons);
}

inline std::string record(std::string_view name, std::string_view rarity,
                          std::string_view color = "U", std::string_view text = "Text.") {
    std::string bytes;
    for (const std::string_view field :
         {name, rarity, color, std::string_view("1U"), std::string_view("Creature"), text,
          std::string_view("1/1")}) {
        bytes += number16(static_cast<int>(field.size()));
        bytes += field;
    }
    return bytes;
}

inline std::string end(std::string_view rarity = ".") {
    return record("END", rarity, "");
}

inline std::string nameOf(char mark, int i) {
    static constexpr std::array<const char*, 4> kNames = {"Lantern", "Harbour", "Thicket", "Ember"};
    return std::string(mark == '+'   ? "Old "
                       : mark == '=' ? "Grey "
                                     : "Small ") +
           kNames.at(static_cast<std::size_t>(i % 4)) + ' ' + std::to_string(100 + i);
}

// A whole .pw file of 22 rares, 36 uncommons and 66 commons, 15 cards to a pack.
inline std::string wholeSet() {
    const std::string rules(120, 'x');
    std::string bytes = header(1, 3, 11);
    for (const auto& [mark, cards] : {std::pair('+', 22), std::pair('=', 36), std::pair('-', 66)}) {
        for (int i = 0; i < cards; ++i) {
            bytes += record(nameOf(mark, i), std::string(1, mark), "U", rules);
        }
    }
    return bytes + record("Plain Land", ".", "L") + end();
}

// An order file for wholeSet(): three lists of 121 lines.
inline std::string wholeOrder(std::string_view lineEnd = "\r\n") {
    std::string text = "11,3,1" + std::string(lineEnd) + "121,121,121" + std::string(lineEnd);
    for (const auto& [mark, cards] : {std::pair('-', 66), std::pair('=', 36), std::pair('+', 22)}) {
        for (int i = 0; i < 121; ++i) {
            text += "U" + nameOf(mark, i % cards) + std::string(lineEnd);
        }
    }
    return text;
}

}  // namespace packwise::sample
