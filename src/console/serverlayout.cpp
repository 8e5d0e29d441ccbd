// The console's controls: what they are, where they stand, and how they reach their handlers.
#include "console/frmserver.h"
#include "protocol/messages.h"
#include "widgets/codepagevalidator.h"
#include "widgets/look.h"
#include "widgets/twips.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGroupBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStandardItemModel>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kConsoleWidth = 8640;
constexpr int kConsoleHeight = 6480;

// The rows of fraPacks and of lstNames.
constexpr int kPackTop = 360;
constexpr int kPackStep = 420;
constexpr int kNameLeft = 5250;
constexpr int kNameTop = 930;
constexpr int kNameWidth = 3210;
constexpr int kNameStep = 300;
constexpr int kLightLeft = 4980;
constexpr int kLightSize = 165;

template <class T>
T* make(QWidget* parent, const QString& name, const QString& caption) {
    auto* control = new T(caption, parent);
    control->setObjectName(name);
    return control;
}

QLineEdit* makeTextBox(QWidget* parent, const QString& name, const QString& spoken, int length) {
    auto* box = new QLineEdit(parent);
    nameControl(*box, name, spoken);
    box->setMaxLength(length);
    box->setFont(fixedPitchFont());
    acceptCodePageOnly(*box);
    return box;
}

}  // namespace

void FrmServer::makeControls() {
    lblPortQ = make<QLabel>(this, u"lblPortQ"_s, u"Port"_s);
    txtPort = makeTextBox(this, u"txtPort"_s, u"Port"_s, 4);
    txtPort->setText(u"5252"_s);
    lblPortQ->setBuddy(txtPort);
    cmdOpenPort = make<QPushButton>(this, u"cmdOpenPort"_s, u"&Listen"_s);
    cmdOpenPort->setDefault(true);
    chkClient = make<QCheckBox>(this, u"chkClient"_s, u"Run &Client :"_s);
    chkClient->setChecked(true);
    txtName = makeTextBox(this, u"txtName"_s, u"Name"_s, 12);
    makeDraftFrame();
    makePacksFrame();
    makeSeatControls();
    cmdStart = make<QPushButton>(this, u"cmdStart"_s, u"Start Draft"_s);
    cmdStart->setEnabled(false);
    Image1 = make<QLabel>(this, u"Image1"_s, {});
    Image1->setAccessibleName(u"Packwise"_s);
    Image1->setPixmap(windowIcon().pixmap(32, 32));
    // Enter presses the button that has the focus before the window's default one.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(true);
    }
}

void FrmServer::makeDraftFrame() {
    fraDraft = make<QGroupBox>(this, u"fraDraft"_s, u"Draft Info"_s);
    optBooster = make<QRadioButton>(fraDraft, u"optBooster"_s, u"&Booster"_s);
    optBooster->setChecked(true);
    optRochester = make<QRadioButton>(fraDraft, u"optRochester"_s, u"&Rochester"_s);
    chkTimed = make<QCheckBox>(fraDraft, u"chkTimed"_s, u"&Timed"_s);
    chkTimed->setChecked(true);
    vsbSecs = new QScrollBar(Qt::Vertical, fraDraft);
    nameControl(*vsbSecs, u"vsbSecs"_s, u"Seconds for a pick"_s);
    vsbSecs->setRange(0, to_client::Info::kMostSeconds - 1);
    vsbSecs->setPageStep(5);
    vsbSecs->setValue(25);
    vsbSecs->setFocusPolicy(Qt::StrongFocus);
    lblSecs = make<QLabel>(fraDraft, u"lblSecs"_s, u"5"_s);
    lblSecs->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblSecs->setToolTip(u"Seconds for a pick"_s);
    lblSecs->setBuddy(vsbSecs);
    chkFixSeats = make<QCheckBox>(fraDraft, u"chkFixSeats"_s, u"&Fix Seats"_s);
    chkReal = make<QCheckBox>(fraDraft, u"chkReal"_s, u"Try &real packs"_s);
    optBooster_Click();
}

