#include "host/host.h"
#include "platform/interrupt.h"
#include "platform/lineinput.h"
#include "platform/terminal.h"
#include "sets/cardfolder.h"

#include <QCoreApplication>
#include <QTextStream>

using packwise::HostOptions;

int main(int argc, char** argv) {
    packwise::keepStandardStreams();
    QCoreApplication application(argc, argv);
    packwise::PrintableStream toOutput(stdout);
    packwise::PrintableStream toErrors(stderr);
    QTextStream out(&toOutput);
    QTextStream errors(&toErrors);

    packwise::CommandLine<HostOptions> line =
        packwise::readHostCommandLine(QCoreApplication::arguments());
    if (!line.options) {
        (line.isError ? errors : out) << line.text << (line.isError ? "\n" : "");
        return line.isError ? 2 : 0;
    }
    if (line.options->cards.isEmpty()) {
        const packwise::sets::CardFolder folder = packwise::sets::findCardFolder();
        out << folder.words << Qt::endl;
        line.options->cards = folder.path;
    }

    packwise::Interrupt interrupt;
    packwise::Host host(*line.options, [&out](const QString& text) {
        out << text << Qt::endl;
        out.resetStatus();  // a disk that was full may have room again
    });
    QObject::connect(&interrupt, &packwise::Interrupt::interrupted, &host, &packwise::Host::quit);
    QObject::connect(
        &host, &packwise::Host::finished, &application,
        [](int status) { QCoreApplication::exit(status); }, Qt::QueuedConnection);
    if (const QString fault = host.open(); !fault.isEmpty()) {
        errors << fault << Qt::endl;
        return 1;
    }
    packwise::LineInput typed;
    QObject::connect(&typed, &packwise::LineInput::line, &host, &packwise::Host::onLine);
    return QCoreApplication::exec();
}
