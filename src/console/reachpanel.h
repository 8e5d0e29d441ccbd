// How friends reach this draft: the address for the same network, and the router's, which is asked
// on a press alone.
#pragma once

#include "platform/addresses.h"
#include "platform/router.h"

#include <QList>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace packwise {

class Shell;

class ReachPanel : public QWidget {
    Q_OBJECT
public:
    ReachPanel(Shell& shell, QWidget* parent);

    QLabel* lblAddress;
    QPushButton* cmdCopyAddress;
    QPushButton* cmdLetIn;  // asks the router
    QProgressBar* barAsking;
    QPushButton* cmdCancel;
    QLabel* lblOutside;  // the outside address, or in a few words why there is none
    QPushButton* cmdCopyOutside;
    QPushButton* cmdWhy;  // shows the whole sentence, and gives way to cmdLetIn again

    // The port is open, and the panel shows itself. `addresses` are this machine's.
    void present(quint16 port, const QList<OwnAddress>& addresses);

    // Nobody can join any more. What the router has opened stays: it may cut what runs through it.
    void dismiss();

    // What came of routerWanted(), or of a renewal.
    void showAnswer(const RouterAnswer& answer);

Q_SIGNALS:
    void routerWanted();
    void routerUnwanted();

private:
    enum class Row { Press, Asking, Open, Fault };

    void makeControls();
    void showRow(Row row);
    void showText(QLabel& label, const QString& text, const QString& tip) const;
    void why();

    Shell& shell_;
    quint16 port_ = 0;
    QString address_;  // this machine's in its network; empty without one
    QString outside_;  // what cmdCopyOutside copies
    RouterAnswer answer_;
};

}  // namespace packwise
