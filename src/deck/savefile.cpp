// The way of a finished deck out of the deck builder.
#include "deck/frmdeckbuild.h"
#include "deck/frmsave.h"
#include "engine/deckexport.h"
#include "engine/deckfile.h"
#include "engine/picktext.h"
#include "platform/codepage.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"
#include "protocol/messages.h"

#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<std::string> cardsOf(const ListBox& list) {
    std::vector<std::string> cards;
    for (const QString& line : list.texts()) {
        if (FrmDeckBuild::isCardLine(line)) {
            cards.push_back(toBytes(line));
        }
    }
    return cards;
}

// Keeps a deck that could not be saved in the user's own documents. Tells in a line what became
// of it.
QString rescue(const std::string& text) {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    documents.mkpath(u"."_s);
    const QString path = freePath(documents, deckName(QDateTime::currentDateTime()), u".dec"_s);
    const QString reason = writeWholeFile(path, text);
    const QString shown = QDir::toNativeSeparators(path);
    return reason.isEmpty() ? u"The deck is kept as %1"_s.arg(shown)
                            : u"It cannot be kept as %1 either: %2"_s.arg(shown, reason);
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
    save.setFileSize(static_cast<qint64>(deckFile().text.size()));
    setEnabled(false);
    save.present();
    link_.hideCard();
}

DeckFile FrmDeckBuild::deckFile() const {
    const std::string stamp = toBytes(timeStamp(QDateTime::currentDateTime(), QLocale::system()));
    return makeDeckFile(stamp, cardsOf(*lstDeck), cardsOf(*lstSB));
}

void FrmDeckBuild::SaveFile() {
    const DeckFile file = deckFile();
    if (!writeWholeFile(save_->SaveName(), file.text).isEmpty()) {
        shell_.boxes().error(this,
                             u"Error writing to file. Must quit. :(\n\n"_s + rescue(file.text));
        shell_.end();
        return;
    }
    lstDeck->clear();
    lstSB->clear();
    link_.send(to_server::Code{file.code}.write());
    hide();
    link_.deckSaved(save_->SaveName());
    saveBeside(file);
}

void FrmDeckBuild::saveBeside(const DeckFile& file) {
    const QString base = deckBase(save_->SaveName());
    const auto put = [&](const QString& path, const std::string& text) {
        const QString reason = writeWholeFile(path, text);
        if (!reason.isEmpty()) {
            link_.notSaved(path, reason);
        }
    };
    if (save_->chkPicks->isChecked()) {
        put(base + fromBytes(kPickTextEnding), writePicks(link_.picks()));
    }
    int faultyLine = 0;
    const std::optional<DeckList> deck = readDeckFile(file.text, faultyLine);
    if (deck && save_->chkExport->isChecked()) {
        put(base + fromBytes(endingOf(DeckFormat::Cod)), exportDeck(DeckFormat::Cod, *deck));
    }
}

}  // namespace packwise
