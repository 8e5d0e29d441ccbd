// The life of a table: from the open port over the draft to the port that is open again.
#include "host/hosttable.h"

#include "platform/codepage.h"
#include "protocol/messages.h"

#include <QTimer>

#include <algorithm>
#include <exception>
#include <utility>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kSecondsOfWarning = 10;
constexpr int kSecondsTillToldOfWaiting = 120;
constexpr int kMinutesOfLastWarning[] = {5, 1};
constexpr int kLeavingMilliseconds = 2000;
constexpr qsizetype kLongestLine = 500;  // of what the host says

}  // namespace

HostTable::HostTable(const HostOptions& options, quint16 port, std::function<double()> draw,
                     Report report, QObject* parent)
    : QObject(parent),
      options_(options),
      port_(port),
      draw_(std::move(draw)),
      report_(std::move(report)),
      seconds_(new QTimer(this)),
      ticks_(new QTimer(this)),
      turns_(new QTimer(this)),
      pings_(new QTimer(this)),
      leaving_(new QTimer(this)) {
    makeSockets();
    makeServer();
    seconds_->setInterval(1000);
    ticks_->setInterval(2000);
    pings_->setInterval(1000);
    turns_->setSingleShot(true);
    leaving_->setSingleShot(true);
    connect(seconds_, &QTimer::timeout, this, &HostTable::onSecond);
    connect(ticks_, &QTimer::timeout, this, &HostTable::onTick);
    connect(turns_, &QTimer::timeout, this, &HostTable::onTurn);
    connect(pings_, &QTimer::timeout, this, &HostTable::onPingSecond);
    connect(leaving_, &QTimer::timeout, this, &HostTable::endLeaving);
}

void HostTable::makeSockets() {
    for (std::size_t i = 0; i < sockets_.size(); ++i) {
        sockets_[i] = new Socket(this);
        const int num = static_cast<int>(i);
        if (num < 1 || num > kSeats) {
            continue;
        }
        const auto arrived = [this, num] { run([&] { server_->onArrival(num); }); };
        connect(sockets_[i], &Socket::dataArrival, this, arrived);
        connect(sockets_[i], &Socket::peerClosed, this, arrived);
    }
    sockets_[0]->setLocalAddress(options_.address);
    connect(sockets_[0], &Socket::connectionRequest, this,
            [this](ConnectionRequest& request) { run([&] { links_.admit(*server_, request); }); });
}

void HostTable::makeServer() {
    std::unique_ptr<RecordKeeper> before =
        std::exchange(record_, std::make_unique<RecordKeeper>(options_.records, report_, this));
    server_.reset(new DraftServer(links_, *this, *this, draw_, record_->observer()));
    if (before) {
        before.release()->retire();
    }
    told_ = DraftServer::State::Lobby;
    dealsAlongLists_ = options_.triesRealPacks;
    ticks_->stop();
    turns_->stop();
    secondsToStart_ = 0;
    whoLeftTheCount_.clear();
    startIsRefused_ = false;
    step_ = server_->step();
    secondsSinceDraft_ = 0;
    pinged_ = 0;
    names_.fill({});
    codes_.fill({});
}

bool HostTable::open() {
    sockets_[0]->setLocalPort(port_);
    if (!sockets_[0]->listen()) {
        return false;
    }
    phase_ = Phase::Serving;
    seconds_->start();
    return true;
}

void HostTable::run(const std::function<void()>& work) {
    if (phase_ == Phase::Over) {
        return;
    }
    try {
        work();
        reportProgress();
    } catch (const std::exception& error) {
        fail(QString::fromLocal8Bit(error.what()));
    }
    if (phase_ == Phase::Leaving && !isAnybodyThere()) {
        leaving_->start(0);
    }
}

void HostTable::fail(const QString& why) {
    report_(u"The table cannot go on: "_s + why);
    hasFailed_ = true;
    leave();
}

void HostTable::reportProgress() {
    if (std::exchange(step_, server_->step()) != server_->step()) {
        secondsInStep_ = 0;
    }
    const DraftServer::State before = std::exchange(told_, server_->state());
    if (before == told_ || phase_ != Phase::Serving) {
        return;
    }
    secondsSinceDraft_ = 0;
    if (told_ == DraftServer::State::Over) {
        report_(u"The draft is over; the players build their decks."_s);
    } else if (told_ == DraftServer::State::Halted) {
        report_(u"A player is lost, and that ends the draft."_s);
    }
}

void HostTable::onSecond() {
    if (phase_ == Phase::Closed && open()) {
        report_(u"Port "_s + QString::number(port_) + u" is open again."_s);
    }
    run([this] { server_->poke(); });
    linesThisSecond_ = 0;
    if (const int leftOut = std::exchange(linesLeftOut_, 0); leftOut > 0) {
        report_(u"%1 more lines are left out."_s.arg(leftOut));
    }
    if (phase_ != Phase::Serving) {
        return;
    }
    switch (server_->state()) {
        case DraftServer::State::Lobby:
            run([this] { countDown(); });
            break;
        case DraftServer::State::Drafting:
            lookAtDraft();
            break;
        default:
            run([this] { lookAtTheEnd(); });
            break;
    }
}

void HostTable::onPingSecond() {
    if (pinged_ == 0) {
        pings_->stop();
    } else if (!server_->pingSecond()) {
        report_(nameOf(std::exchange(pinged_, 0) - 1) + u" does not answer."_s);
    }
}

