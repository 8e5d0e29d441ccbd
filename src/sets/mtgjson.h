// Reads MTGJSON version 5: the file of one set, with its envelope or bare, and the file of all
// sets. The file is read as a stream; what nobody asked for is passed over as it comes. Text is
// UTF-8 as it stands there.
#pragma once

#include "sets/setsource.h"

#include <QIODevice>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace packwise::sets {

// One face of a card.
struct MtgFace {
    std::string uuid;
    std::string name;  // of both faces, "A // B", when there are two
    std::string faceName;
    std::string asciiName;
    std::string layout;
    std::string side;  // "a", "b" and so on, or empty
    std::string number;
    std::string rarity;
    std::string manaCost;
    std::string type;
    std::string text;
    std::string power;
    std::string toughness;
    std::string loyalty;  // or defense
    std::vector<std::string> colors;
    std::vector<std::string> supertypes;
    std::vector<std::string> types;
    std::vector<std::string> otherFaceIds;
    std::vector<std::string> boosterTypes;
};

struct MtgSheet {
    std::string name;
    bool foil = false;
    std::vector<std::pair<std::string, double>> cards;  // uuid and weight
};

struct MtgConfiguration {
    std::vector<std::pair<std::string, double>> contents;  // sheet and count
    double weight = 0;
};

struct MtgBooster {
    std::string kind;  // "default", "draft" and so on
    std::vector<MtgConfiguration> configurations;
    std::vector<MtgSheet> sheets;
};

struct MtgSet {
    std::string name;
    std::string code;  // its key in the file of all sets, else its own
    std::vector<MtgFace> faces;
    std::vector<MtgBooster> boosters;  // in the order of the file
};

struct MtgQuery {
    // Whether a set of the file of all sets is wanted.
    std::function<bool(const std::string& code)> wantsSet;
    // Whether a face is kept.
    std::function<bool(const MtgFace&)> wantsFace;
    // Takes every set that was read; the file of one set gives one whose code may be empty.
    std::function<void(MtgSet)> take;
    // Told now and then how many bytes have been read. May be empty.
    std::function<void(qint64)> progress;
};

// Reads an open file to its end. The fault tells where the JSON breaks off or is none; sets that
// were taken before are not to be used then.
std::vector<Fault> readMtgJson(QIODevice& file, const MtgQuery& query);

}  // namespace packwise::sets
