#include "deck/frmdeckbuild.h"

#include "deck/frmsave.h"
#include "platform/codepage.h"
#include "widgets/look.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kCaptionedWidth = 6465;  // twips, with the nominal frame
constexpr int kCardGap = 240;          // twips between this window and the card popup
constexpr int kLeastDeck = 40;
constexpr int kMostFreeLands = 100;

const QString kSeparator = u" "_s;
const QString kHeadingStart = u"---"_s;
const std::array kHeadings = {u"---BLACK---"_s, u"---BLUE---"_s,  u"---GREEN---"_s,
                              u"---RED---"_s,   u"---WHITE---"_s, u"---ARTIFACT---"_s,
                              u"---MULTI---"_s, u"---LAND---"_s};
const std::array kLands = {u"Swamp"_s, u"Island"_s, u"Forest"_s, u"Mountain"_s, u"Plains"_s};
constexpr int kLandGroup = 7;

bool isHeading(const QString& line) {
    return line.startsWith(kHeadingStart);
}

void changeCount(QLabel& counter, int by) {
    counter.setText(QString::number(counter.text().toInt() + by));
}

// Leaves the cursor of a list near the row where cards have gone, on a card if there is one, and
// selects nothing.
void keepPlace(ListBox& list, int row) {
    row = std::min(row, list.count() - 1);
    if (row > 0 && !FrmDeckBuild::isCardLine(list.text(row)) &&
        FrmDeckBuild::isCardLine(list.text(row - 1))) {
        --row;
    }
    list.setCurrentItem(list.item(row), QItemSelectionModel::NoUpdate);
}

}  // namespace

FrmDeckBuild::FrmDeckBuild(Shell& shell, Lazy<FrmSave>& save, DeckLink& link)
    : Form(u"frmDeckBuild"_s, u"Build Deck"_s, FormBorder::Dialog),
      shell_(shell),
      save_(save),
      link_(link) {
    createControls();
    placeControls();
    connectControls();
}

