#include "widgets/messageboxes.h"

#include "platform/codepage.h"
#include "protocol/framing.h"

#include <QMessageBox>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

QString programTitle() {
    return u"Packwise "_s + fromBytes(kProtocolVersion);
}

void MessageBoxes::setHook(Hook hook) {
    hook_ = std::move(hook);
}

bool MessageBoxes::show(QWidget* parent, const Box& box) {
    if (hook_) {
        return hook_(box);
    }
    QMessageBox dialog(
        box.icon == BoxIcon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon, box.title,
        box.text, QMessageBox::NoButton, parent);
    dialog.setTextFormat(Qt::PlainText);
    if (box.buttons == BoxButtons::YesNo) {
        dialog.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        // Every question here is about giving something up.
        dialog.setEscapeButton(QMessageBox::No);
        dialog.setDefaultButton(QMessageBox::No);
        return dialog.exec() == QMessageBox::Yes;
    }
    dialog.setStandardButtons(QMessageBox::Ok);
    dialog.exec();
    return true;
}

void MessageBoxes::error(QWidget* parent, const QString& text) {
    show(parent, Box{text, u"Error"_s, BoxButtons::Ok, BoxIcon::Exclamation});
}

}  // namespace packwise
