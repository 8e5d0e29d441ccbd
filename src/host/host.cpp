#include "host/host.h"

#include "platform/descriptors.h"
#include "platform/reachwords.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

// A listener, a link for each seat, and one for who is turned away.
constexpr int kDescriptorsATable = kSeats + 2;

}  // namespace

Host::Host(HostOptions options, Say say, QObject* parent)
    : QObject(parent), options_(std::move(options)), say_(std::move(say)) {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device()};
    generator_.seed(seed);
}

QString Host::open() {
    QString fault = faultOfSets(options_);
    if (!fault.isEmpty()) {
        return fault;
    }
    if (!allowDescriptors(options_.tables * kDescriptorsATable)) {
        return u"The system does not allow so many connections. Take fewer --tables, or raise "
               "the limit of open files (ulimit -n)."_s;
    }
    for (int i = 0; i < options_.tables; ++i) {
        const auto port = static_cast<quint16>(options_.port + i);
        auto table = std::make_unique<HostTable>(
            options_, port,
            [this] { return std::uniform_real_distribution<double>(0, 1)(generator_); },
            [this, i](const QString& line) { report(i + 1, line); });
        if (!table->open()) {
            tables_.clear();
            return u"Port %1 cannot be opened (%2). Choose another with --port."_s.arg(port).arg(
                table->listenFault());
        }
        connect(table.get(), &HostTable::over, this, &Host::finishIfOver);
        tables_.push_back(std::move(table));
    }
    say_(u"Listening on port %1"_s.arg(options_.port) +
         (options_.tables > 1 ? u" to %1"_s.arg(options_.port + options_.tables - 1) : QString()) +
         u" for a draft of "_s + options_.sets.join(u" - "_s) + u". Type help for the commands."_s);
    const QList<OwnAddress> own = addresses();
    say_(wordsFor(own, u"Players"_s));
    if (options_.opensRouter) {
        openRouter(own.isEmpty() ? QString() : own.constFirst().address);
    }
    return {};
}

// Those that the tables listen on.
QList<OwnAddress> Host::addresses() const {
    QList<OwnAddress> own = ownAddresses();
    if (!options_.address.isEmpty()) {
        own.removeIf([this](const OwnAddress& each) { return each.address != options_.address; });
    }
    return own;
}

void Host::openRouter(const QString& own) {
    for (const auto& table : tables_) {
        routerPorts_.push_back(std::make_unique<RouterPort>());
        RouterPort& port = *routerPorts_.back();
        const auto tell =
            [this, own, inside = table->port(), number = static_cast<int>(routerPorts_.size())](
                const RouterAnswer& answer) { report(number, wordsFor(answer, own, inside)); };
        connect(&port, &RouterPort::answered, this, tell);
        connect(&port, &RouterPort::changed, this, tell);
        port.open(table->port());
    }
}

void Host::report(int table, const QString& line) const {
    const QString time = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    say_(time + (options_.tables > 1 ? u"  table %1: "_s.arg(table) : u"  "_s) + line);
}

void Host::quit() {
    for (const auto& table : tables_) {
        table->quit();
    }
}

void Host::finishIfOver() {
    const auto isOver = [](const auto& table) { return table->isOver(); };
    if (isFinished_ || !std::all_of(tables_.begin(), tables_.end(), isOver)) {
        return;
    }
    isFinished_ = true;
    for (const auto& table : tables_) {
        table->keepRecord();
    }
    for (const auto& port : routerPorts_) {
        port->close();  // all at once, before the first one is waited for
    }
    routerPorts_.clear();
    const bool hasFailed = std::any_of(tables_.begin(), tables_.end(),
                                       [](const auto& table) { return table->hasFailed(); });
    Q_EMIT finished(hasFailed ? 1 : 0);
}

}  // namespace packwise
