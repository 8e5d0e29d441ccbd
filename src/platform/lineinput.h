// What is typed to a program without windows.
#pragma once

#include <QByteArray>
#include <QObject>

#include <memory>

class QSocketNotifier;

namespace packwise {

// The lines of the standard input, in UTF-8, told in the event loop. One for a process. It holds
// up nothing: a program in the background of a terminal hears what is typed once it is in the
// foreground again.
class LineInput : public QObject {
    Q_OBJECT
public:
    explicit LineInput(QObject* parent = nullptr);
    ~LineInput() override;

Q_SIGNALS:
    // Without the line's end.
    void line(const QString& text);

private:
    struct Reader;

    void take();
    void add(QByteArrayView bytes);

    QSocketNotifier* notifier_ = nullptr;  // on Unix
    std::shared_ptr<Reader> reader_;       // on Windows, which cannot watch the standard input
    QByteArray pending_;
};

}  // namespace packwise
