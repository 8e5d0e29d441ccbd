// The draft client's table: seat lights, the rings of names, and the clocks of a Rochester draft.
#include "client/cardlist.h"
#include "client/frmclient.h"
#include "widgets/look.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

void FrmClient::setLight(const QColor& color) {
    const bool linked = color != shade::red && wskClient->state() != Socket::Closed;
    shaLight->setFillColor(linked ? color : shade::red);
    const QString state = linked ? u"Linked to the server"_s : u"No link to the server"_s;
    shaLight->setToolTip(state);
    shaLight->setAccessibleDescription(state);
}

void FrmClient::colorSeat(std::size_t position, const QColor& color) {
    shaSeat[position]->setFillColor(color);
    describeSeat(position);
}

void FrmClient::describeSeat(std::size_t position) {
    Shape* seat = shaSeat[position];
    const QColor color = seat->fillColor();
    QString state = u"Empty place"_s;
    if (color != shade::emptySeat) {
        state = lblNameB[position]->text() +
                (seat->borderColor() == shade::white ? u" (you)"_s : QString()) +
                (color == shade::green ? u": has picked"_s : u": has yet to pick"_s);
    }
    seat->setToolTip(plainToolTip(state));
    seat->setAccessibleName(u"Seat "_s + QString::number(position + 1));
    seat->setAccessibleDescription(state);
}

void FrmClient::lightNameR(std::size_t position, bool lit, const QString& state) {
    QLabel* name = lblNameR[position];
    name->setEnabled(lit);
    name->setToolTip(state);
    name->setAccessibleDescription(state);
}

void FrmClient::disableNamesR() {
    for (std::size_t position = 0; position < lblNameR.size(); ++position) {
        lightNameR(position, false, u"waiting"_s);
    }
}

void FrmClient::addHistory(const QString& line) {
    lstHistory->removeRow(0);
    lstHistory->addItem(line);
}

void FrmClient::callPlayer() {
    if (!hasFocus_) {
        QApplication::alert(this);
        Q_EMIT playerCalled();
    }
}

void FrmClient::takeFocusAgain() {
    for (CardList* list : {lstPicked, lstPickedNS}) {
        list->setFocusPolicy(Qt::StrongFocus);
    }
}

int FrmClient::tick() const {
    return lblTick->text().right(2).toInt();
}

void FrmClient::setTick(int seconds) {
    lblTick->setText(u":%1"_s.arg(seconds, 2, 10, QChar(u'0')));
}

void FrmClient::tmrRoch_Timer() {
    if (tick() == 0) {
        MakePick(true);
    } else {
        setTick(tick() - 1);
    }
}

void FrmClient::tmrReview_Timer() {
    if (tick() > 0) {
        setTick(tick() - 1);
        return;
    }
    tmrReview->stop();
    setTick(0);
    lblTick->setEnabled(false);
    if (clockSeconds == 0) {
        lblTick->hide();
    }
    Send(to_server::ReviewDone{}.write());
}

void FrmClient::cmdOK_Click() {
    Send(to_server::PauseDone{}.write());
    lstPack->setFocus();  // or the next control in the row would have it
    cmdOK->hide();
    lstPicked->hide();
    lstPickedNS->hide();
    takeFocusAgain();
    hideCard();
}

}  // namespace packwise
