#include "deck/frmsave.h"

#include "platform/settings.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"
#include "widgets/look.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QStorageInfo>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// The roots of the volumes that a folder can be on.
QStringList mountedVolumes() {
    QStringList roots{QDir::rootPath()};
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        const bool holdsFiles = volume.isValid() && volume.isReady() && volume.bytesTotal() > 0;
        if (holdsFiles && QFileInfo(root).isDir() && !roots.contains(root)) {
            roots += root;
        }
    }
    return roots;
}

}  // namespace

FrmSave::FrmSave(Shell& shell)
    : Form(u"frmSave"_s, u"Save As"_s, FormBorder::Dialog),
      dlbDrive(new QComboBox(this)),
      dlbDir(new DirListBox(this)),
      flbFile(new ListBox(this)),
      txtSaveName(new QLineEdit(this)),
      chkPicks(new QCheckBox(u"Picks"_s, this)),
      chkExport(new QCheckBox(u"For other programs"_s, this)),
      cmdOK(new QPushButton(u"&OK"_s, this)),
      cmdCancel(new QPushButton(u"&Cancel"_s, this)),
      shell_(shell) {
    placeControls();
    connectControls();
    Form_Load();
}

void FrmSave::placeControls() {
    placeControl(*dlbDrive, {120, 120, 3000, 360}, u"dlbDrive"_s, u"Drive"_s);
    placeControl(*dlbDir, {120, 540, 3000, 3300}, u"dlbDir"_s, u"Folder"_s);
    placeControl(*flbFile, {3240, 120, 3000, 3720}, u"flbFile"_s, u"Deck files"_s);
    placeControl(*txtSaveName, {120, 3960, 3720, 375}, u"txtSaveName"_s, u"File name"_s);
    placeControl(*cmdOK, {3960, 3960, 1080, 375}, u"cmdOK"_s);
    placeControl(*cmdCancel, {5160, 3960, 1080, 375}, u"cmdCancel"_s);
    placeControl(*chkPicks, {120, 4410, 1080, 330}, u"chkPicks"_s);
    placeControl(*chkExport, {1260, 4410, 2580, 330}, u"chkExport"_s);
    setClientSizeTwips(6360, 4815);
    const auto describe = [](QCheckBox* box, const QString& what) {
        box->setToolTip(what);
        box->setAccessibleDescription(what);
    };
    describe(chkPicks,
             u"Save each pack as you saw it, and what you took, beside the deck: "
             u"a text file, NAME.picks.txt"_s);
    describe(chkExport, u"Save the deck a second time, as other programs read it: NAME.cod"_s);
}

void FrmSave::connectControls() {
    cmdOK->setAutoDefault(true);
    cmdCancel->setAutoDefault(true);
    connect(dlbDrive, &QComboBox::activated, this, &FrmSave::dlbDrive_Change);
    connect(dlbDir, &DirListBox::pathChanged, this, &FrmSave::dlbDir_Change);
    connect(flbFile, &QListWidget::itemSelectionChanged, this, &FrmSave::flbFile_Click);
    connect(flbFile, &QListWidget::itemClicked, this, &FrmSave::flbFile_Click);
    connect(txtSaveName, &QLineEdit::returnPressed, this, &FrmSave::cmdOK_Click);
    connect(cmdOK, &QPushButton::clicked, this, &FrmSave::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &FrmSave::cmdCancel_Click);
}

void FrmSave::Form_Load() {
    dlbDrive->addItems(mountedVolumes());
    // A menu may start the program where its user cannot write.
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString started = shell_.startFolder();
    for (const QString& folder : {setting::savePath.read(shell_.settings()),
                                  QFileInfo(started).isWritable() ? started : documents,
                                  QDir::homePath(), QDir::rootPath()}) {
        if (dlbDir->setPath(folder)) {
            break;
        }
    }
    chkPicks->setChecked(setting::savePicks.readInt(shell_.settings()) != 0);
    chkExport->setChecked(setting::saveExport.readInt(shell_.settings()) != 0);
    txtSaveName->setText(deckName(QDateTime::currentDateTime()) + u".dec"_s);
}

QString FrmSave::SaveName() const {
    return dlbDir->path() + u'/' + txtSaveName->text();
}

void FrmSave::dlbDrive_Change() {
    if (dlbDrive->currentText() == QStorageInfo(dlbDir->path()).rootPath()) {
        return;  // it was chosen before
    }
    if (!dlbDir->setPath(dlbDrive->currentText())) {
        dlbDir_Change();  // the volume has gone; show the one in use again
    }
}

void FrmSave::dlbDir_Change() {
    const QString path = dlbDir->path();
    flbFile->clear();
    flbFile->addItems(
        QDir(path).entryList({u"*.dec"_s}, QDir::Files, QDir::Name | QDir::IgnoreCase));
    const int drive = dlbDrive->findText(QStorageInfo(path).rootPath());
    if (drive >= 0) {
        dlbDrive->setCurrentIndex(drive);
    }
}

void FrmSave::flbFile_Click() {
    if (!flbFile->selectedItems().isEmpty()) {
        txtSaveName->setText(flbFile->text(flbFile->currentRow()));
    }
}

void FrmSave::cmdOK_Click() {
    const QString reason = whyNotWritable(SaveName(), fileSize_);
    if (!reason.isEmpty()) {
        txtSaveName->setFocus();
        shell_.boxes().error(
            this, u"Cannot save the deck as %1: %2\n\nChoose another folder or name."_s.arg(
                      QDir::toNativeSeparators(SaveName()), reason));
        return;
    }
    shell_.settings().write({setting::savePath.entry(dlbDir->path()),
                             setting::savePicks.entry(chkPicks->isChecked() ? 1 : 0),
                             setting::saveExport.entry(chkExport->isChecked() ? 1 : 0)});
    Q_EMIT leaving();
    hide();
    Q_EMIT okPressed();
}

void FrmSave::cmdCancel_Click() {
    Q_EMIT leaving();
    hide();
    Q_EMIT cancelled();
}

bool FrmSave::queryUnload(UnloadMode) {
    cmdCancel_Click();
    return true;
}

void FrmSave::showEvent(QShowEvent* event) {
    Form::showEvent(event);
    dlbDir_Change();
    txtSaveName->setFocus();
}

void FrmSave::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        cmdCancel_Click();
        return;
    }
    Form::keyPressEvent(event);
}

}  // namespace packwise
