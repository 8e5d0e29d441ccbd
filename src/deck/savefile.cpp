// The way of a finished deck out of the deck builder.
#include "common/codepage.h"
#include "deck/deckfile.h"
#include "deck/frmdeckbuild.h"
#include "deck/frmsave.h"
#include "deck/timestamp.h"

#include <QDateTime>
#include <QLocale>
#include <QSaveFile>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// An older file of that name is replaced only once the new one is complete.
bool writeWhole(const QString& path, const std::string& bytes) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
               static_cast<qint64>(bytes.size()) &&
           file.commit();
}

std::vector<std::string> cardsOf(const ListBox& list) {
    std::vector<std::string> cards;
    for (const QString& line : list.texts()) {
        if (FrmDeckBuild::isCardLine(line)) {
            cards.push_back(toBytes(line));
        }
    }
    return cards;
}

}  // namespace

void FrmDeckBuild::cmdSave_Click() {
    FrmSave& save = save_();
    if (!followsSave_) {
        followsSave_ = true;
        connect(&save, &FrmSave::leaving, this, [this] { setEnabled(true); });
        connect(&save, &FrmSave::okPressed, this, &FrmDeckBuild::SaveFile);
        connect(&save, &FrmSave::cancelled, this, [this] { activateWindow(); });
        save.move(geometry().center() - save.rect().center());
    }
    setEnabled(false);
    save.present();
    link_.hideCard();
}

void FrmDeckBuild::SaveFile() {
    const std::string stamp = toBytes(timeStamp(QDateTime::currentDateTime(), QLocale::system()));
    const DeckFile file = makeDeckFile(stamp, cardsOf(*lstDeck), cardsOf(*lstSB));
    if (!writeWhole(save_->SaveName(), file.text)) {
        shell_.boxes().error(this, u"Error writing to file. Must quit. :("_s);
        shell_.end();
        return;
    }
    lstDeck->clear();
    lstSB->clear();
    link_.send("CODE" + std::to_string(file.code) + "~");
    hide();
}

}  // namespace packwise