void HostTable::onTick() {
    run([this] { server_->tick(); });
}

void HostTable::onTurn() {
    run([this] { server_->turn(); });
}

void HostTable::countDown() {
    const int seated = static_cast<int>(server_->namedSeats().size());
    if (secondsToStart_ > 0 && !whoLeftTheCount_.isEmpty()) {
        secondsToStart_ = 0;
        tell(whoLeftTheCount_ + u" has left; the start is put off."_s);
        report_(u"The start is put off."_s);
    } else if (secondsToStart_ > 0 && --secondsToStart_ == 0) {
        const QString fault = start();
        if (!fault.isEmpty()) {
            startIsRefused_ = true;
            tell(u"The host's card data cannot be read; the draft does not start."_s);
            report_(u"The draft does not start. "_s + fault);
        }
        return;
    }
    whoLeftTheCount_.clear();
    if (secondsToStart_ == 0 && seated >= options_.players && !startIsRefused_) {
        secondsToStart_ = kSecondsOfWarning;
        tell(u"The draft starts in %1 seconds."_s.arg(kSecondsOfWarning));
        report_(u"%1 players are seated; the draft starts in %2 seconds."_s.arg(seated).arg(
            kSecondsOfWarning));
    }
}

void HostTable::lookAtDraft() {
    if (!server_->canGoOn()) {
        report_(u"Everybody has gone; the draft is given up."_s);
        leave();
        return;
    }
    if (++secondsInStep_ == kSecondsTillToldOfWaiting && !waitedFor().isEmpty()) {
        report_(u"The draft has waited two minutes for "_s + waitedFor() +
                u". \"kick NAME\" has a seat pick at random."_s);
    }
}

void HostTable::lookAtTheEnd() {
    const int secondsLeft = options_.lingerMinutes * 60 - secondsSinceDraft_++;
    if (hasFailed_ || !isAPlayerThere() || secondsLeft <= 0) {
        leave();
        return;
    }
    for (const int minutes : kMinutesOfLastWarning) {
        if (secondsLeft == minutes * 60) {
            tell(u"The table closes in %1; save your deck."_s.arg(
                minutes == 1 ? u"a minute"_s : u"%1 minutes"_s.arg(minutes)));
        }
    }
}

QString HostTable::start() {
    if (phase_ != Phase::Serving) {
        return u"The table is not open."_s;
    }
    if (server_->state() != DraftServer::State::Lobby) {
        return u"The draft has begun already."_s;
    }
    if (server_->namedSeats().empty()) {
        return u"Nobody is seated yet."_s;
    }
    // Card data that turns out to be unusable in a later round would cost everybody the draft.
    QString fault = faultOfSets(options_);
    if (fault.isEmpty()) {
        secondsToStart_ = 0;
        run([this] { startDraft(); });
    }
    return fault;
}

void HostTable::startDraft() {
    server_->start();
    sockets_[0]->close();
    if (!server_->canGoOn()) {
        return;
    }
    server_->seatByChance();
    reportStart();
    if (server_->canGoOn()) {
        server_->deal();
    }
}

void HostTable::kick(int num) {
    run([&] { server_->kick(num); });
}

bool HostTable::ping(int num) {
    bool isUnderWay = false;
    if (pinged_ == 0) {
        sincePing_.start();
        run([&] { isUnderWay = server_->ping(num); });
    }
    if (isUnderWay) {
        pinged_ = num;
        pings_->start();
    }
    return isUnderWay;
}

void HostTable::say(const QString& text) {
    tell(u"Host: "_s + text);
}

void HostTable::tell(const QString& line) {
    QString shown = line.left(kLongestLine);
    shown.replace(QLatin1Char(kTerminator), u'-');
    run([&] { server_->broadcast(to_client::Chat{{toBytes(u'*' + shown + u'*')}}.write()); });
}

void HostTable::quit() {
    quits_ = true;
    if (phase_ == Phase::Closed) {
        endLeaving();
    } else {
        leave();
    }
}

void HostTable::leave() {
    if (phase_ == Phase::Leaving || phase_ == Phase::Over) {
        return;
    }
    reportCodes();
    record_->giveUp();
    phase_ = Phase::Leaving;
    sockets_[0]->close();
    ticks_->stop();
    leaving_->start(kLeavingMilliseconds);
    run([this] { server_->sayGoodbye(); });
}

void HostTable::endLeaving() {
    for (Socket* socket : sockets_) {
        socket->close();
    }
    if (!options_.again || hasFailed_ || quits_) {
        phase_ = Phase::Over;
        seconds_->stop();
        turns_->stop();
        Q_EMIT over();
        return;
    }
    makeServer();
    phase_ = Phase::Closed;
    if (open()) {
        report_(u"The table is open anew on port "_s + QString::number(port_) + u'.');
    } else {
        report_(u"Port "_s + QString::number(port_) + u" cannot be opened again ("_s +
                listenFault() + u"); it is tried every second."_s);
    }
}

bool HostTable::isAnybodyThere() const {
    return std::any_of(sockets_.begin() + 1, sockets_.end(),
                       [](const Socket* socket) { return socket->state() != Socket::Closed; });
}

bool HostTable::isAPlayerThere() const {
    return std::any_of(server_->players().begin(), server_->players().end(),
                       [this](int seat) { return !server_->seat(seat).dropped; });
}

}  // namespace packwise
