#include "sets/mtgjson.h"

#include "sets/jsonstream.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <string_view>

namespace packwise::sets {

namespace {

// What the reader is inside of. A Level is the whole file, its "data", or a set in the "data" of
// the file of all sets: any of them can turn out to be the set.
enum class In {
    Level,
    Cards,
    Card,
    CardList,
    Booster,
    Kind,
    Configurations,
    Configuration,
    Contents,
    Sheets,
    Sheet,
    SheetCards,
    Skipped
};

constexpr std::size_t kDeepest = 64;
constexpr std::size_t kSetLevels = 3;

constexpr std::pair<std::string_view, std::string MtgFace::*> kTexts[] = {
    {"uuid", &MtgFace::uuid},           {"name", &MtgFace::name},
    {"faceName", &MtgFace::faceName},   {"asciiName", &MtgFace::asciiName},
    {"layout", &MtgFace::layout},       {"side", &MtgFace::side},
    {"number", &MtgFace::number},       {"rarity", &MtgFace::rarity},
    {"manaCost", &MtgFace::manaCost},   {"type", &MtgFace::type},
    {"text", &MtgFace::text},           {"power", &MtgFace::power},
    {"toughness", &MtgFace::toughness}, {"loyalty", &MtgFace::loyalty},
    {"defense", &MtgFace::loyalty},
};

constexpr std::pair<std::string_view, std::vector<std::string> MtgFace::*> kLists[] = {
    {"colors", &MtgFace::colors},
    {"supertypes", &MtgFace::supertypes},
    {"types", &MtgFace::types},
    {"otherFaceIds", &MtgFace::otherFaceIds},
    {"boosterTypes", &MtgFace::boosterTypes},
};

template <typename Table>
auto fieldOf(const Table& table, const std::string& key) {
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [&](const auto& row) { return row.first == key; });
    return found == std::end(table) ? nullptr : found->second;
}

class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
public:
    explicit Handler(const MtgQuery& query) : query_(query) {}

    bool Null() { return true; }
    bool Bool(bool value) {
        if (where() == In::Sheet && key_ == "foil") {
            booster().sheets.back().foil = value;
        }
        return true;
    }
    bool Int(int value) { return number(value); }
    bool Uint(unsigned value) { return number(value); }
    bool Int64(std::int64_t value) { return number(static_cast<double>(value)); }
    bool Uint64(std::uint64_t value) { return number(static_cast<double>(value)); }
    bool Double(double value) { return number(value); }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        if (where() == In::Level) {
            if (key_ == "name") {
                level().set.name.assign(text, size);
            } else if (key_ == "code" && level().set.code.empty()) {
                level().set.code.assign(text, size);
            }
        } else if (where() == In::Card && text_) {
            (face_.*text_).assign(text, size);
        } else if (where() == In::CardList) {
            (face_.*list_).emplace_back(text, size);
        }
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        if (where() != In::Skipped) {
            key_.assign(text, size);
        }
        if (where() == In::Card) {
            text_ = fieldOf(kTexts, key_);
            list_ = fieldOf(kLists, key_);
        }
        return true;
    }
    bool StartObject() { return enter(objectIn()); }
    bool StartArray() { return enter(arrayIn()); }
    bool EndObject(rapidjson::SizeType) {
        const In ended = where();
        path_.pop_back();
        if (ended == In::Card && query_.wantsFace(face_)) {
            level().set.faces.push_back(std::move(face_));
        } else if (ended == In::Level) {
            Open last = std::move(level());
            levels_.pop_back();
            if (last.hasCards) {
                query_.take(std::move(last.set));
            }
        }
        return true;
    }
    bool EndArray(rapidjson::SizeType) {
        path_.pop_back();
        return true;
    }

