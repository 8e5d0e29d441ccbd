// The draft client's pack view, its picks, and the lists of what was picked.
#include "client/cardlist.h"
#include "client/colorbars.h"
#include "client/frmclient.h"
#include "companions/frmcard.h"
#include "deck/frmdeckbuild.h"
#include "platform/codepage.h"
#include "platform/settings.h"
#include "platform/timestamp.h"
#include "widgets/shell.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kLowestBarPress = 120;  // twips

}  // namespace

void FrmClient::cmdDraft_Click() {
    MakePick(false);
}

void FrmClient::lstPack_DblClick() {
    if (cmdDraft->isEnabled()) {
        MakePick(false);
    }
}

void FrmClient::lstPack_MouseDown() {
    if (lstPack->selectedRow() < 0 || !chkInfo->isChecked()) {
        return;
    }
    placeCard(*lstPack);
    showCard(lstPack->text(lstPack->selectedRow()));
}

void FrmClient::chkInfo_Click() {
    setting::showInfo.write(shell_.settings(), chkInfo->isChecked() ? 1 : 0);
    if (!chkInfo->isChecked()) {
        hideCard();
    }
}

void FrmClient::placeCard(const CardList& list) {
    const QRect clicked(list.mapToGlobal(QPoint(0, 0)), list.size());
    frmCard_->placeAt(leftTwips() + kDraftWidth + kCardGap, topTwips(), frameGeometry(), clicked);
}

void FrmClient::showCard(const QString& name) {
    // The search for the card holds the thread; the row shows as selected meanwhile.
    repaint();
    frmCard_->Card(name, Sets);
}

void FrmClient::hideCard() {
    if (frmCard_.ifLoaded()) {
        frmCard_->hide();
    }
}

void FrmClient::colorPack(const QColor& color) {
    lstPack->setTextColor(color);
    const bool may = color == shade::black && cmdDraft->isEnabled();
    const QString state = may ? u"You may pick: double-click a card, or press Enter on it"_s
                              : u"You may not pick now"_s;
    lstPack->setAccessibleDescription(state);
    lstPack->setToolTip(state);
}

void FrmClient::allowPick() {
    cmdDraft->setEnabled(true);
    colorPack(shade::black);
}

void FrmClient::showPack(const std::vector<std::string>& tokens) {
    lstPack->clear();
    QColor fill = shade::black;
    for (std::size_t row = 0; row < tokens.size(); ++row) {
        const std::string& token = tokens[row];
        const QString name = screenText(std::string_view(token).substr(1));
        QString spokenColor = u"Unknown colour"_s;
        if (const std::optional<int> color = colorIndexOf(token.front())) {
            const CardColor& known = kCardColors[static_cast<std::size_t>(*color)];
            fill = known.dot;
            spokenColor = known.spokenName();
        }
        Pack[row] = token;
        auto* item = new QListWidgetItem(name, lstPack);
        item->setData(Qt::AccessibleTextRole, QString(name + u", "_s + spokenColor));
        shaDot[row]->setBordered(true);
        shaDot[row]->setFilled(true);
        shaDot[row]->setFillColor(fill);
        describeDot(row, spokenColor);
    }
}

void FrmClient::describeDot(std::size_t row, const QString& color) {
    shaDot[row]->setToolTip(color);
    shaDot[row]->setAccessibleDescription(color);
}

void FrmClient::removePackRow(int row) {
    for (auto at = static_cast<std::size_t>(row); at + 1 < shaDot.size(); ++at) {
        shaDot[at]->takeLookOf(*shaDot[at + 1]);
        describeDot(at, shaDot[at + 1]->toolTip());
        Pack[at] = Pack[at + 1];
    }
    lstPack->removeRow(row);
}

PickLog FrmClient::pickLog() const {
    PickLog log = keeper_.log();
    stampPicks(log, begun_);
    return log;
}

