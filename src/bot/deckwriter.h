// Puts a player's deck on the disk.
#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace packwise {

// A deck that stands on the disk.
struct SavedDeck {
    QString path;
    std::int32_t code = 0;
};

// Writes a .dec file of that deck into the folder, under a name that no file there has, made from
// the time and the player's name. The file stands complete or not at all. Gives what stands there,
// or in a line why nothing does.
std::variant<SavedDeck, QString> writeDeck(const QString& folder, std::string_view player,
                                           const QDateTime& now,
                                           const std::vector<std::string>& deck,
                                           const std::vector<std::string>& sideboard);

}  // namespace packwise
