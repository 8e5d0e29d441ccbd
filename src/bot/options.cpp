#include "bot/options.h"

#include "platform/version.h"
#include "protocol/framing.h"

#include <QCommandLineParser>

#include <array>
#include <cmath>

using namespace Qt::Literals;

namespace packwise {

namespace {

constexpr double kMostDelay = 3600;  // seconds

CommandLine<BotOptions> wrong(const QString& text) {
    return {std::nullopt, text + u" See --help."_s, true};
}

void addOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        u"Players for the empty seats of a draft.\n\n"
        "Joins an open Packwise server with one to eight players, one after another, drafts in\n"
        "either format, saves each player's deck and stays until the server goes. It takes the\n"
        "seats that it was told to take and no more: when the table is full it stops, and a\n"
        "player whom the host kicks does not come back, so a person can always have the seat.\n"
        "Ctrl+C leaves in order."_s);
    const BotOptions usual;
    const auto option = [](const QString& name, const QString& what, const QString& value,
                           const QString& usually) {
        return QCommandLineOption(name, what + u" ("_s + usually + u")."_s, value, usually);
    };
    parser.addOptions({
        option(u"seats"_s, u"Players to bring, 1 to 8"_s, u"N"_s, QString::number(usual.seats)),
        option(u"host"_s, u"The server's address"_s, u"ADDRESS"_s, usual.host),
        option(u"port"_s, u"The server's port"_s, u"PORT"_s, QString::number(usual.port)),
        {u"cards"_s,
         u"Where the card files are, to pick by rarity and cost (the current folder if it has any,"
         " else your card folder)."_s,
         u"FOLDER"_s},
        {u"decks"_s, u"Where to save the decks (current folder)."_s, u"FOLDER"_s, usual.decks},
        {u"picks"_s, u"Save beside each deck what its player saw and took, as NAME.picks.txt."_s},
        {u"seed"_s, u"A number; the same one drafts alike."_s, u"S"_s},
        option(u"delay"_s, u"Time to think before each answer, fractions allowed"_s, u"SECONDS"_s,
               QString::number(usual.delay / 1000.0)),
    });
    parser.addOption({{u"h"_s, u"help"_s}, u"Shows this text."_s});
    parser.addVersionOption();
}

}  // namespace

CommandLine<BotOptions> readCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments)) {
        return wrong(parser.errorText());
    }
    if (parser.isSet(u"help"_s)) {
        return {std::nullopt, parser.helpText(), false};
    }
    if (parser.isSet(u"version"_s)) {
        return {std::nullopt, versionLine(u"packwise-bot"_s), false};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return wrong(u"Unexpected argument '"_s + parser.positionalArguments().constFirst() +
                     u"'."_s);
    }

    BotOptions options;
    bool ok = false;
    options.seats = parser.value(u"seats"_s).toInt(&ok);
    if (!ok || options.seats < 1 || options.seats > kSeats) {
        return wrong(u"--seats takes a number from 1 to 8."_s);
    }
    options.host = parser.value(u"host"_s);
    if (options.host.isEmpty()) {
        return wrong(u"--host takes an address."_s);
    }
    options.port = parser.value(u"port"_s).toUShort(&ok);
    if (!ok || options.port == 0) {
        return wrong(u"--port takes a number from 1 to 65535."_s);
    }
    const double delay = parser.value(u"delay"_s).toDouble(&ok);
    if (!ok || !(delay >= 0 && delay <= kMostDelay)) {
        return wrong(u"--delay takes seconds from 0 to 3600."_s);
    }
    options.delay = static_cast<int>(std::lround(delay * 1000));
    if (parser.isSet(u"seed"_s)) {
        options.seed = parser.value(u"seed"_s).toULongLong(&ok);
        if (!ok) {
            return wrong(u"--seed takes a whole number."_s);
        }
    }
    options.cards = parser.value(u"cards"_s);
    options.decks = parser.value(u"decks"_s);
    options.picks = parser.isSet(u"picks"_s);
    return {options, {}, false};
}

}  // namespace packwise
