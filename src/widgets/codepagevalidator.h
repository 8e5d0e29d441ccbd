// Keeps characters outside the code page from being typed.
#pragma once

#include <QValidator>

class QLineEdit;
class QWidget;

namespace packwise {

class CodePageValidator : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int& position) const override;
};

// Keeps characters outside the code page out of a text box, and says so in a tool tip at the box
// when one is refused.
void acceptCodePageOnly(QLineEdit& box);

// That tool tip, for a box with a filter of its own.
void tellOutsideCodePage(QWidget& box);

}  // namespace packwise