void FrmDeckBuild::createControls() {
    Label1 = new QLabel(u"Sideboard"_s, this);
    lblSBCount = new QLabel(u"0"_s, this);
    lstSB = new ListBox(this);
    cmdTextSB = new QPushButton(u"text"_s, this);
    cmdAdd = new QPushButton(u">"_s, this);
    cmdTake = new QPushButton(u"<"_s, this);
    lblDeck = new QLabel(u"Deck"_s, this);
    lblDeckCount = new QLabel(u"0"_s, this);
    lstDeck = new ListBox(this);
    cmdTextDeck = new QPushButton(u"text"_s, this);
    lblLand = new QLabel(u"Free Land!"_s, this);
    for (std::size_t land = 0; land < cmdLand.size(); ++land) {
        cmdLand[land] = new QPushButton(u'&' + kLands[land], this);
    }
    chkSnow = new QCheckBox(u"Snow"_s, this);
    cmdSave = new QPushButton(u"Save &As"_s, this);

    for (ListBox* list : {lstSB, lstDeck}) {
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    Label1->setBuddy(lstSB);
    lblDeck->setBuddy(lstDeck);
    for (QLabel* counter : {lblSBCount, lblDeckCount}) {
        counter->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    chkSnow->setEnabled(false);
    cmdSave->setEnabled(false);
    // A name would be spoken in place of the number.
    lblSBCount->setAccessibleDescription(u"Cards in the sideboard"_s);
    lblDeckCount->setAccessibleDescription(u"Cards in the deck"_s);
    cmdAdd->setToolTip(u"Move the selected cards to the deck"_s);
    cmdTake->setToolTip(u"Move the selected cards back to the sideboard"_s);
    chkSnow->setToolTip(u"Add snow-covered lands"_s);
}

void FrmDeckBuild::placeControls() {
    placeControl(*Label1, {120, 90, 1500, 270}, u"Label1"_s);
    placeControl(*lblSBCount, {2310, 90, 600, 270}, u"lblSBCount"_s);
    placeControl(*lstSB, {120, 375, 2790, 4500}, u"lstSB"_s, u"Sideboard"_s);
    placeControl(*cmdTextSB, {120, 4935, 750, 345}, u"cmdTextSB"_s,
                 u"Text of the sideboard card"_s);
    placeControl(*cmdAdd, {2985, 1950, 405, 405}, u"cmdAdd"_s, u"To the deck"_s);
    placeControl(*cmdTake, {2985, 2475, 405, 405}, u"cmdTake"_s, u"To the sideboard"_s);
    placeControl(*lblDeck, {3465, 90, 1500, 270}, u"lblDeck"_s);
    placeControl(*lblDeckCount, {5655, 90, 600, 270}, u"lblDeckCount"_s);
    placeControl(*lstDeck, {3465, 375, 2790, 4500}, u"lstDeck"_s, u"Deck"_s);
    placeControl(*cmdTextDeck, {3465, 4935, 750, 345}, u"cmdTextDeck"_s,
                 u"Text of the deck card"_s);
    placeControl(*lblLand, {120, 5430, 1500, 270}, u"lblLand"_s);
    placeControl(*cmdLand[0], {120, 5715, 1170, 390}, u"cmdLand(0)"_s);
    placeControl(*cmdLand[1], {1350, 5715, 1170, 390}, u"cmdLand(1)"_s);
    placeControl(*cmdLand[2], {2580, 5715, 1170, 390}, u"cmdLand(2)"_s);
    placeControl(*cmdLand[3], {3810, 5715, 1215, 390}, u"cmdLand(3)"_s);
    placeControl(*cmdLand[4], {5085, 5715, 1170, 390}, u"cmdLand(4)"_s);
    placeControl(*chkSnow, {120, 6225, 1500, 390}, u"chkSnow"_s);
    placeControl(*cmdSave, {4755, 6225, 1500, 390}, u"cmdSave"_s);
    setSizeTwips(kCaptionedWidth, 7065);
}

void FrmDeckBuild::connectControls() {
    connect(cmdAdd, &QPushButton::clicked, this, &FrmDeckBuild::cmdAdd_Click);
    connect(lstSB, &QListWidget::itemDoubleClicked, this, &FrmDeckBuild::lstSB_DblClick);
    connect(lstSB, &ListBox::enterPressed, this, &FrmDeckBuild::lstSB_DblClick);
    connect(cmdTake, &QPushButton::clicked, this, &FrmDeckBuild::cmdTake_Click);
    connect(lstDeck, &QListWidget::itemDoubleClicked, this, &FrmDeckBuild::lstDeck_DblClick);
    connect(lstDeck, &ListBox::enterPressed, this, &FrmDeckBuild::lstDeck_DblClick);
    connect(cmdTextSB, &QPushButton::clicked, this, &FrmDeckBuild::cmdTextSB_Click);
    connect(cmdTextDeck, &QPushButton::clicked, this, &FrmDeckBuild::cmdTextDeck_Click);
    for (std::size_t land = 0; land < cmdLand.size(); ++land) {
        connect(cmdLand[land], &QPushButton::clicked, this,
                [this, land] { cmdLand_Click(static_cast<int>(land)); });
    }
    connect(cmdSave, &QPushButton::clicked, this, &FrmDeckBuild::cmdSave_Click);
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(true);  // Enter presses it
    }
}

bool FrmDeckBuild::isCardLine(const QString& line) {
    return line != kSeparator && !isHeading(line);
}

void FrmDeckBuild::setCards(int num, std::string& list) {
    if (num < 0 || num > kLandGroup) {
        return;
    }
    const auto group = static_cast<std::size_t>(num);
    Cards[group] = fromBytes(list);
    if (!list.empty()) {
        lstSB->addItem(kHeadings[group]);
        QStringList names = Cards[group].split(u'|');
        if (names.last().isEmpty()) {
            names.removeLast();
        }
        lstSB->addItems(names);
        lstSB->addItem(kSeparator);
    }
    if (num == kLandGroup) {
        Cards[group] += u"Swamp|Island|Forest|Mountain|Plains|"_s;
        lstSB->addItem(kSeparator);
    }
    list.clear();
}

void FrmDeckBuild::setPack(int num, const std::string& pack) {
    if (num >= 0 && num < static_cast<int>(Packs.size())) {
        Packs[static_cast<std::size_t>(num)] = fromBytes(pack);
    }
}

void FrmDeckBuild::lstSB_DblClick() {
    AddCards();
}

void FrmDeckBuild::lstDeck_DblClick() {
    TakeCards();
}

void FrmDeckBuild::cmdAdd_Click() {
    AddCards();
}

void FrmDeckBuild::cmdTake_Click() {
    TakeCards();
}

void FrmDeckBuild::AddCards() {
    const int place = lstSB->currentRow();
    if (place < 0) {
        return;
    }
    bool moved = false;
    for (int i = 0; i < lstSB->count(); ++i) {
        const QString line = lstSB->text(i);
        if (!lstSB->item(i)->isSelected() || !isCardLine(line)) {
            continue;
        }
        lstDeck->addItem(line);
        delete lstSB->takeItem(i);
        --i;
        moved = true;
        changeCount(*lblSBCount, -1);
        countDeck(1);
    }
    if (moved) {
        keepPlace(*lstSB, place);
        lstDeck->scrollToBottom();
    }
}

void FrmDeckBuild::TakeCards() {
    const int place = lstDeck->currentRow();
    if (place < 0) {
        return;
    }
    int last = -1;
    for (int i = 0; i < lstDeck->count(); ++i) {
        if (!lstDeck->item(i)->isSelected()) {
            continue;
        }
        const QString name = lstDeck->text(i);
        changeCount(*lblSBCount, 1);
        countDeck(-1);
        last = placeInSideboard(groupOf(name));
        lstSB->insertItem(last, name);
        delete lstDeck->takeItem(i);
        --i;
    }
    if (last >= 0) {
        keepPlace(*lstDeck, place);
        lstSB->scrollToItem(lstSB->item(last));
    }
}

void FrmDeckBuild::countDeck(int by) {
    changeCount(*lblDeckCount, by);
    const int cards = lblDeckCount->text().toInt();
    if (by > 0 && cards == kLeastDeck) {
        cmdSave->setEnabled(true);
    } else if (by < 0 && cards == kLeastDeck - 1) {
        cmdSave->setEnabled(false);
    }
}

// The last group in whose list the name occurs, also as a part of a longer name.
int FrmDeckBuild::groupOf(const QString& name) const {
    int group = 0;
    for (std::size_t j = 0; j < Cards.size(); ++j) {
        if (Cards[j].contains(name)) {
            group = static_cast<int>(j);
        }
    }
    return group;
}

// The row in front of the separator that closes the group, or that closes the last group where it
// has no heading behind it.
int FrmDeckBuild::placeInSideboard(int group) const {
    const QStringList lines = lstSB->texts();
    int headings = 0;
    for (int j = 0; j <= group; ++j) {
        headings += lines.contains(kHeadings[static_cast<std::size_t>(j)]) ? 1 : 0;
    }
    headings = std::max(headings, 1);
    int row = 1;  // the first heading stands in row 0
    for (; row < lines.size() && headings > 0; ++row) {
        headings -= isHeading(lines[row]) ? 1 : 0;
    }
    return std::max(row - 2, 0);
}

void FrmDeckBuild::cmdLand_Click(int index) {
    if (freeLands == kMostFreeLands) {
        shell_.boxes().show(this, Box{u"I have to draw the line somewhere! No more land!"_s,
                                      programTitle(), BoxButtons::Ok, BoxIcon::Exclamation});
        for (QPushButton* button : cmdLand) {
            button->setEnabled(false);
        }
        return;
    }
    ++freeLands;
    const QString& land = kLands.at(static_cast<std::size_t>(index));
    lstDeck->addItem(chkSnow->isChecked() ? u"Snow-Covered " + land : land);
    lstDeck->scrollToBottom();
    countDeck(1);
}

void FrmDeckBuild::cmdTextSB_Click() {
    showText(*lstSB);
}

void FrmDeckBuild::cmdTextDeck_Click() {
    showText(*lstDeck);
}

void FrmDeckBuild::showText(const ListBox& list) {
    const QString name = list.text(list.currentRow());
    const bool isBasicLand = std::find(kLands.begin(), kLands.end(), name) != kLands.end();
    if (name.isEmpty() || !isCardLine(name) || isBasicLand) {
        return;
    }
    repaint();  // the scan holds the thread
    link_.showCard(name, QStringList(Packs.begin(), Packs.end()),
                   leftTwips() + kCaptionedWidth + kCardGap, topTwips());
}

void FrmDeckBuild::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        link_.hideCard();
    } else {
        Form::keyPressEvent(event);
    }
}

bool FrmDeckBuild::queryUnload(UnloadMode mode) {
    if (mode != UnloadMode::User) {
        return true;
    }
    if (!isEnabled()) {
        return false;  // Save As is open
    }
    const bool quit = shell_.boxes().show(this, Box{u"Quit without saving?"_s, programTitle(),
                                                    BoxButtons::YesNo, BoxIcon::Exclamation});
    if (!quit || shell_.ended()) {
        return false;
    }
    if (!shell_.isVisible(FormId::Server) && !shell_.isVisible(FormId::Security)) {
        shell_.end();
    }
    return true;
}

}  // namespace packwise
