// Keeps characters outside the code page from being typed.
#pragma once

#include <QValidator>

namespace packwise {

class CodePageValidator : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int& position) const override;
};

}  // namespace packwise
