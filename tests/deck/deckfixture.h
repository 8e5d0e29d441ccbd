// A deck builder with a sideboard laid out group by group.
#pragma once

#include "deck/frmdeckbuild.h"
#include "deck/frmsave.h"
#include "support/fakeshell.h"

namespace packwise {

class FakeDeckLink : public DeckLink {
public:
    void send(std::string_view message) override { sent.emplace_back(message); }
    void showCard(const QString& name, const QStringList& sets, int left, int top) override {
        shown += name;
        lastSets = sets;
        place = {left, top};
    }
    void hideCard() override { ++hidden; }
    PickLog picks() const override {
        return {"1", "now", {"Ann"}, 0, {{1, 1, "Fens", "", {"Caf\xE9", "Tide"}, 1}}};
    }
    void deckSaved(const QString& path) override { saved += path; }
    void notSaved(const QString& path, const QString& reason) override {
        unsaved += path + u": "_s + reason;
    }

    std::vector<std::string> sent;
    QStringList shown;
    QStringList lastSets;
    QStringList saved;
    QStringList unsaved;
    std::pair<int, int> place;
    int hidden = 0;
};

class DeckBuilder : public testing::Test {
protected:
    // Deals the picks of the draft, by group index.
    void deal(const std::map<int, std::string>& groups) {
        int cards = 0;
        for (int group = 0; group < 8; ++group) {
            std::string list = groups.contains(group) ? groups.at(group) : "";
            cards += static_cast<int>(std::count(list.begin(), list.end(), '|'));
            window.setCards(group, list);
            EXPECT_TRUE(list.empty());
        }
        window.lblSBCount->setText(QString::number(cards));
        window.show();
    }

    void addLands(int count) {
        for (int i = 0; i < count; ++i) {
            window.cmdLand[static_cast<std::size_t>(i % 5)]->click();
        }
    }

    // Selects rows, the last of them current.
    static void select(ListBox* list, std::initializer_list<int> rows) {
        list->clearSelection();
        for (const int row : rows) {
            list->setCurrentItem(list->item(row), QItemSelectionModel::Select);
        }
    }

    static void expectWarning(const Box& box, const QString& title, BoxButtons buttons) {
        EXPECT_EQ(box.title, title);
        EXPECT_EQ(box.icon, BoxIcon::Exclamation);
        EXPECT_EQ(box.buttons, buttons);
    }

    static int rowOf(const ListBox* list, const QString& text) {
        return static_cast<int>(list->texts().indexOf(text));
    }

    FakeShell shell;
    FakeDeckLink link;
    Lazy<FrmSave> save{[this] { return std::make_unique<FrmSave>(shell); }};
    FrmDeckBuild window{shell, save, link};
};

}  // namespace packwise
