// Whole drafts of players against the server's own flows, without sockets.
#include "bot/deckplan.h"
#include "bot/fakelink.h"
#include "engine/dealing.h"
#include "engine/fakehost.h"
#include "engine/samplefiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>

namespace packwise {
namespace {

// A set of all colours in which each card stands for its colour, rarity and cost.
std::string colorfulSet() {
    const auto field = [](std::string_view text) {
        return sample::number16(static_cast<int>(text.size())) + std::string(text);
    };
    std::string bytes = sample::header(1, 3, 11);
    for (const auto& [mark, cards] : {std::pair('+', 25), std::pair('=', 40), std::pair('-', 80)}) {
        for (int i = 0; i < cards; ++i) {
            const std::string color(1, kColorLetters[static_cast<std::size_t>(i) % kManaColors]);
            const std::string cost = std::to_string(i % 6) + color;
            for (const std::string& text :
                 {sample::nameOf(mark, i), std::string(1, mark), color, cost,
                  std::string(i % 3 ? "Creature" : "Sorcery"), std::string(), std::string()}) {
                bytes += field(text);
            }
        }
    }
    return bytes + sample::end();
}

class Table : public FakeHost {
public:
    Table(int players, int packs, const std::filesystem::path& folder)
        : FakeHost(players, packs), folder_(folder), book_(folder) {
        keepSent = false;
        for (int i = 0; i < players; ++i) {
            links.push_back(std::make_unique<FakeLink>());
            seats.push_back(
                std::make_unique<Player>(*links.back(), book_, static_cast<std::uint64_t>(i), 0));
            seats.back()->begin("P" + std::to_string(i));
            inbox_.push_back("HELO" + std::to_string(i + 1) + "~");
        }
        for (int i = 0; i < players; ++i) {
            broadcast("NAME" + std::to_string(i) + "P" + std::to_string(i) + "~");
            broadcast("SEAT" + std::to_string(i) + std::to_string(i) + "~");
        }
    }

    void send(int socket, std::string_view data) override {
        inbox_[static_cast<std::size_t>(socket - 1)] += data;
    }
    void broadcast(std::string_view data) override {
        for (std::string& box : inbox_) {
            box += data;
        }
    }
    std::optional<std::string> makePack(int) override {
        const auto pack = randomPack(folder_, "Colours", [this] {
            return static_cast<double>(random_() >> 11U) / 9007199254740992.0;
        });
        for (const std::string& token : readFields(*pack)) {
            dealt.insert(token.substr(1));
        }
        return pack;
    }

    // Carries bytes in pieces of any length until nobody says anything more.
    void run() {
        for (bool busy = true; busy;) {
            busy = false;
            for (std::size_t i = 0; i < seats.size(); ++i) {
                const std::size_t size =
                    std::min<std::size_t>(inbox_[i].size(), 1 + random_() % 90);
                const std::string piece = inbox_[i].substr(0, size);
                inbox_[i].erase(0, size);
                seats[i]->receive(piece);
                elapse(*seats[i], *links[i]);
                busy = busy || size > 0;
                MessageSplitter said;
                said.append(links[i]->take());
                while (const auto message = said.next()) {
                    if (message->starts_with("CODE")) {
                        ++codes;
                    }
                    receive(static_cast<int>(i) + 1, *message);
                }
            }
        }
    }

    std::vector<std::unique_ptr<FakeLink>> links;
    std::vector<std::unique_ptr<Player>> seats;
    std::multiset<std::string> dealt;
    int codes = 0;

private:
    std::filesystem::path folder_;
    CardBook book_;
    std::mt19937 random_{11};
    std::vector<std::string> inbox_;
};

TEST(WholeDraft, EndsWithADeckForEachPlayerInBothFormats) {
    const sample::TempFolder folder;
    folder.write("Colours.pw", colorfulSet());
    struct Case {
        bool booster;
        int players;
    };
    for (const Case& c :
         {Case{true, 8}, Case{true, 1}, Case{false, 8}, Case{false, 3}, Case{false, 1}}) {
        Table table(c.players, 3, folder.path());
        table.broadcast("PAKSColours|Colours|Colours||||~");
        table.broadcast(c.booster ? "INFOB~" : "INFOR05~");
        c.booster ? table.booster.begin() : table.rochester.begin();
        table.run();
        EXPECT_TRUE(table.over);
        EXPECT_EQ(table.codes, c.players);

        std::multiset<std::string> placed;
        for (const auto& link : table.links) {
            ASSERT_EQ(link->deck.size(), 40U);
            std::set<char> colors;
            int spells = 0;
            for (const std::string& name : link->deck) {
                const bool isLand =
                    std::find(kBasicLands.begin(), kBasicLands.end(), name) != kBasicLands.end();
                if (!isLand) {
                    ++spells;
                    placed.insert(name);
                    const int number = std::stoi(name.substr(name.rfind(' ')));
                    colors.insert(kColorLetters[static_cast<std::size_t>(number) % kManaColors]);
                }
            }
            placed.insert(link->sideboard.begin(), link->sideboard.end());
            EXPECT_EQ(spells, 23);
            EXPECT_LE(colors.size(), 2U) << "of " << c.players << " players";
        }
        EXPECT_EQ(placed, table.dealt);
    }
}

}  // namespace
}  // namespace packwise
