#include "app/frmmain.h"

#include "platform/look.h"
#include "platform/twips.h"

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 2400;
constexpr int kHeight = 1455;
constexpr int kButtonHeight = kHeight / 3;

}  // namespace

FrmMain::FrmMain(Shell& shell)
    : Form(u"frmMain"_s, u"Packwise 1.41"_s, FormBorder::Fixed), shell_(shell) {
    setClientSizeTwips(kWidth, kHeight);
    const auto makeButton = [this](const QString& name, const QString& caption,
                                   const QRect& place) {
        auto* button = new QPushButton(caption, this);
        nameControl(*button, name);
        button->setGeometry(place);
        button->setAutoDefault(true);
        return button;
    };
    const auto inColumn = [](int row) {
        return rectFromTwips(0, row * kButtonHeight, kWidth, kButtonHeight);
    };
    cmdDummy = makeButton(u"cmdDummy"_s, QString(), rectFromTwips(2520, 1080, 255, 255));
    cmdClient = makeButton(u"cmdClient"_s, u"&connect to a draft"_s, inColumn(0));
    cmdServer = makeButton(u"cmdServer"_s, u"&start a draft"_s, inColumn(1));
    cmdAbout = makeButton(u"cmdAbout"_s, u"&about Packwise"_s, inColumn(2));
    cmdDummy->setFocus();

    connect(cmdClient, &QPushButton::clicked, this, &FrmMain::clientWanted);
    connect(cmdServer, &QPushButton::clicked, this, &FrmMain::serverWanted);
    connect(cmdAbout, &QPushButton::clicked, this, &FrmMain::aboutWanted);
}

bool FrmMain::queryUnload(UnloadMode) {
    shell_.end();
    return true;
}

}  // namespace packwise
