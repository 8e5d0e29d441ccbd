#include "console/frmfixseats.h"

#include "widgets/look.h"
#include "widgets/shape.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kSeatingWidth = 8550;
constexpr int kSeatingHeight = 4500;
constexpr int kSeatWidth = 2550;
constexpr int kSeatHeight = 480;

struct RingPlace {
    int left;
    int top;
};

// The ring, clockwise from the upper left, by table position.
constexpr std::array<RingPlace, 8> kRing = {{{1650, 240},
                                             {4350, 240},
                                             {5760, 1080},
                                             {5760, 1920},
                                             {4350, 2760},
                                             {1650, 2760},
                                             {240, 1920},
                                             {240, 1080}}};

}  // namespace

FrmFixSeats::FrmFixSeats(Shell& shell)
    : Form(u"frmFixSeats"_s, u"Fix Seating"_s, FormBorder::Fixed), shell_(shell) {
    setClientSizeTwips(kSeatingWidth, kSeatingHeight);
    for (int i = 0; i < kSeats; ++i) {
        const auto at = static_cast<std::size_t>(i);
        auto* label = new SeatLabel(this);
        placeControl(*label, {kRing[at].left, kRing[at].top, kSeatWidth, kSeatHeight},
                     u"lblSeat(%1)"_s.arg(i));
        connect(label, &SeatLabel::clicked, this, [this, i] { lblSeat_Click(i); });
        lblSeat[at] = label;
    }
    Label1 = new QLabel(
        u"Click on a name to select, then click on another name to exchange their positions."_s,
        this);
    Label1->setWordWrap(true);
    placeControl(*Label1, {240, 3660, 6000, 600}, u"Label1"_s);
    cmdOK = new QPushButton(u"OK"_s, this);
    placeControl(*cmdOK, {6960, 3720, 1350, 480}, u"cmdOK"_s);
    cmdOK->setAutoDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &FrmFixSeats::cmdOK_Click);
    clear();
}

void FrmFixSeats::clear() {
    for (SeatLabel* label : lblSeat) {
        label->setCaption(u"-"_s);
        label->setEnabled(false);
        label->setBackColor(shade::grey);
        label->setLost(false);
        label->seatIndex = -1;
    }
    choose(-1);
}

void FrmFixSeats::seat(int position, const QString& name, int seatIndex) {
    SeatLabel& label = *lblSeat.at(static_cast<std::size_t>(position));
    label.setCaption(name);
    label.setBackColor(shade::white);
    label.setEnabled(true);
    label.seatIndex = seatIndex;
}

void FrmFixSeats::lose(int seatIndex) {
    for (SeatLabel* label : lblSeat) {
        if (label->seatIndex == seatIndex) {
            label->setLost(true);
        }
    }
    choose(seatChosen);
}

void FrmFixSeats::lblSeat_Click(int index) {
    SeatLabel& clicked = *lblSeat.at(static_cast<std::size_t>(index));
    if (seatChosen < 0) {
        choose(index);
        clicked.setBackColor(shade::red);
        return;
    }
    SeatLabel& chosen = *lblSeat.at(static_cast<std::size_t>(seatChosen));
    const QString name = chosen.caption();
    chosen.setCaption(clicked.caption());
    clicked.setCaption(name);
    std::swap(chosen.seatIndex, clicked.seatIndex);
    const bool lost = chosen.isLost();
    chosen.setLost(clicked.isLost());
    clicked.setLost(lost);
    chosen.setBackColor(shade::white);
    choose(-1);
}

void FrmFixSeats::choose(int position) {
    seatChosen = position;
    for (int i = 0; i < kSeats; ++i) {
        lblSeat[static_cast<std::size_t>(i)]->describe(i, i == position);
    }
}

void FrmFixSeats::cmdOK_Click() {
    hide();
    Q_EMIT seated();
}

bool FrmFixSeats::queryUnload(UnloadMode) {
    if (!shell_.ended() && isVisible()) {
        hide();
        Q_EMIT seated();
    }
    return true;
}

void FrmFixSeats::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        cmdOK->click();
    }
}

}  // namespace packwise