void FrmServer::makePacksFrame() {
    fraPacks = make<QGroupBox>(this, u"fraPacks"_s, u"Packs"_s);
    sets_ = new QStandardItemModel(this);
    for (int i = 0; i < kMostPacks; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i >= 2) {
            optPack[at] = make<QRadioButton>(fraPacks, u"optPack(%1)"_s.arg(i), {});
            optPack[at]->setAccessibleName(u"%1 packs"_s.arg(i + 1));
            optPack[at]->setToolTip(u"%1 packs"_s.arg(i + 1));
        }
        cboPack[at] = new SetBox(fraPacks);
        cboPack[at]->setModel(sets_);
        nameControl(*cboPack[at], u"cboPack(%1)"_s.arg(i), u"Pack %1"_s.arg(i + 1));
        cboPack[at]->setEnabled(i < 3);
    }
    optPack[2]->setChecked(true);
}

void FrmServer::makeSeatControls() {
    lstNames = new ListBox(this);
    nameControl(*lstNames, u"lstNames"_s, u"Players"_s);
    lstNames->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstNames->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstNames->setTextElideMode(Qt::ElideRight);
    lstNames->fill(kSeats, u" "_s);
    for (int i = 0; i < kSeats; ++i) {
        lstNames->item(i)->setSizeHint(QSize(1, toPixels(kNameStep)));
        auto* light = new Shape(ShapeKind::Circle, this);
        nameControl(*light, u"shaLight(%1)"_s.arg(i), u"Light of player %1"_s.arg(i + 1));
        light->setFillColor(shade::red);
        light->hide();
        shaLight[static_cast<std::size_t>(i)] = light;
    }
    cmdKick = make<QPushButton>(this, u"cmdKick"_s, u"&Kick"_s);
    cmdPing = make<QPushButton>(this, u"cmdPing"_s, u"&Ping"_s);
    cmdPing->setEnabled(false);
    txtPing = makeTextBox(this, u"txtPing"_s, u"Seconds of the ping"_s, 4);
    txtPing->setFont(fixedPitchFont(13, true));
    txtPing->setAlignment(Qt::AlignCenter);
    txtPing->setEnabled(false);
    chkHalt = make<QCheckBox>(this, u"chkHalt"_s, u"&Halt on drop"_s);
    chkSilence = make<QCheckBox>(this, u"chkSilence"_s, u"&Silence"_s);
    reach = new ReachPanel(shell_, this);
    reach->setObjectName(u"reach"_s);
}

void FrmServer::placeControls() {
    setClientSizeTwips(kConsoleWidth, kConsoleHeight);
    placeControl(*lblPortQ, {180, 180, 510, 390});
    placeControl(*txtPort, {735, 180, 840, 390});
    placeControl(*cmdOpenPort, {1740, 180, 1380, 390});
    placeControl(*chkClient, {180, 705, 1500, 390});
    placeControl(*txtName, {1740, 705, 1980, 390});
    placeControl(*fraDraft, {180, 1245, 4560, 2040});
    placeControl(*fraPacks, {180, 3390, 4560, 2940});
    placeControl(*Image1, {7980, 180, 480, 480});
    placeControl(*lstNames, {kNameLeft, kNameTop, kNameWidth, kSeats * kNameStep + 30});
    placeControl(*cmdKick, {5250, 3495, 1200, 390});
    placeControl(*cmdPing, {6525, 3495, 1200, 390});
    placeControl(*txtPing, {7800, 3495, 660, 390});
    placeControl(*chkHalt, {5250, 4080, 3210, 330});
    placeControl(*chkSilence, {5250, 4440, 3210, 330});
    placeControl(*reach, {5250, 4800, 3210, 795});
    placeControl(*cmdStart, {5250, 5610, 3210, 720});
    placeControl(*optBooster, {180, 390, 1800, 330});
    placeControl(*optRochester, {180, 765, 1800, 330});
    placeControl(*chkTimed, {2280, 390, 1200, 330});
    placeControl(*lblSecs, {2280, 765, 1050, 330});
    placeControl(*vsbSecs, {3600, 390, 300, 1440});
    placeControl(*chkFixSeats, {180, 1140, 1950, 330});
    placeControl(*chkReal, {180, 1515, 1950, 330});
    for (int i = 0; i < kSeats; ++i) {
        const int middle = kNameTop + 15 + i * kNameStep + kNameStep / 2;
        placeControl(*shaLight[static_cast<std::size_t>(i)],
                     {kLightLeft, middle - kLightSize / 2, kLightSize, kLightSize});
    }
    for (int i = 0; i < kMostPacks; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const int top = kPackTop + i * kPackStep;
        placeControl(*cboPack[at], {525, top, 3855, 375});
        if (optPack[at]) {
            placeControl(*optPack[at], {180, top + 22, 315, 330});
        }
    }
}

