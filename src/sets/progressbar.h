// How far a long reading has come.
#pragma once

#include <QTextStream>

#include <cstdint>

namespace packwise::sets {

// Draws on a terminal, for files that take a while, and vanishes when it is destroyed.
class ProgressBar {
public:
    ProgressBar(QTextStream& stream, std::int64_t total, bool onTerminal);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void show(std::int64_t done);

private:
    QTextStream& stream_;
    std::int64_t total_;
    bool drawn_;
    std::int64_t shown_ = -1;  // per cent
};

}  // namespace packwise::sets
