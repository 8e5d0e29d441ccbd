#include "sets/writer.h"

#include "sets/cardfile.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>

namespace packwise::sets {

namespace fs = std::filesystem;

namespace {

fs::path beside(const fs::path& file, const char* ending) {
    fs::path other = file;
    other += ending;
    return other;
}

// A new file next to the one it is to replace. Unless it is put in place it vanishes.
class NewFile {
public:
    NewFile(fs::path target, const std::string& bytes)
        : target_(std::move(target)), path_(beside(target_, ".new")) {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        good_ = !out.fail();
    }
    ~NewFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool good() const { return good_; }
    const fs::path& path() const { return path_; }
    const fs::path& target() const { return target_; }
    std::error_code putInPlace() {
        std::error_code error;
        fs::rename(path_, target_, error);
        return error;
    }

private:
    fs::path target_;
    fs::path path_;
    bool good_ = false;
};

// What takes the place of a set's order file, or takes it away.
using OrderStep = std::function<std::error_code()>;

// Puts the card file in place; when the step with the order file fails it is taken back.
std::error_code putBothInPlace(NewFile& first, const OrderStep& second) {
    const fs::path kept = beside(first.target(), ".old");
    std::error_code error;
    const bool hadOld = fs::exists(first.target(), error);
    if (hadOld) {
        fs::copy_file(first.target(), kept, fs::copy_options::overwrite_existing, error);
        if (error) {
            std::error_code ignored;
            fs::remove(kept, ignored);  // a full disk leaves a part of it
            return error;
        }
    }
    error = first.putInPlace();
    std::error_code undone;
    if (!error) {
        error = second();
        if (error && hadOld) {
            fs::rename(kept, first.target(), undone);
        } else if (error) {
            fs::remove(first.target(), undone);
        }
    }
    fs::remove(kept, undone);
    return error;
}

}  // namespace

bool readWhole(const fs::path& file, std::string& bytes) {
    std::error_code error;
    std::ifstream in(file, std::ios::binary);
    if (!fs::is_regular_file(file, error) || !in) {
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(in), {});
    return !in.bad();
}

WriteResult writeSetFiles(const SetSource& source, const fs::path& folder, std::string& error) {
    const fs::path cardFile = setFilePath(folder, source.displayName, kCardFileExtension);
    const fs::path orderFile = setFilePath(folder, source.displayName, kOrderFileExtension);
    const std::string cardBytes = cardFileBytes(source);
    const std::string orderBytes = orderFileBytes(source.order.value_or(OrderFile{}));
    NewFile cards(cardFile, cardBytes);
    NewFile order(orderFile, orderBytes);
    if (!cards.good() || !order.good()) {
        error = "cannot write into the folder " + folder.string() + "; is it full or protected?";
        return WriteResult::Failed;
    }
    const bool hasOrder = source.order && readOrderFile(order.path());
    std::string before;
    const bool sameOrder =
        hasOrder ? readWhole(orderFile, before) && before == orderBytes : !fs::exists(orderFile);
    if (sameOrder && readWhole(cardFile, before) && before == cardBytes) {
        return WriteResult::UpToDate;
    }
    const std::error_code failed = putBothInPlace(cards, [&] {
        std::error_code wrong;
        if (hasOrder) {
            return order.putInPlace();
        }
        fs::remove(orderFile, wrong);
        return wrong;
    });
    if (failed) {
        error = "cannot be put in place: " + failed.message();
        return WriteResult::Failed;
    }
    return hasOrder ? WriteResult::Written : WriteResult::WrittenWithoutOrder;
}

}  // namespace packwise::sets
