// About: what the program is, and the address of its web page. A press of the mouse closes it, on
// the smaller texts a whole click; a press on the address opens the page.
#pragma once

#include "widgets/form.h"
#include "widgets/shell.h"

class QLabel;

namespace packwise {

inline constexpr const char16_t* kWebPage = u"https://packwise.example/";

class FrmInfo : public Form {
    Q_OBJECT
public:
    explicit FrmInfo(Shell& shell);

    QLabel* lblPackwise;
    QLabel* lblVersion;
    QLabel* lblStuff;
    QLabel* Label1;  // whose the game is
    QLabel* Label2;  // credits
    QLabel* lblSiteLink;

    // Shows the window over all others and returns once it is hidden.
    void showModally();

    void Form_MouseDown();
    void lblPackwise_MouseDown();
    void lblVersion_MouseDown();
    void lblStuff_Click();
    void Label1_Click();
    void Label2_Click();
    void lblSiteLink_MouseDown();

Q_SIGNALS:
    void hidden();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QLabel* addLabel(const QString& name, const QString& text);
    void layOut();
};

}  // namespace packwise
