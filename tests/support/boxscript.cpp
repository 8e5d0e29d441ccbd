#include "support/boxscript.h"

namespace packwise {

BoxScript::BoxScript(MessageBoxes& boxes) : boxes_(boxes) {
    boxes_.setHook([this](const Box& box) { return answer(box); });
}

BoxScript::~BoxScript() {
    boxes_.setHook({});
    for (const Expected& missing : expected_) {
        ADD_FAILURE() << "the box never came: " << missing.text.toStdString();
    }
}

void BoxScript::expect(const QString& text, bool answer, std::function<void()> meanwhile) {
    expected_.push_back({text, answer, std::move(meanwhile)});
}

bool BoxScript::answer(const Box& box) {
    seen_.push_back(box);
    if (expected_.empty()) {
        ADD_FAILURE() << "unexpected box: " << box.text.toStdString();
        return false;
    }
    const Expected next = expected_.front();
    expected_.pop_front();
    EXPECT_EQ(next.text.toStdString(), box.text.toStdString());
    if (next.meanwhile) {
        next.meanwhile();
    }
    return next.answer;
}

}  // namespace packwise
