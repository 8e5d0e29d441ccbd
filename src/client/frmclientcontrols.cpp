// The controls of the draft client and their places.
#include "client/cardlist.h"
#include "client/colorbars.h"
#include "client/elidedlabel.h"
#include "client/frmclient.h"
#include "client/passingarrow.h"
#include "widgets/look.h"
#include "widgets/twips.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// All places in twips, within the window or the frame.
constexpr TwipRect kStatusFrame{0, 0, 3360, 645};
constexpr TwipRect kLight{135, 225, 195, 195};
constexpr TwipRect kStatus{450, 120, 2850, 405};

constexpr TwipRect kDraftArea{0, 0, 5775, 6870};
constexpr TwipRect kRound{60, 600, 750, 360};
constexpr TwipRect kDraftButton{60, 975, 750, 2610};
constexpr TwipRect kPack{1050, 600, 2250, 2985};
constexpr TwipRect kFirstDot{870, 645, 135, 135};
constexpr int kDotStep = CardList::kRowHeight * kTwipsPerPixel;

constexpr TwipRect kSort{3375, 45, 840, 270};
constexpr TwipRect kColorsCaption{4215, 75, 645, 240};
constexpr TwipRect kInfo{4905, 45, 825, 270};
constexpr TwipRect kColorsFrame{3540, 360, 1920, 135};
constexpr TwipRect kPicked{3360, 600, 2295, 2985};

constexpr TwipRect kBooster{0, 3600, 3255, 1215};
constexpr TwipRect kArrow{1380, 340, 480, 480};
constexpr int kSeatSize = 135;
constexpr int kNameHeight = 255;
struct BoosterPlace {
    int seatLeft, seatTop;
    int nameLeft, nameTop, nameWidth;
    Qt::AlignmentFlag alignment;
};
constexpr std::array<BoosterPlace, kSeats> kBoosterRing{{
    {1440, 855, 120, 840, 1215, Qt::AlignRight},
    {1200, 630, 120, 600, 975, Qt::AlignRight},
    {1200, 390, 120, 360, 975, Qt::AlignRight},
    {1440, 150, 120, 120, 1215, Qt::AlignRight},
    {1680, 150, 1920, 120, 1335, Qt::AlignLeft},
    {1920, 390, 2160, 360, 1095, Qt::AlignLeft},
    {1920, 630, 2160, 600, 1095, Qt::AlignLeft},
    {1680, 855, 1920, 840, 1335, Qt::AlignLeft},
}};

constexpr TwipRect kRoch{0, 3600, 5655, 3135};
constexpr TwipRect kTick{2640, 1200, 705, 510};
constexpr TwipRect kHistory{120, 2640, 5535, 480};
constexpr TwipRect kOk{5280, 3600, 495, 345};
constexpr int kRingWidth = 2295;
constexpr int kLastPickHeight = 285;
struct RochPlace {
    int left, nameTop, pickTop;
};
constexpr std::array<RochPlace, kSeats> kRochRing{{
    {600, 120, 360},
    {3000, 120, 360},
    {3360, 720, 960},
    {3360, 1320, 1560},
    {3000, 1920, 2160},
    {600, 1920, 2160},
    {120, 1320, 1560},
    {120, 720, 960},
}};

constexpr int kRoundFontPixels = 16;
constexpr int kTickFontPixels = 24;

QString element(const QString& array, std::size_t index) {
    return array + u'(' + QString::number(index) + u')';
}

QFrame* makeFrame(const QString& name, const TwipRect& place, QWidget* parent) {
    auto* frame = new QFrame(parent);
    placeControl(*frame, place, name);
    return frame;
}

Shape* makeCircle(const QString& name, const TwipRect& place, QWidget* parent) {
    auto* circle = new Shape(ShapeKind::Circle, parent);
    placeControl(*circle, place, name);
    return circle;
}

QTimer* makeTimer(const QString& name, int interval, QObject* parent) {
    auto* timer = new QTimer(parent);
    timer->setObjectName(name);
    timer->setInterval(interval);
    return timer;
}

}  // namespace

