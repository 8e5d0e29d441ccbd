// The lists of sets: what they offer, which of it can be dealt from, and the look at the card data
// before a draft.
#include "console/frmserver.h"
#include "platform/codepage.h"
#include "platform/setfiles.h"
#include "platform/settings.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QStandardItemModel>

#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

std::filesystem::path currentFolder() {
    std::error_code error;
    return std::filesystem::current_path(error);
}

// What is wrong with a set's files and what the host can do; empty when nothing is.
QString faultOf(const QString& setName, bool alongLists) {
    const SetFault fault = tryFilesOf(currentFolder(), setName, alongLists);
    const QString words = wordsFor(fault, currentFolder(), setName) + u"\n\n"_s;
    switch (fault) {
        case SetFault::None:
            return {};
        case SetFault::CardsMissing:
            return words + u"Put it there, or choose another set."_s;
        case SetFault::CardsUnusable:
            return words + u"Replace it, or choose another set."_s;
        case SetFault::OrderUnusable:
            return words + u"Replace it, or clear \"Try real packs\"."_s;
    }
    return {};
}

}  // namespace

void FrmServer::loadSets() {
    const auto sets = shell_.settings().readAll(QString::fromUtf16(setting::kSetsSection));
    for (const auto& [key, name] : sets) {
        if (!breaksMessages(name)) {
            sets_->appendRow(new QStandardItem(name));
        }
    }
    for (SetBox* box : cboPack) {
        box->setCurrentIndex(-1);
    }
    lookForSets();
}

void FrmServer::loadPackChoices() {
    const SettingsStore& store = shell_.settings();
    const int packCount = setting::packCount.readInt(store);
    if (packCount < 3 || packCount > kMostPacks) {
        return;
    }
    optPack[static_cast<std::size_t>(packCount - 1)]->setChecked(true);
    for (std::size_t i = 0; i < cboPack.size(); ++i) {
        cboPack[i]->setCurrentIndex(cboPack[i]->findText(
            setting::pack[i].read(store), Qt::MatchExactly | Qt::MatchCaseSensitive));
    }
}

void FrmServer::lookForSets() {
    const std::filesystem::path folder = currentFolder();
    for (int row = 0; row < sets_->rowCount(); ++row) {
        QStandardItem& set = *sets_->item(row);
        if (hasSetFile(folder, toBytes(set.text()), kCardFileExtension)) {
            set.setData({}, Qt::ForegroundRole);
            set.setToolTip({});
            set.setAccessibleDescription({});
            continue;
        }
        const QString tip =
            u"There is no card file "_s + fileOfSet(folder, set.text(), kCardFileExtension);
        set.setForeground(palette().placeholderText());
        set.setToolTip(u"<span>"_s + tip.toHtmlEscaped() + u"</span>"_s);
        set.setAccessibleDescription(tip);
    }
    for (SetBox* box : cboPack) {
        box->followChoice();
    }
}

QString FrmServer::faultOfPacks() const {
    std::set<QString> sound;
    for (int i = 0; i < packCount(); ++i) {
        const QString pack = u"Pack %1"_s.arg(i + 1);
        const QString name = cboPack[static_cast<std::size_t>(i)]->currentText();
        if (name.isEmpty()) {
            return pack + (sets_->rowCount() > 0
                               ? u" has no set.\n\nChoose one in its list."_s
                               : u" has no set.\n\nNo set is registered yet. \"packwise-sets\" "
                                 "does that; then start Packwise again."_s);
        }
        if (!sound.insert(name).second) {
            continue;
        }
        const QString fault = faultOf(name, chkReal->isChecked());
        if (!fault.isEmpty()) {
            return pack + u", \""_s + name + u"\", cannot be dealt.\n\n"_s + fault;
        }
    }
    return {};
}

}  // namespace packwise
