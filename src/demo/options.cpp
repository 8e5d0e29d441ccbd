#include "demo/options.h"

#include "platform/display.h"
#include "platform/version.h"

#include <QCommandLineParser>

#include <algorithm>
#include <random>
#include <string_view>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

CommandLine<DemoOptions> readDemoCommandLine(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Plays a whole draft of eight with the windows of Packwise, and keeps the decks and "
        u"pictures of the windows."_s);
    const QCommandLineOption into(u"into"_s,
                                  u"Put decks and pictures there; else into ./demo-output."_s,
                                  u"FOLDER"_s, DemoOptions().into);
    const QCommandLineOption rochester(u"rochester"_s, u"Play a Rochester draft, not a Booster."_s);
    const QCommandLineOption seed(u"seed"_s, u"Play the draft of that number again."_s, u"S"_s);
    const QCommandLineOption offscreen(u"offscreen"_s,
                                       u"Show nothing, even where there is a display."_s);
    const QCommandLineOption help(u"help"_s, u"Tell of these options."_s);
    const QCommandLineOption version(u"version"_s, u"Tell the version."_s);
    parser.addOptions({into, rochester, seed, offscreen, help, version});

    const auto wrong = [](const QString& text) {
        return CommandLine<DemoOptions>{std::nullopt, u"packwise-demo: "_s + text, true};
    };
    if (!parser.parse(arguments)) {
        return wrong(parser.errorText());
    }
    if (parser.isSet(help)) {
        return {std::nullopt, parser.helpText(), false};
    }
    if (parser.isSet(version)) {
        return {std::nullopt, versionLine(u"packwise-demo"_s), false};
    }
    if (!parser.positionalArguments().isEmpty()) {
        return wrong(u"what is \"%1\"? See --help"_s.arg(parser.positionalArguments().first()));
    }
    DemoOptions options;
    options.into = parser.value(into);
    options.rochester = parser.isSet(rochester);
    options.watched = !parser.isSet(offscreen);
    bool isNumber = true;
    options.seed = parser.isSet(seed) ? parser.value(seed).toULongLong(&isNumber)
                                      : std::random_device{}() % 1'000'000;
    if (!isNumber) {
        return wrong(u"--seed takes a number"_s);
    }
    return {options, {}, false};
}

bool playsOffscreen(int argc, const char* const* argv) {
    const bool asked = std::any_of(argv, argv + argc, [](const char* each) {
        return std::string_view(each) == "--offscreen";
    });
    return asked || !hasDisplay();
}

}  // namespace packwise
