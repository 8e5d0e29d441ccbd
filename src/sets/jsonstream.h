// An open file as RapidJSON reads it, block by block.
#pragma once

#include <QIODevice>

#include <array>
#include <cstddef>
#include <functional>

namespace packwise::sets {

class JsonStream {
public:
    using Ch = char;

    JsonStream(QIODevice& file, std::function<void(qint64)> progress)
        : file_(file), progress_(std::move(progress)) {
        fill();
        if (end_ >= 3 && block_[0] == '\xEF' && block_[1] == '\xBB' && block_[2] == '\xBF') {
            at_ = 3;
        }
    }

    // 0 at the end of the file.
    char Peek() const { return at_ < end_ ? block_[at_] : '\0'; }
    char Take() {
        const char c = Peek();
        if (at_ < end_ && ++at_ == end_) {
            fill();
        }
        return c;
    }
    std::size_t Tell() const { return before_ + at_; }
    bool atEnd() const { return at_ == end_; }
    bool failed() const { return failed_; }

    // For writing in place, which never happens.
    char* PutBegin() { return nullptr; }
    void Put(char) {}
    void Flush() {}
    std::size_t PutEnd(char*) { return 0; }

private:
    void fill() {
        before_ += end_;
        const qint64 got = file_.read(block_.data(), static_cast<qint64>(block_.size()));
        failed_ = failed_ || got < 0;
        end_ = got > 0 ? static_cast<std::size_t>(got) : 0;
        at_ = 0;
        if (progress_) {
            progress_(static_cast<qint64>(before_));
        }
    }

    QIODevice& file_;
    std::function<void(qint64)> progress_;
    std::array<char, std::size_t{1} << 18> block_{};
    std::size_t before_ = 0;  // bytes ahead of the block
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    bool failed_ = false;
};

}  // namespace packwise::sets
