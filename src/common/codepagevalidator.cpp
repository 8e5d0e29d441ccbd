#include "common/codepagevalidator.h"

#include "common/codepage.h"

namespace packwise {

QValidator::State CodePageValidator::validate(QString& input, int&) const {
    return fitsCodePage(input) ? Acceptable : Invalid;
}

}  // namespace packwise