void FrmServer::makeTimers() {
    const auto make = [this](const QString& name, int milliseconds) {
        auto* timer = new QTimer(this);
        timer->setObjectName(name);
        timer->setInterval(milliseconds);
        return timer;
    };
    tmrPoke = make(u"tmrPoke"_s, 1000);
    tmrPing = make(u"tmrPing"_s, 1000);
    tmrRandoms = make(u"tmrRandoms"_s, 2000);
    tmrTurns = make(u"tmrTurns"_s, 0);
    // A coarse timer may be late by a twentieth.
    tmrPoke->setTimerType(Qt::PreciseTimer);
    tmrRandoms->setTimerType(Qt::PreciseTimer);
    connect(tmrPoke, &QTimer::timeout, this, &FrmServer::tmrPoke_Timer);
    connect(tmrPing, &QTimer::timeout, this, &FrmServer::tmrPing_Timer);
    connect(tmrRandoms, &QTimer::timeout, this, &FrmServer::tmrRandoms_Timer);
    connect(tmrTurns, &QTimer::timeout, this, &FrmServer::tmrTurns_Timer);
    tmrPoke->start();
}

void FrmServer::makeSockets() {
    for (int i = 0; i < static_cast<int>(wskServer.size()); ++i) {
        auto* socket = new Socket(this);
        socket->setObjectName(u"wskServer(%1)"_s.arg(i));
        connect(socket, &Socket::connectionRequest, this,
                [this, i](ConnectionRequest& request) { wskServer_ConnectionRequest(i, request); });
        connect(socket, &Socket::dataArrival, this, [this, i] { wskServer_DataArrival(i); });
        connect(socket, &Socket::peerClosed, this, [this, i] { wskServer_Close(i); });
        wskServer[static_cast<std::size_t>(i)] = socket;
    }
}

void FrmServer::connectControls() {
    connect(cmdOpenPort, &QPushButton::clicked, this, &FrmServer::cmdOpenPort_Click);
    connect(cmdStart, &QPushButton::clicked, this, &FrmServer::cmdStart_Click);
    connect(reach, &ReachPanel::routerWanted, this,
            [this] { routerPort_.open(wskServer[0]->localPort()); });
    connect(reach, &ReachPanel::routerUnwanted, &routerPort_, &RouterPort::close);
    connect(&routerPort_, &RouterPort::answered, reach, &ReachPanel::showAnswer);
    connect(&routerPort_, &RouterPort::changed, reach, &ReachPanel::showAnswer);
    connect(cmdKick, &QPushButton::clicked, this, &FrmServer::cmdKick_Click);
    connect(cmdPing, &QPushButton::clicked, this, &FrmServer::cmdPing_Click);
    optRochester->installEventFilter(this);
    chkReal->installEventFilter(this);
    cmdStart->installEventFilter(this);
    connect(chkClient, &QCheckBox::toggled, this, &FrmServer::chkClient_Click);
    connect(chkHalt, &QCheckBox::toggled, this, &FrmServer::chkHalt_Click);
    connect(chkReal, &QCheckBox::toggled, this, &FrmServer::chkReal_Click);
    connect(chkSilence, &QCheckBox::toggled, this, &FrmServer::chkSilence_Click);
    connect(optBooster, &QRadioButton::toggled, this,
            [this](bool chosen) { chosen ? optBooster_Click() : optRochester_Click(); });
    for (int i = 2; i < kMostPacks; ++i) {
        connect(optPack[static_cast<std::size_t>(i)], &QRadioButton::toggled, this,
                [this, i](bool chosen) {
                    if (chosen) {
                        optPack_Click(i);
                    }
                });
    }
    for (SetBox* box : cboPack) {
        box->view()->installEventFilter(this);
    }
    // Files may come and go while another window has the word.
    connect(this, &Form::gotFocus, this, &FrmServer::lookForSets);
    connect(vsbSecs, &QScrollBar::valueChanged, this, &FrmServer::vsbSecs_Change);
    connect(lstNames, &ListBox::itemClicked, this, &FrmServer::lstNames_Click);
    connect(lstNames, &ListBox::itemActivated, this, &FrmServer::lstNames_Click);
    // Going through the rows with the arrow keys must not lose the list the focus.
    connect(lstNames, &ListBox::itemSelectionChanged, this, &FrmServer::updatePingByRow);
}

}  // namespace packwise
