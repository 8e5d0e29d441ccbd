// What is typed to a program without windows.
#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace packwise {

// The lines of the standard input, in UTF-8, told in the event loop. One for a process. It holds
// up nothing: a program in the background of a terminal hears what is typed once it is in the
// foreground again. On a system where the standard input cannot be watched it stays silent.
class LineInput : public QObject {
    Q_OBJECT
public:
    explicit LineInput(QObject* parent = nullptr);

Q_SIGNALS:
    // Without the line's end.
    void line(const QString& text);

private:
    void take();

    QSocketNotifier* notifier_ = nullptr;
    QByteArray pending_;
};

}  // namespace packwise