void FrmClient::makeControls() {
    fraDraft_ = makeFrame(u"fraDraft"_s, kDraftArea, this);
    makeStatus();
    makePicked(fraDraft_);
    makePack(fraDraft_);
    makeBooster(fraDraft_);
    makeRochester(fraDraft_);
    makeTimers();
    fraDraft_->hide();
    for (QWidget* next : {static_cast<QWidget*>(cmdDraft), static_cast<QWidget*>(lstPack),
                          static_cast<QWidget*>(lstPicked), static_cast<QWidget*>(lstPickedNS),
                          static_cast<QWidget*>(cmdOK)}) {
        next->setFocusPolicy(Qt::StrongFocus);
    }
    setTabOrder(chkSort, fraColors);
    setTabOrder(fraColors, chkInfo);
    setTabOrder(chkInfo, cmdDraft);
    setTabOrder(cmdDraft, lstPack);
    setTabOrder(lstPack, lstPicked);
    setTabOrder(lstPicked, lstPickedNS);
    setTabOrder(lstPickedNS, cmdOK);
}

void FrmClient::makeStatus() {
    fraStatus = makeFrame(u"fraStatus"_s, kStatusFrame, this);
    shaLight = makeCircle(u"shaLight"_s, kLight, fraStatus);
    shaLight->setAccessibleName(u"Link"_s);
    lblStatus = new ElidedLabel(fraStatus);
    placeControl(*lblStatus, kStatus, u"lblStatus"_s);
    lblStatus->setText(u"Connecting..."_s);
}

void FrmClient::makePack(QWidget* draft) {
    lblRound = new ElidedLabel(draft);
    QFont large = font();
    large.setPixelSize(kRoundFontPixels);
    large.setBold(true);
    lblRound->setFont(large);
    lblRound->setAlignment(Qt::AlignCenter);
    placeControl(*lblRound, kRound, u"lblRound"_s);

    cmdDraft = new QPushButton(u"&Draft"_s, draft);
    cmdDraft->setAutoDefault(true);
    placeControl(*cmdDraft, kDraftButton, u"cmdDraft"_s);

    lstPack = new CardList(draft);
    lstPack->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    placeControl(*lstPack, kPack, u"lstPack"_s, u"Pack"_s);

    for (std::size_t row = 0; row < shaDot.size(); ++row) {
        TwipRect place = kFirstDot;
        place.top += static_cast<int>(row) * kDotStep;
        shaDot[row] = makeCircle(element(u"shaDot"_s, row), place, draft);
        shaDot[row]->setAccessibleName(u"Colour of card "_s + QString::number(row + 1));
        shaDot[row]->setBordered(false);
        shaDot[row]->setFilled(false);
        shaDot[row]->setFillColor(shade::noDot);
    }
}

void FrmClient::makePicked(QWidget* draft) {
    chkSort = new QCheckBox(u"Sort"_s, draft);
    chkSort->setChecked(true);
    placeControl(*chkSort, kSort, u"chkSort"_s);

    lblStuff = new QLabel(u"colors"_s, draft);
    lblStuff->setAlignment(Qt::AlignCenter);
    placeControl(*lblStuff, kColorsCaption, u"lblStuff"_s);

    chkInfo = new QCheckBox(u"Info"_s, draft);
    placeControl(*chkInfo, kInfo, u"chkInfo"_s);

    fraColors = new ColorBars(draft);
    placeControl(*fraColors, kColorsFrame, u"fraColors"_s, u"Colors shown"_s);
    shaBar = fraColors->bars;
    lblStuff->setBuddy(fraColors);

    Shape1 = new Shape(ShapeKind::Rectangle, draft);
    Shape1->setFilled(false);
    Shape1->setBorderColor(palette().color(QPalette::Mid));
    placeControl(*Shape1, kPicked, u"Shape1"_s);

    lstPicked = new CardList(draft);
    placeControl(*lstPicked, kPicked, u"lstPicked"_s, u"Picked cards"_s);
    lstPicked->addItem(u" "_s);

    lstPickedNS = new CardList(draft);
    placeControl(*lstPickedNS, kPicked, u"lstPickedNS"_s, u"Picked cards, newest first"_s);
    lstPickedNS->hide();
}

void FrmClient::makeBooster(QWidget* draft) {
    fraBooster = makeFrame(u"fraBooster"_s, kBooster, draft);
    imgCW = new PassingArrow(true, fraBooster);
    imgCCW = new PassingArrow(false, fraBooster);
    placeControl(*imgCW, kArrow, u"imgCW"_s);
    placeControl(*imgCCW, kArrow, u"imgCCW"_s);
    imgCW->hide();
    for (std::size_t position = 0; position < kBoosterRing.size(); ++position) {
        const BoosterPlace& place = kBoosterRing[position];
        shaSeat[position] =
            makeCircle(element(u"shaSeat"_s, position),
                       {place.seatLeft, place.seatTop, kSeatSize, kSeatSize}, fraBooster);
        auto* name = new ElidedLabel(fraBooster);
        name->setAlignment(place.alignment | Qt::AlignVCenter);
        placeControl(*name, {place.nameLeft, place.nameTop, place.nameWidth, kNameHeight},
                     element(u"lblNameB"_s, position));
        lblNameB[position] = name;
        colorSeat(position, shade::emptySeat);
    }
}

