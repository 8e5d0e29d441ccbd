// The base of all windows of the program: a place in twips that can be stored and restored, and a
// close that may be refused. Closing hides a window; it is never destroyed before the program.
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

#include <optional>

namespace packwise {

// Who closes a window: the user (close box, window menu), or anything else.
enum class UnloadMode { User = 0, Code = 1 };

// The border decides what the nominal frame takes of a window's width and height. Sizes in twips
// are told with that frame, so that they mean the same under every window manager.
// No border has a maximise box; a dialog has no minimise box either.
enum class FormBorder { Fixed, Dialog, Sizable, None };

class Form : public QWidget {
    Q_OBJECT
public:
    explicit Form(const QString& name, const QString& caption, FormBorder border);

    // Twips; left and top of the frame on the desktop, width and height with the nominal frame.
    int leftTwips() const;
    int topTwips() const;
    int widthTwips() const;
    int heightTwips() const;
    void setLeftTwips(int left);
    void setTopTwips(int top);
    // A fixed window cannot be resized by the user to anything else.
    void setSizeTwips(int width, int height);
    // The size of the client area, without frame.
    void setClientSizeTwips(int width, int height);

    // Takes a stored place, "top left" in twips. A part that is no number ends the reading: the
    // top may then be set already. A place that is on no screen is not used.
    void restorePlace(const QString& stored);
    // The place as restorePlace() takes it. A window that has been neither shown nor moved gives
    // back what was stored, to the letter.
    QString place() const;
    // Whether the window has been on the screen since it took its stored place.
    bool wasShown() const { return wasShown_; }

    // The size in twips to which the window will grow, for finding it a place.
    void setRoomTwips(int width, int height);

    // Moves the window, wholly if it has room, into the part of its screen that windows may use.
    void moveIntoWorkArea();

    // A window whose place was never stored appears where it covers no other window.
    void setVisible(bool visible) override;

    // Shows the window and brings it to the front.
    void present();

    // What the close box does. Returns false when the window refused.
    bool closeByUser();

Q_SIGNALS:
    void gotFocus();  // the window has become the active one
    void lostFocus();

protected:
    // Whether the window may close. It is then hidden.
    virtual bool queryUnload(UnloadMode mode);

    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    FormBorder border_;
    bool closingByUser_ = false;
    bool wasShown_ = false;
    std::optional<QString> storedPlace_;
    QPoint restoredTo_;  // where storedPlace_ has put the window
    QSize room_;         // device-independent pixels

    void findPlace();
};

// The first place on the screen, from its top left, where a window of that size covers none of the
// taken rectangles; without one, a step further down and right for each of them.
QPoint freePlace(const QSize& size, const QList<QRect>& taken, const QRect& screen);

// Reads two numbers split by the first blank, as places and sizes are stored. Gives the count of
// numbers read, 0 to 2; what could not be read is left as it was.
int readNumberPair(const QString& text, int& first, int& second);

}  // namespace packwise
