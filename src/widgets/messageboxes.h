// Modal message boxes. A test puts a hook in their place and answers for the user.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace packwise {

// "Packwise" and the version of the protocol that it speaks: the title of the start window and of
// the program's notices.
QString programTitle();

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Exclamation };

struct Box {
    QString text;
    QString title;
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
};

class MessageBoxes {
public:
    // Answers true for OK or Yes. It is called while the box is "open" and may run the event loop.
    using Hook = std::function<bool(const Box&)>;

    void setHook(Hook hook);

    // Shows the box over `parent` (may be null) and waits. True for OK or Yes; false for No, which
    // a Yes-No box has as its default, and for one that is closed without an answer.
    bool show(QWidget* parent, const Box& box);

    // An error notice: title "Error", exclamation icon, OK.
    void error(QWidget* parent, const QString& text);

private:
    Hook hook_;
};

}  // namespace packwise
