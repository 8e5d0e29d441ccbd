// Answers message boxes for a test: it records each box, and fails the test on one that it does
// not expect instead of hanging.
#pragma once

#include "support/test.h"
#include "widgets/messageboxes.h"

namespace packwise {

class BoxScript {
public:
    explicit BoxScript(MessageBoxes& boxes);
    ~BoxScript();  // fails the test if an expected box has not come

    BoxScript(const BoxScript&) = delete;
    BoxScript& operator=(const BoxScript&) = delete;

    // The next box must have this text; it is answered OK or Yes (true) or No. `meanwhile` runs
    // while the box is open.
    void expect(const QString& text, bool answer = true, std::function<void()> meanwhile = {});

    const std::vector<Box>& seen() const { return seen_; }
    const Box& last() const { return seen_.back(); }

private:
    struct Expected {
        QString text;
        bool answer;
        std::function<void()> meanwhile;
    };

    bool answer(const Box& box);

    MessageBoxes& boxes_;
    std::deque<Expected> expected_;
    std::vector<Box> seen_;
};

}  // namespace packwise
