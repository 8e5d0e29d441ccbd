#include "console/reachpanel.h"

#include "platform/reachwords.h"
#include "widgets/look.h"
#include "widgets/shell.h"
#include "widgets/twips.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Twips.
constexpr int kWidth = 3210;
constexpr int kButtonWidth = 660;
constexpr int kCancelWidth = 825;
constexpr int kGap = 30;
constexpr int kTextWidth = kWidth - kButtonWidth - kGap;
constexpr int kRowHeight = 345;
constexpr int kSecondTop = 390;

// The longest address and port fit.
constexpr int kTextPixels = 11;

// What a fault is in a few words; the whole sentence is behind cmdWhy.
QString fewWords(RouterAnswer::Kind kind) {
    switch (kind) {
        case RouterAnswer::Refused:
            return u"The router refuses"_s;
        case RouterAnswer::BehindAnother:
            return u"Behind another router"_s;
        default:
            return u"No router answers"_s;
    }
}

}  // namespace

ReachPanel::ReachPanel(Shell& shell, QWidget* parent) : QWidget(parent), shell_(shell) {
    makeControls();
    hide();
    connect(cmdCopyAddress, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(address_); });
    connect(cmdCopyOutside, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(outside_); });
    connect(cmdLetIn, &QPushButton::clicked, this, [this] {
        showRow(Row::Asking);
        cmdCancel->setFocus();
        Q_EMIT routerWanted();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        Q_EMIT routerUnwanted();
        showRow(Row::Press);
        cmdLetIn->setFocus();
    });
    connect(cmdWhy, &QPushButton::clicked, this, &ReachPanel::why);
}

void ReachPanel::makeControls() {
    const auto button = [this](const QString& name, const QString& caption, const QString& spoken) {
        auto* made = new QPushButton(caption, this);
        nameControl(*made, name, spoken);
        made->setAutoDefault(true);
        return made;
    };
    const auto text = [this](const QString& name, const QString& spoken) {
        auto* made = new QLabel(this);
        nameControl(*made, name, spoken);
        made->setTextFormat(Qt::PlainText);
        QFont font = made->font();
        font.setPixelSize(kTextPixels);
        made->setFont(font);
        made->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        made->setFocusPolicy(Qt::StrongFocus);  // a screen reader says what has it
        return made;
    };
    lblAddress = text(u"lblAddress"_s, u"Address in this network"_s);
    cmdCopyAddress = button(u"cmdCopyAddress"_s, u"Copy"_s, u"Copy the address"_s);
    cmdLetIn = button(u"cmdLetIn"_s, u"Let friends in from the Internet"_s, {});
    barAsking = new QProgressBar(this);
    nameControl(*barAsking, u"barAsking"_s, u"Asking the router"_s);
    barAsking->setRange(0, 0);
    cmdCancel = button(u"cmdCancel"_s, u"Cancel"_s, u"Stop asking the router"_s);
    lblOutside = text(u"lblOutside"_s, u"Address on the Internet"_s);
    cmdCopyOutside = button(u"cmdCopyOutside"_s, u"Copy"_s, u"Copy the address on the Internet"_s);
    cmdWhy = button(u"cmdWhy"_s, u"Why?"_s, u"Why friends on the Internet cannot come in"_s);

    const int right = kWidth - kButtonWidth;
    placeControl(*lblAddress, {0, 0, kTextWidth, kRowHeight});
    placeControl(*cmdCopyAddress, {right, 0, kButtonWidth, kRowHeight});
    placeControl(*cmdLetIn, {0, kSecondTop, kWidth, kRowHeight});
    placeControl(*barAsking, {0, kSecondTop, kWidth - kCancelWidth - kGap, kRowHeight});
    placeControl(*cmdCancel, {kWidth - kCancelWidth, kSecondTop, kCancelWidth, kRowHeight});
    placeControl(*lblOutside, {0, kSecondTop, kTextWidth, kRowHeight});
    for (QWidget* each : {cmdCopyOutside, cmdWhy}) {
        placeControl(*each, {right, kSecondTop, kButtonWidth, kRowHeight});
    }
    cmdLetIn->setToolTip(
        plainToolTip(u"Asks the router of this network to open the port until Packwise ends."_s));
}

void ReachPanel::present(quint16 port, const QList<OwnAddress>& addresses) {
    port_ = port;
    address_ = addresses.isEmpty() ? QString() : addresses.constFirst().address;
    cmdCopyAddress->setEnabled(!address_.isEmpty());
    cmdLetIn->setEnabled(!address_.isEmpty());
    showText(*lblAddress, address_.isEmpty() ? u"No network here"_s : placeOf(address_, port),
             wordsFor(addresses, u"Friends"_s, u" port %1"_s.arg(port)));
    showRow(Row::Press);
    setEnabled(true);
    show();
}

void ReachPanel::dismiss() {
    if (barAsking->isVisibleTo(this)) {
        Q_EMIT routerUnwanted();
    }
    hide();
    setEnabled(false);
}

void ReachPanel::showText(QLabel& label, const QString& text, const QString& tip) const {
    label.setText(label.fontMetrics().elidedText(text, Qt::ElideRight, label.width()));
    label.setToolTip(plainToolTip(tip));
    label.setAccessibleDescription(tip);
}

void ReachPanel::showRow(Row row) {
    cmdLetIn->setVisible(row == Row::Press);
    barAsking->setVisible(row == Row::Asking);
    cmdCancel->setVisible(row == Row::Asking);
    lblOutside->setVisible(row == Row::Open || row == Row::Fault);
    cmdCopyOutside->setVisible(row == Row::Open);
    cmdWhy->setVisible(row == Row::Fault);
}

void ReachPanel::showAnswer(const RouterAnswer& answer) {
    answer_ = answer;
    const bool hadFocus = cmdCancel->hasFocus();
    const bool isOpen = answer.kind == RouterAnswer::Open;
    const QString sentence = wordsFor(answer, address_, port_);
    showText(*lblOutside,
             isOpen ? placeOf(answer.outsideAddress, answer.outsidePort) : fewWords(answer.kind),
             sentence);
    outside_ = answer.outsideAddress;
    if (answer.outsidePort != port_) {
        outside_ += u':' + QString::number(answer.outsidePort);
    }
    showRow(isOpen ? Row::Open : Row::Fault);
    if (hadFocus) {
        (isOpen ? cmdCopyOutside : cmdWhy)->setFocus();
    }
}

void ReachPanel::why() {
    shell_.boxes().show(window(), Box{wordsFor(answer_, address_, port_), programTitle()});
    if (!shell_.ended() && cmdWhy->isVisible()) {
        showRow(Row::Press);
        cmdLetIn->setFocus();
    }
}

}  // namespace packwise
