// A port that the router of the home network keeps open for this program, worked on a thread of its
// own.
#pragma once

#include "platform/router.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace packwise {

class RouterPort : public QObject {
    Q_OBJECT
public:
    static constexpr int kLeaseSeconds = 3600;
    static constexpr int kPatienceMilliseconds = 10'000;

    explicit RouterPort(QObject* parent = nullptr);
    // Takes the mapping away, and waits two seconds for it at most.
    ~RouterPort() override;

    // Asks the router to let others in to that port of this machine. An answer comes within
    // kPatienceMilliseconds, unless close() is called. The lease is renewed at its half.
    void open(quint16 port, int leaseSeconds = kLeaseSeconds);
    // No answer will come any more, and a mapping is taken away, also one that is still to be made.
    void close();

Q_SIGNALS:
    // What came of open().
    void answered(const RouterAnswer& answer);
    // What came of a renewal, where it is not what it was: another outside port or address, or no
    // longer open at all.
    void changed(const RouterAnswer& answer);

private:
    struct Work;

    void finish(int order, const RouterAnswer& answer);

    QTimer patience_;
    int order_ = 0;  // counts open() and close(), so that a late answer is known as one
    RouterAnswer last_;
    std::shared_ptr<Work> work_;
};

}  // namespace packwise
