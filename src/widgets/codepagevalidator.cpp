#include "widgets/codepagevalidator.h"

#include "platform/codepage.h"

#include <QLineEdit>
#include <QToolTip>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QValidator::State CodePageValidator::validate(QString& input, int&) const {
    return fitsCodePage(input) ? Acceptable : Invalid;
}

void acceptCodePageOnly(QLineEdit& box) {
    box.setValidator(new CodePageValidator(&box));
    QObject::connect(&box, &QLineEdit::inputRejected, &box, [&box] {
        // In a full box it is the length that was refused.
        if (box.text().size() < box.maxLength()) {
            tellOutsideCodePage(box);
        }
    });
}

void tellOutsideCodePage(QWidget& box) {
    QToolTip::showText(box.mapToGlobal(QPoint(0, box.height())),
                       u"Only letters of Western European languages can be sent"_s, &box);
}

}  // namespace packwise
