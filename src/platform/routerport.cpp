#include "platform/routerport.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace packwise {

namespace {

constexpr auto kPatienceAtTheEnd = std::chrono::seconds(2);
// A router that keeps the port open no more, since it starts anew perhaps, is asked so often.
constexpr int kSecondsToAskAgain = 60;

}  // namespace

// What the object and its thread share. A router can hold the thread up for longer than the program
// wants to wait, so either may be gone before the other.
struct RouterPort::Work {
    struct Order {
        int number = 0;
        quint16 port = 0;  // 0 to take the mapping away
        int leaseSeconds = 0;
    };

    std::mutex mutex;
    std::condition_variable changed;
    RouterPort* owner = nullptr;  // none once it is gone
    Order order;                  // the latest
    int done = 0;                 // the number of the last order that was carried out

    bool isLatest(int number) {
        const std::lock_guard lock(mutex);
        return order.number == number;
    }

    // Tells the owner's thread, if there is still one.
    void tell(int number, const RouterAnswer& answer) {
        const std::lock_guard lock(mutex);
        if (owner) {
            QMetaObject::invokeMethod(
                owner, [to = owner, number, answer] { to->finish(number, answer); },
                Qt::QueuedConnection);
        }
    }

    // Waits for an order behind `after`; nothing when `seconds` have passed before.
    std::optional<Order> next(int after, int seconds) {
        std::unique_lock lock(mutex);
        const auto isNew = [&] { return order.number != after; };
        if (seconds == 0) {
            changed.wait(lock, isNew);
        } else if (!changed.wait_for(lock, std::chrono::seconds(seconds), isNew)) {
            return std::nullopt;
        }
        return order;
    }

    void setDone(int number) {
        const std::lock_guard lock(mutex);
        done = number;
        changed.notify_all();
    }

    // The thread: carries out the latest order, and renews what is open, until the owner is gone
    // and nothing is open any more.
    static void run(const std::shared_ptr<Work>& work) {
        Order order;
        FoundRouter found;
        quint16 outsidePort = 0;  // the last that was open; 0 before
        for (bool isWanted = true; isWanted;) {
            const int half = std::max(order.leaseSeconds / 2, 1);
            const int renewal = found.router ? half : std::min(half, kSecondsToAskAgain);
            const std::optional<Order> next =
                work->next(order.number, outsidePort != 0 ? renewal : 0);
            if (!next) {
                renew(*work, order, outsidePort, found);
                outsidePort = found.router ? found.answer.outsidePort : outsidePort;
                continue;
            }
            order = *next;
            if (found.router) {
                found.router->unmap();
                found.router.reset();
            }
            if (order.port != 0) {
                found = openAtRouter(order.port, order.port, order.leaseSeconds,
                                     [&] { return work->isLatest(order.number); });
                work->tell(order.number, found.answer);
            }
            outsidePort = found.router ? found.answer.outsidePort : quint16{0};
            work->setDone(order.number);
            const std::lock_guard lock(work->mutex);
            isWanted = work->owner || work->order.number != order.number;
        }
    }

    // Friends have been told `outsidePort`, so that one is wanted, also after a router was away.
    static void renew(Work& work, const Order& order, quint16 outsidePort, FoundRouter& found) {
        RouterAnswer answer;
        if (found.router) {
            answer = found.router->map(order.port, outsidePort, order.leaseSeconds);
        }
        if (answer.kind != RouterAnswer::Open) {
            // It may have been started anew, or be another one.
            found = openAtRouter(order.port, outsidePort, order.leaseSeconds,
                                 [&] { return work.isLatest(order.number); });
            answer = found.answer;
        }
        found.answer = answer;
        work.tell(order.number, answer);
    }
};

RouterPort::RouterPort(QObject* parent) : QObject(parent) {
    patience_.setSingleShot(true);
    patience_.setInterval(kPatienceMilliseconds);
    connect(&patience_, &QTimer::timeout, this, [this] {
        close();
        Q_EMIT answered(RouterAnswer{});
    });
}

RouterPort::~RouterPort() {
    if (!work_) {
        return;
    }
    std::unique_lock lock(work_->mutex);
    work_->owner = nullptr;
    work_->order = {++order_, 0, 0};
    work_->changed.notify_all();
    work_->changed.wait_for(lock, kPatienceAtTheEnd, [this] { return work_->done == order_; });
}

void RouterPort::open(quint16 port, int leaseSeconds) {
    const bool isFirst = !work_;
    if (isFirst) {
        work_ = std::make_shared<Work>();
    }
    patience_.start();
    last_ = {};
    {
        const std::lock_guard lock(work_->mutex);
        work_->owner = this;
        work_->order = {++order_, port, leaseSeconds};
        work_->changed.notify_all();
    }
    if (isFirst) {
        std::thread(&Work::run, work_).detach();
    }
}

void RouterPort::close() {
    patience_.stop();
    if (work_) {
        const std::lock_guard lock(work_->mutex);
        work_->order = {++order_, 0, 0};
        work_->changed.notify_all();
    }
}

void RouterPort::finish(int order, const RouterAnswer& answer) {
    if (order != order_) {
        return;
    }
    const RouterAnswer before = std::exchange(last_, answer);
    if (patience_.isActive()) {
        patience_.stop();
        Q_EMIT answered(answer);
    } else if (before.kind != answer.kind || before.outsideAddress != answer.outsideAddress ||
               before.outsidePort != answer.outsidePort) {
        Q_EMIT changed(answer);
    }
}

}  // namespace packwise