void FrmClient::MakePick(bool random) {
    if (draftOver_) {
        tmrRoch->stop();
        return;
    }
    if (random && lstPack->count() > 0) {
        const int rows = lstPack->count();
        lstPack->setCurrentRow(
            std::clamp(static_cast<int>(std::floor(draw_() * rows)), 0, rows - 1));
    }
    const int row = lstPack->selectedRow();
    if (row < 0) {
        return;
    }
    tmrRoch->stop();
    QLabel* count = frmDeckBuild_->lblSBCount;
    count->setText(QString::number(count->text().toInt() + 1));
    const std::string token = Pack[static_cast<std::size_t>(row)];
    Send(to_server::Card{token}.write());
    keeper_.take(token);
    if (draftType == 'B') {
        removePackRow(row);
    } else {
        hideCard();
    }
    filePick(static_cast<std::size_t>(colorIndexOf(token.front()).value_or(0)), token.substr(1));
    if (focusWidget() == cmdDraft) {
        lstPack->setFocus();  // or the next control in the row would have it
    }
    cmdDraft->setEnabled(false);
    colorPack(shade::grey);
    if (draftType == 'B') {
        sendRest();
    } else if (draftType == 'R') {
        if (random) {
            Send(to_server::RandomMark{}.write());
        }
        Send(to_server::Pick{row}.write());
        setTick(0);
        lblTick->setEnabled(false);
    }
}

void FrmClient::sendRest() {
    packwise::Pack rest;
    for (int row = 0; row < lstPack->count(); ++row) {
        rest.add(Pack[static_cast<std::size_t>(row)]);
    }
    Send(to_server::PackBack{rest}.write());
}

bool FrmClient::isShown(std::size_t color) const {
    return shaBar[color]->borderColor() == shade::white;
}

void FrmClient::filePick(std::size_t color, const std::string& name) {
    const QString shownName = screenText(name);
    lstPickedNS->insertItem(0, shownName);
    lstPickedNS->scrollToTop();
    const bool isFirst = Picks[color].empty();
    // Each group on show is a heading, its cards and a blank row, before which the card goes.
    int end = -1;
    for (std::size_t group = 0; group <= color; ++group) {
        if (isShown(group) || (isFirst && group == color)) {
            end += 2 + countFields(Picks[group]);
        }
    }
    Picks[color] += name + kFieldEnd;
    if (isFirst) {
        shaBar[color]->setBorderColor(shade::white);
        RebuildPicked();
    } else if (isShown(color)) {
        lstPicked->insertItem(end, shownName);
    }
    if (isShown(color)) {
        lstPicked->scrollToItem(lstPicked->item(end));
    }
}

void FrmClient::RebuildPicked() {
    const int scrolled = lstPicked->verticalScrollBar()->value();
    lstPicked->clear();
    for (std::size_t color = 0; color < Picks.size(); ++color) {
        if (Picks[color].empty() || !isShown(color)) {
            continue;
        }
        lstPicked->addItem(kCardColors[color].headingText());
        for (const std::string& name : readFields(Picks[color])) {
            lstPicked->addItem(screenText(name));
        }
        lstPicked->addItem(u" "_s);
    }
    lstPicked->verticalScrollBar()->setValue(scrolled);
    describeBars();
}

void FrmClient::describeBars() {
    std::array<bool, kColors> has{};
    std::ranges::transform(Picks, has.begin(), [](const auto& names) { return !names.empty(); });
    fraColors->describe(has);
}

void FrmClient::chkSort_Click() {
    const bool sorted = chkSort->isChecked();
    lstPickedNS->setVisible(!sorted);
    lstPicked->setVisible(sorted);
    fraColors->setVisible(sorted);
    takeFocusAgain();
}

void FrmClient::fraColors_MouseDown(Qt::MouseButton button, int x, int y) {
    if (x < 0 || x >= kColors * ColorBars::kBarWidth || y < 0 || y > kLowestBarPress) {
        return;
    }
    const auto color = static_cast<std::size_t>(x / ColorBars::kBarWidth);
    if (Picks[color].empty()) {
        return;
    }
    if (button == Qt::RightButton) {
        for (Shape* bar : shaBar) {
            bar->setBorderColor(shade::black);
        }
    }
    shaBar[color]->setBorderColor(isShown(color) ? shade::black : shade::white);
    RebuildPicked();
}

void FrmClient::lstPicked_MouseDown() {
    const int row = lstPicked->selectedRow();
    if (row < 0 || !chkInfo->isChecked()) {
        return;
    }
    placeCard(*lstPicked);
    const QString text = lstPicked->text(row);
    if (text != u" "_s && !text.startsWith(u"---"_s)) {
        showCard(text);
    }
}

}  // namespace packwise
