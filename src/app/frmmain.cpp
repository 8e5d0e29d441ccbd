#include "app/frmmain.h"

#include "widgets/look.h"
#include "widgets/twips.h"

#include <QDir>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kStartWidth = 2400;
constexpr int kStartHeight = 1455;
constexpr int kLargeButtonHeight = kStartHeight / 3;

}  // namespace

FrmMain::FrmMain(Shell& shell)
    : Form(u"frmMain"_s, programTitle(), FormBorder::Fixed), shell_(shell) {
    setClientSizeTwips(kStartWidth, kStartHeight);
    const auto makeButton = [this](const QString& name, const QString& caption,
                                   const TwipRect& place) {
        auto* button = new QPushButton(caption, this);
        placeControl(*button, place, name);
        button->setAutoDefault(true);
        return button;
    };
    const auto inColumn = [](int row) {
        // Up to the next one's pixel, so that rounding leaves no gap between them.
        const int top = toPixels(row * kLargeButtonHeight);
        const int bottom = toPixels((row + 1) * kLargeButtonHeight);
        return TwipRect{0, toTwips(top), kStartWidth, toTwips(bottom - top)};
    };
    cmdDummy = makeButton(u"cmdDummy"_s, QString(), {2520, 1080, 255, 255});
    cmdClient = makeButton(u"cmdClient"_s, u"&connect to a draft"_s, inColumn(0));
    cmdServer = makeButton(u"cmdServer"_s, u"&start a draft"_s, inColumn(1));
    cmdAbout = makeButton(u"cmdAbout"_s, u"&about Packwise"_s, inColumn(2));
    cmdDummy->setAccessibleName(u"Join or host a draft"_s);
    cmdDummy->setFocus();
    const QString cards = u"Card sets: "_s + QDir::toNativeSeparators(QDir::currentPath());
    cmdServer->setToolTip(plainToolTip(cards));
    cmdServer->setAccessibleDescription(cards);

    connect(cmdClient, &QPushButton::clicked, this, &FrmMain::cmdClient_Click);
    connect(cmdServer, &QPushButton::clicked, this, &FrmMain::cmdServer_Click);
    connect(cmdAbout, &QPushButton::clicked, this, &FrmMain::cmdAbout_Click);
}

bool FrmMain::queryUnload(UnloadMode) {
    shell_.end();
    return true;
}

}  // namespace packwise
