// The user's wish to end a program without windows: Ctrl+C, a closed terminal, or a request of the
// system to stop.
#pragma once

#include <QObject>

class QSocketNotifier;

namespace packwise {

// One for a process, made after the application. The first wish is told as a signal in the event
// loop; a second one ends the process at once. On Windows the process has five seconds for its end
// when its console is closed.
class Interrupt : public QObject {
    Q_OBJECT
public:
    explicit Interrupt(QObject* parent = nullptr);
    ~Interrupt() override;

Q_SIGNALS:
    void interrupted();

private:
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace packwise