private:
    struct Open {
        MtgSet set;
        bool hasCards = false;
    };

    In where() const { return path_.empty() ? In::Skipped : path_.back(); }
    Open& level() { return levels_.back(); }
    MtgBooster& booster() { return level().set.boosters.back(); }

    bool enter(In next) {
        path_.push_back(next);
        return path_.size() <= kDeepest;
    }

    In objectIn() {
        if (path_.empty()) {
            return openLevel({});
        }
        switch (where()) {
            case In::Level:
                return objectInLevel();
            case In::Cards:
                face_ = MtgFace();
                text_ = nullptr;
                list_ = nullptr;
                return In::Card;
            case In::Booster:
                level().set.boosters.push_back({key_, {}, {}});
                return In::Kind;
            case In::Kind:
                return key_ == "sheets" ? In::Sheets : In::Skipped;
            case In::Configurations:
                booster().configurations.emplace_back();
                return In::Configuration;
            case In::Configuration:
                return key_ == "contents" ? In::Contents : In::Skipped;
            case In::Sheets:
                booster().sheets.push_back({key_, false, {}});
                return In::Sheet;
            case In::Sheet:
                return key_ == "cards" ? In::SheetCards : In::Skipped;
            default:
                return In::Skipped;
        }
    }

    In objectInLevel() {
        if (key_ == "booster") {
            return In::Booster;
        }
        if (levels_.size() == 1) {
            return key_ == "data" ? openLevel({}) : In::Skipped;
        }
        const bool holdsSets = levels_.size() < kSetLevels && !level().hasCards;
        return holdsSets && query_.wantsSet(key_) ? openLevel(key_) : In::Skipped;
    }

    In openLevel(const std::string& code) {
        levels_.emplace_back();
        level().set.code = code;
        return In::Level;
    }

    In arrayIn() {
        if (where() == In::Level && key_ == "cards") {
            level().hasCards = true;
            return In::Cards;
        }
        if (where() == In::Card && list_) {
            (face_.*list_).clear();
            return In::CardList;
        }
        return where() == In::Kind && key_ == "boosters" ? In::Configurations : In::Skipped;
    }

    bool number(double value) {
        if (where() == In::Configuration && key_ == "weight") {
            booster().configurations.back().weight = value;
        } else if (where() == In::Contents) {
            booster().configurations.back().contents.emplace_back(key_, value);
        } else if (where() == In::SheetCards) {
            booster().sheets.back().cards.emplace_back(key_, value);
        }
        return true;
    }

    const MtgQuery& query_;
    std::vector<In> path_;
    std::vector<Open> levels_;
    std::string key_;
    MtgFace face_;
    std::string MtgFace::*text_ = nullptr;
    std::vector<std::string> MtgFace::*list_ = nullptr;
};

std::string reasonOf(const rapidjson::ParseResult& result) {
    if (result.Code() == rapidjson::kParseErrorTermination) {
        return "is nested more than " + std::to_string(kDeepest) + " deep";
    }
    std::string reason = rapidjson::GetParseError_En(result.Code());
    if (reason.ends_with('.')) {
        reason.pop_back();
    }
    return reason;
}

}  // namespace

std::vector<Fault> readMtgJson(QIODevice& file, const MtgQuery& query) {
    JsonStream stream(file, query.progress);
    Handler handler(query);
    rapidjson::Reader reader;
    const rapidjson::ParseResult result =
        reader.Parse<rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag>(
            stream, handler);
    if (stream.failed()) {
        return {{"cannot be read to its end: " + file.errorString().toStdString(), {}}};
    }
    if (result.IsError() && stream.atEnd() && stream.Tell() == result.Offset()) {
        return {{"the file breaks off; fetch it again", "byte " + std::to_string(stream.Tell())}};
    }
    if (result.IsError() || !stream.atEnd()) {
        const std::string reason =
            result.IsError() ? reasonOf(result) : std::string("A zero byte stands in the text");
        return {{"this is no JSON (" + reason + "); fetch the file again",
                 "byte " + std::to_string(result.IsError() ? result.Offset() : stream.Tell())}};
    }
    return {};
}

}  // namespace packwise::sets