void FrmClient::makeRochester(QWidget* draft) {
    fraRoch = makeFrame(u"fraRoch"_s, kRoch, draft);
    for (std::size_t position = 0; position < kRochRing.size(); ++position) {
        const RochPlace& place = kRochRing[position];
        lblNameR[position] = new ElidedLabel(fraRoch);
        placeControl(*lblNameR[position], {place.left, place.nameTop, kRingWidth, kNameHeight},
                     element(u"lblNameR"_s, position));
        auto* pick = new QLineEdit(fraRoch);
        pick->setEnabled(false);
        pick->setFont(lstPack->font());
        QPalette readable = pick->palette();
        readable.setColor(QPalette::Disabled, QPalette::Text, shade::black);
        pick->setPalette(readable);
        placeControl(*pick, {place.left, place.pickTop, kRingWidth, kLastPickHeight},
                     element(u"txtLastPick"_s, position),
                     u"Last pick at place "_s + QString::number(position + 1));
        txtLastPick[position] = pick;
    }
    lblTick = new QLabel(fraRoch);
    lblTick->setFont(fixedPitchFont(kTickFontPixels, true));
    lblTick->setEnabled(false);
    placeControl(*lblTick, kTick, u"lblTick"_s);
    setTick(0);

    lstHistory = new CardList(fraRoch);
    lstHistory->setShowOnly();
    lstHistory->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    placeControl(*lstHistory, kHistory, u"lstHistory"_s, u"Last events"_s);
    lstHistory->fill(2, u" "_s);
    fraRoch->hide();

    cmdOK = new QPushButton(u"&OK"_s, draft);
    cmdOK->setAutoDefault(true);
    placeControl(*cmdOK, kOk, u"cmdOK"_s);
    cmdOK->hide();
}

void FrmClient::makeTimers() {
    tmrMisc = makeTimer(u"tmrMisc"_s, 1000, this);
    tmrClose = makeTimer(u"tmrClose"_s, 500, this);
    tmrClose->setSingleShot(true);
    tmrSilence = makeTimer(u"tmrSilence"_s, 1000, this);
    tmrRoch = makeTimer(u"tmrRoch"_s, 1000, this);
    tmrReview = makeTimer(u"tmrReview"_s, 1000, this);
}

void FrmClient::connectControls() {
    connect(wskClient, &Socket::dataArrival, this, &FrmClient::wskClient_DataArrival);
    connect(wskClient, &Socket::peerClosed, this, &FrmClient::wskClient_Close);
    connect(wskClient, &Socket::failed, this, &FrmClient::wskClient_Error);
    connect(tmrMisc, &QTimer::timeout, this, &FrmClient::tmrMisc_Timer);
    connect(tmrClose, &QTimer::timeout, this, &FrmClient::tmrClose_Timer);
    connect(tmrSilence, &QTimer::timeout, this, &FrmClient::tmrSilence_Timer);
    connect(tmrRoch, &QTimer::timeout, this, &FrmClient::tmrRoch_Timer);
    connect(tmrReview, &QTimer::timeout, this, &FrmClient::tmrReview_Timer);
    connect(this, &Form::gotFocus, this, &FrmClient::Form_GotFocus);
    connect(this, &Form::lostFocus, this, &FrmClient::Form_LostFocus);

    connect(cmdDraft, &QPushButton::clicked, this, &FrmClient::cmdDraft_Click);
    connect(lstPack, &CardList::chosen, this, &FrmClient::lstPack_DblClick);
    connect(lstPack, &CardList::mouseDown, this, &FrmClient::lstPack_MouseDown);
    connect(lstPack, &CardList::lookedAt, this, &FrmClient::lstPack_MouseDown);
    connect(chkInfo, &QCheckBox::toggled, this, &FrmClient::chkInfo_Click);
    connect(chkSort, &QCheckBox::toggled, this, &FrmClient::chkSort_Click);
    connect(fraColors, &ColorBars::mouseDown, this, &FrmClient::fraColors_MouseDown);
    connect(lstPicked, &CardList::mouseDown, this, &FrmClient::lstPicked_MouseDown);
    connect(lstPicked, &CardList::lookedAt, this, &FrmClient::lstPicked_MouseDown);
    connect(cmdOK, &QPushButton::clicked, this, &FrmClient::cmdOK_Click);
}

}  // namespace packwise
