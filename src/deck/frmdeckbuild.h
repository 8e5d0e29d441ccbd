// The deck builder. lstSB and lstDeck are the store of the deck, the captions of lblSBCount and
// lblDeckCount its counters. lstSB holds the cards by group, each group a heading, its cards and a
// separator; headings and separators never move. A card line is any other line.
#pragma once

#include "deck/decklink.h"
#include "engine/deckfile.h"
#include "widgets/form.h"
#include "widgets/lazy.h"
#include "widgets/listbox.h"
#include "widgets/shell.h"

#include <array>
#include <string>

class QCheckBox;
class QLabel;
class QPushButton;

namespace packwise {

class FrmSave;

class FrmDeckBuild : public Form {
    Q_OBJECT
public:
    FrmDeckBuild(Shell& shell, Lazy<FrmSave>& save, DeckLink& link);

    QLabel* Label1 = nullptr;
    QLabel* lblSBCount = nullptr;
    ListBox* lstSB = nullptr;
    QPushButton* cmdTextSB = nullptr;

    QPushButton* cmdAdd = nullptr;
    QPushButton* cmdTake = nullptr;

    QLabel* lblDeck = nullptr;
    QLabel* lblDeckCount = nullptr;
    ListBox* lstDeck = nullptr;
    QPushButton* cmdTextDeck = nullptr;

    QLabel* lblLand = nullptr;
    std::array<QPushButton*, 5> cmdLand{};
    QCheckBox* chkSnow = nullptr;
    QPushButton* cmdSave = nullptr;  // enabled while the deck holds 40 cards or more

    std::array<QString, 8> Cards;  // by group: names as received, each followed by "|"
    std::array<QString, 6> Packs;  // set display names in draft order
    int freeLands = 0;             // lands added by the buttons; never goes down

    // Whether a line of lstSB is a card, no heading and no separator.
    static bool isCardLine(const QString& line);

    // Files a group's cards in lstSB. `num` is the group index 0 to 7, to be given in this order,
    // once each; `list` holds names in bytes, each followed by "|", and is empty afterwards.
    void setCards(int num, std::string& list);

    // The display name of pack `num`, 0 to 5, in bytes.
    void setPack(int num, const std::string& pack);

    void lstSB_DblClick();
    void lstDeck_DblClick();
    void cmdAdd_Click();
    void cmdTake_Click();
    void cmdLand_Click(int index);  // 0 to 4
    void cmdSave_Click();
    void cmdTextSB_Click();
    void cmdTextDeck_Click();

    // Writes the deck file, reports the code and hides the window. A file that cannot be written
    // ends the program; an older file of that name is then still whole, and the deck is kept in
    // the user's documents.
    void SaveFile();

protected:
    bool queryUnload(UnloadMode mode) override;
    // Escape closes the card popup.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void createControls();
    void placeControls();
    void connectControls();
    void AddCards();
    void TakeCards();
    void countDeck(int by);  // 1 or -1
    int groupOf(const QString& name) const;
    int placeInSideboard(int group) const;
    void showText(const ListBox& list);
    // Writes the files that Save As asks for beside the deck that stands on the disk by then.
    void saveBeside(const DeckFile& file);
    DeckFile deckFile() const;  // of the lists as they are, with a stamp of now

    Shell& shell_;
    Lazy<FrmSave>& save_;
    DeckLink& link_;
    bool followsSave_ = false;  // the signals of Save As are connected
};

}  // namespace packwise
