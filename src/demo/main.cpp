#include "demo/demotable.h"
#include "platform/display.h"
#include "sets/samplesets.h"
#include "widgets/look.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

using namespace packwise;
using namespace Qt::Literals::StringLiterals;

namespace {

// Without a display there is nothing to raise, and no need to say so at each window.
void passOn(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (!text.startsWith(u"This plugin does not support"_s)) {
        QTextStream(stderr) << text << u'\n';
    }
}

void tellResult(const DemoTable& table, const QDir& output, Narrator& narrator) {
    narrator.tell(u"\nSeat  Name   Deck file        Colours          Code"_s);
    int number = 0;
    for (const auto& seat : table.seats()) {
        narrator.tell(u"%1  %2 %3 %4 %5"_s.arg(++number, 4)
                          .arg(seat->name, -6)
                          .arg(output.relativeFilePath(seat->deckFile), -16)
                          .arg(seat->colors, -15)
                          .arg(seat->code, 5));
    }
    narrator.tell(u"\nDecks:    %1/decks"_s.arg(output.path()));
    narrator.tell(u"Pictures: %1/pictures"_s.arg(output.path()));
}

// The exit status: 0 when the codes are sound.
int playDemo(const DemoOptions& options, const QTemporaryDir& work) {
    QTextStream errors(stderr);
    const QDir output(QDir(options.into).absolutePath());
    if (!output.mkpath(u"decks"_s) || !output.mkpath(u"pictures"_s) || !work.isValid()) {
        errors << u"packwise-demo: cannot make the folder %1\n"_s.arg(output.path());
        return 1;
    }
    const QStringList names = sets::buildSampleSets(work.path());
    if (names.size() != 2 || !QDir::setCurrent(work.path())) {
        errors << "packwise-demo: cannot write the card files of the sample sets\n";
        return 1;
    }
    int status = 1;
    try {
        Narrator narrator;
        narrator.tell(u"A demonstration draft of eight, seed %1."_s.arg(options.seed));
        const Pictures pictures(output.filePath(u"pictures"_s));
        DemoTable table(options, work.path(), names, output.filePath(u"decks"_s), pictures,
                        narrator);
        table.play();
        tellResult(table, output, narrator);
        narrator.tell(u"Played in %1 seconds."_s.arg(narrator.seconds(), 0, 'f', 1));
        status = 0;
        table.linger();
    } catch (const DemoFailure& failure) {
        if (status != 0) {
            errors << u"packwise-demo: %1\n"_s.arg(QString::fromUtf8(failure.what()));
        }
    }
    QDir::setCurrent(output.path());  // the work folder goes
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir work;
    if (playsOffscreen(argc, argv)) {
        hideWindows();
        qInstallMessageHandler(passOn);
    }
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(work.path()));  // else one is made, and stays
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    applyLook(application);

    CommandLine<DemoOptions> line = readDemoCommandLine(QApplication::arguments());
    if (!line.options) {
        QTextStream(line.isError ? stderr : stdout) << line.text << (line.isError ? "\n" : "");
        return line.isError ? 1 : 0;
    }
    line.options->watched = QApplication::platformName() != u"offscreen"_s;
    return playDemo(*line.options, work);
}
