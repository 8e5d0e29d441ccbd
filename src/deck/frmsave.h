// Save As: the folder and the name for a deck file. dlbDir and txtSaveName are the store of both,
// the two check boxes of what is to be written with it.
#pragma once

#include "deck/dirlistbox.h"
#include "widgets/form.h"
#include "widgets/listbox.h"
#include "widgets/shell.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

namespace packwise {

class FrmSave : public Form {
    Q_OBJECT
public:
    explicit FrmSave(Shell& shell);

    QComboBox* dlbDrive;  // mounted volumes
    DirListBox* dlbDir;
    ListBox* flbFile;  // the deck files in the folder
    QLineEdit* txtSaveName;
    QCheckBox* chkPicks;   // what the player saw of the draft goes with the deck
    QCheckBox* chkExport;  // so does the deck in a form that other programs read
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

    // The full path to save to, as chosen and typed.
    QString SaveName() const;

    // How many bytes the file will have, for the trial whether it can be made.
    void setFileSize(qint64 bytes) { fileSize_ = bytes; }

    void dlbDrive_Change();
    void dlbDir_Change();
    void flbFile_Click();
    // Tries first whether the file can be made; while it cannot, the window stays.
    void cmdOK_Click();
    void cmdCancel_Click();

Q_SIGNALS:
    // The window is about to hide: what stands behind it must be ready to take the focus.
    void leaving();
    // The window is hidden by then.
    void okPressed();
    void cancelled();  // also by the close box

protected:
    bool queryUnload(UnloadMode mode) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Load();
    void placeControls();
    void connectControls();

    Shell& shell_;
    qint64 fileSize_ = 0;
};

}  // namespace packwise
