#include "bot/botseat.h"

#include "bot/deckwriter.h"
#include "engine/picktext.h"
#include "platform/codepage.h"
#include "platform/timestamp.h"
#include "platform/wholefile.h"

#include <QDateTime>

using namespace Qt::Literals;

namespace packwise {

namespace {

constexpr int kKeepAlive = 1000;   // milliseconds
constexpr int kFarewell = 500;     // milliseconds
constexpr int kPatience = 20'000;  // milliseconds

}  // namespace

BotSeat::BotSeat(const BotOptions& options, CardBook& book, std::uint64_t seed, Say say,
                 QObject* parent)
    : QObject(parent),
      options_(options),
      say_(std::move(say)),
      player_(*this, book, seed, options.delay) {
    thinking_.setSingleShot(true);
    thinking_.setTimerType(Qt::PreciseTimer);
    patience_.setSingleShot(true);
    patience_.setInterval(kPatience);
    farewell_.setSingleShot(true);
    farewell_.setInterval(kFarewell);
    keepAlive_.setObjectName(u"keepAlive"_s);
    keepAlive_.setInterval(kKeepAlive);
    connect(&thinking_, &QTimer::timeout, this, [this] { player_.onTimer(); });
    connect(&keepAlive_, &QTimer::timeout, this, [this] { player_.onSecond(); });
    connect(&patience_, &QTimer::timeout, this, &BotSeat::onGone);
    connect(&farewell_, &QTimer::timeout, this, &BotSeat::onGone);
    connect(&socket_, &Socket::connected, this, [this] { hasConnected_ = true; });
    connect(&socket_, &Socket::dataArrival, this, &BotSeat::onData);
    connect(&socket_, &Socket::peerClosed, this, &BotSeat::onGone);
    connect(&socket_, &Socket::failed, this, &BotSeat::onGone);
}

void BotSeat::join(const std::string& name) {
    player_.begin(name);
    alive_ = true;
    hasConnected_ = false;
    settled_ = false;
    socket_.setRemoteHost(options_.host);
    socket_.setRemotePort(options_.port);
    keepAlive_.start();
    patience_.start();
    socket_.connectToHost();
}

void BotSeat::leave() {
    if (!alive_ || farewell_.isActive()) {
        return;
    }
    send(to_server::Drop{}.write());
    thinking_.stop();
    keepAlive_.stop();
    farewell_.start();
}

void BotSeat::onData() {
    const std::string bytes = socket_.getData();
    if (!alive_ || farewell_.isActive()) {
        return;
    }
    player_.receive(bytes);
    // A server may close in the same breath.
    if (!settled_ && player_.knowsRoster()) {
        settled_ = true;
        patience_.stop();
        Q_EMIT settled();
    }
}

void BotSeat::onGone() {
    if (alive_) {
        player_.onLinkLost();
    }
}

void BotSeat::ended() {
    alive_ = false;
    socket_.close();
    thinking_.stop();
    keepAlive_.stop();
    patience_.stop();
    farewell_.stop();
    // Whoever hears of it may join anew, which must not happen inside the player's own handler.
    QMetaObject::invokeMethod(this, &BotSeat::over, Qt::QueuedConnection);
}

void BotSeat::send(std::string_view message) {
    socket_.sendData(message);
}

void BotSeat::startTimer(int milliseconds) {
    thinking_.start(milliseconds);
}

void BotSeat::stopTimer() {
    thinking_.stop();
}

void BotSeat::report(std::string_view line) {
    say_(fromBytes(player_.name()) + u": "_s + fromBytes(line));
}

std::optional<std::int32_t> BotSeat::saveDeck(std::string_view name,
                                              const std::vector<std::string>& deck,
                                              const std::vector<std::string>& sideboard,
                                              const PickLog& picks) {
    const QString who = fromBytes(name) + u": "_s;
    const auto result =
        writeDeck(options_.decks, name, QDateTime::currentDateTime(), deck, sideboard);
    const auto* saved = std::get_if<SavedDeck>(&result);
    if (!saved) {
        hasFailed_ = true;
        say_(who + std::get<QString>(result));
        return std::nullopt;
    }
    say_(who + u"deck saved "_s + saved->path + u" code "_s + QString::number(saved->code));
    if (options_.picks) {
        savePicks(saved->path, picks);
    }
    return saved->code;
}

void BotSeat::savePicks(const QString& deckPath, PickLog picks) {
    stampPicks(picks, begun_);
    const QString path = deckBase(deckPath) + fromBytes(kPickTextEnding);
    const QString reason = writeWholeFile(path, writePicks(picks));
    if (!reason.isEmpty()) {
        hasFailed_ = true;
        say_(fromBytes(player_.name()) + u": cannot save the picks as "_s + path + u": "_s +
             reason);
    }
}

}  // namespace packwise
