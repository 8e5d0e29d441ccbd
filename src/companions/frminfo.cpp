#include "companions/frminfo.h"

#include "platform/codepage.h"
#include "protocol/framing.h"
#include "widgets/look.h"
#include "widgets/shape.h"
#include "widgets/twips.h"

#include <QDesktopServices>
#include <QEventLoop>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QUrl>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// Twips.
constexpr int kAboutWidth = 5400;
constexpr int kAboutHeight = 4050;
constexpr int kLeft = 360;
constexpr int kInner = kAboutWidth - 2 * kLeft;

struct Band {
    int top;
    int height;
};
constexpr Band kPackwise{270, 720};
constexpr Band kVersion{990, 300};
constexpr Band kStuff{1380, 255};
constexpr Band kNotice{1800, 780};
constexpr Band kCredits{2730, 540};
constexpr Band kSiteLink{3420, 300};
constexpr int kLines[] = {1710, 2655, 3345};

void setColor(QWidget& control, const QColor& color) {
    QPalette colors = control.palette();
    colors.setColor(QPalette::WindowText, color);
    control.setPalette(colors);
}

}  // namespace

FrmInfo::FrmInfo(Shell&)
    : Form(u"frmInfo"_s, QString(), FormBorder::None),
      lblPackwise(addLabel(u"lblPackwise"_s, u"Packwise"_s)),
      lblVersion(
          addLabel(u"lblVersion"_s, u"Version "_s + fromBytes(kProtocolVersion) + u" beta"_s)),
      lblStuff(addLabel(u"lblStuff"_s, u"hold on, stay inside."_s)),
      Label1(addLabel(u"Label1"_s,
                      u"Magic: the Gathering, its artwork, its edition names and the texts of its "
                      u"cards belong to the publisher of the game. Packwise has no part in it."_s)),
      Label2(addLabel(u"Label2"_s,
                      u"Made by people who like to draft, for friends who draft "
                      u"together."_s)),
      lblSiteLink(addLabel(u"lblSiteLink"_s, QString::fromUtf16(kWebPage))) {
    setAccessibleName(u"About Packwise"_s);
    setWindowModality(Qt::ApplicationModal);
    QPalette paper = palette();
    paper.setColor(QPalette::Window, Qt::white);
    setPalette(paper);
    layOut();
    lblSiteLink->setCursor(Qt::PointingHandCursor);
}

QLabel* FrmInfo::addLabel(const QString& name, const QString& text) {
    auto* label = new QLabel(text, this);
    nameControl(*label, name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->installEventFilter(this);
    return label;
}

void FrmInfo::layOut() {
    setClientSizeTwips(kAboutWidth, kAboutHeight);
    auto* outline = new Shape(ShapeKind::Rectangle, this);
    outline->setFilled(false);
    outline->setBorderColor(QColor(160, 160, 160));
    outline->setGeometry(rect());
    outline->lower();
    for (const int top : kLines) {
        auto* line = new QWidget(this);
        line->setAutoFillBackground(true);
        line->setPalette(QPalette(QColor(200, 200, 200)));
        placeControl(*line, {kLeft, top, kInner, kTwipsPerPixel});
    }
    const std::pair<QLabel*, Band> places[] = {{lblPackwise, kPackwise}, {lblVersion, kVersion},
                                               {lblStuff, kStuff},       {Label1, kNotice},
                                               {Label2, kCredits},       {lblSiteLink, kSiteLink}};
    for (const auto& [label, place] : places) {
        placeControl(*label, {kLeft, place.top, kInner, place.height});
    }
    QFont font = lblPackwise->font();
    font.setPixelSize(36);
    font.setBold(true);
    lblPackwise->setFont(font);
    font.setPixelSize(13);
    lblVersion->setFont(font);
    setColor(*lblVersion, QColor(214, 108, 0));
    lblStuff->setFont(fixedPitchFont(12));
    font = lblSiteLink->font();
    font.setUnderline(true);
    lblSiteLink->setFont(font);
    setColor(*lblSiteLink, QColor(0, 0, 238));
    // Only the words open the page.
    lblSiteLink->setWordWrap(false);
    lblSiteLink->resize(lblSiteLink->sizeHint().width(), lblSiteLink->height());
}

void FrmInfo::showModally() {
    if (isVisible()) {
        present();
        return;
    }
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
    QEventLoop wait;
    connect(this, &FrmInfo::hidden, &wait, &QEventLoop::quit);
    present();
    wait.exec();
}

void FrmInfo::hideEvent(QHideEvent* event) {
    Form::hideEvent(event);
    Q_EMIT hidden();
}

bool FrmInfo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick) {
        return true;  // its first press has done what there is to do
    }
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    if (!isPress && event->type() != QEvent::MouseButtonRelease) {
        return Form::eventFilter(watched, event);
    }
    struct Handler {
        QLabel* label;
        void (FrmInfo::*mouseDown)();
        void (FrmInfo::*click)();
    };
    const Handler handlers[] = {{lblPackwise, &FrmInfo::lblPackwise_MouseDown, nullptr},
                                {lblVersion, &FrmInfo::lblVersion_MouseDown, nullptr},
                                {lblStuff, nullptr, &FrmInfo::lblStuff_Click},
                                {Label1, nullptr, &FrmInfo::Label1_Click},
                                {Label2, nullptr, &FrmInfo::Label2_Click},
                                {lblSiteLink, &FrmInfo::lblSiteLink_MouseDown, nullptr}};
    for (const Handler& one : handlers) {
        if (watched != one.label) {
            continue;
        }
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const bool isOver = one.label->rect().contains(mouse->position().toPoint());
        const auto handle = isPress ? one.mouseDown : one.click;
        if (handle && isOver) {
            (this->*handle)();
        }
    }
    // A press that went on to the window would be one on its background.
    return true;
}

void FrmInfo::mousePressEvent(QMouseEvent* event) {
    event->accept();
    Form_MouseDown();
}

void FrmInfo::Form_MouseDown() {
    hide();
}

void FrmInfo::lblPackwise_MouseDown() {
    hide();
}

void FrmInfo::lblVersion_MouseDown() {
    hide();
}

void FrmInfo::lblStuff_Click() {
    hide();
}

void FrmInfo::Label1_Click() {
    hide();
}

void FrmInfo::Label2_Click() {
    hide();
}

void FrmInfo::lblSiteLink_MouseDown() {
    QDesktopServices::openUrl(QUrl(QString::fromUtf16(kWebPage)));
}

}  // namespace packwise
