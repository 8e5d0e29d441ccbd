// The chat window: one line of input, the lines that fit on the screen, and the players at the
// table. lstMessage is the only store of the lines: what it has pushed out is gone. lstNames is
// written from outside, row = seat index.
#pragma once

#include "companions/clientlink.h"
#include "widgets/form.h"
#include "widgets/heldkey.h"
#include "widgets/listbox.h"
#include "widgets/shell.h"

#include <string_view>

class QKeyEvent;
class QPlainTextEdit;

namespace packwise {

class FrmMessage : public Form {
    Q_OBJECT
public:
    FrmMessage(Shell& shell, ClientLink& client);

    QPlainTextEdit* txtSend;  // always one line; breaks that are pasted vanish
    ListBox* lstMessage;      // oldest line first
    ListBox* lstNames;        // eight rows, a name or " "

    int maxLines = 8;   // lines that lstMessage may hold
    int maxChars = 32;  // the width at which Receive() folds, in characters

    // Shows the window and a line, folded. `message` is the body of a MESG, in bytes.
    void Receive(std::string_view message);

    // Shows the window and a line of this program's own, which goes to nobody: a "*", then `note`.
    void showNote(const QString& note);

    // A key pressed anywhere in the window, as a Qt::Key. Enter sends what is in txtSend.
    void Form_KeyPress(int key);
    void Form_Resize();

protected:
    bool queryUnload(UnloadMode mode) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Form_Load();
    void chooseFonts();
    void spaceLetters(double width);
    void forgetLines();
    void showText(const QString& text);
    void addLine(const QString& line);
    bool takeKey(const QKeyEvent& press);
    void fitIntoScreen();
    void removeLineBreaks();
    void send();

    Shell& shell_;
    ClientLink& client_;
    bool loaded_ = false;
    HeldKey held_;
    int rowHeight_ = 13;      // of lstMessage, in device-independent pixels
    double charWidth_ = 9.0;  // likewise
};

}  // namespace packwise
