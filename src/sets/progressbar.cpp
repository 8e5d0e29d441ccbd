#include "sets/progressbar.h"

#include <QString>

namespace packwise::sets {

namespace {

constexpr std::int64_t kLongFile = std::int64_t{1} << 24;
constexpr int kWidth = 50;

}  // namespace

ProgressBar::ProgressBar(QTextStream& stream, std::int64_t total, bool onTerminal)
    : stream_(stream), total_(total), drawn_(onTerminal && total >= kLongFile) {}

ProgressBar::~ProgressBar() {
    if (shown_ >= 0) {
        stream_ << '\r' << QString(kWidth + 8, u' ') << '\r';
        stream_.flush();
    }
}

void ProgressBar::show(std::int64_t done) {
    const std::int64_t percent = drawn_ ? done * 100 / total_ : -1;
    if (percent == shown_) {
        return;
    }
    shown_ = percent;
    const auto filled = static_cast<qsizetype>(percent * kWidth / 100);
    stream_ << "\r[" << QString(filled, u'#').leftJustified(kWidth) << "] " << percent << " %";
    stream_.flush();
}

}  // namespace packwise::sets
