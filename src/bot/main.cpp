#include "bot/options.h"
#include "bot/party.h"
#include "platform/interrupt.h"
#include "platform/terminal.h"
#include "sets/cardfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>
#include <QTimer>

using namespace Qt::Literals;
using packwise::BotOptions;

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    packwise::PrintableStream toOutput(stdout);
    packwise::PrintableStream toErrors(stderr);
    QTextStream out(&toOutput);
    QTextStream errors(&toErrors);

    packwise::CommandLine<BotOptions> line = packwise::readCommandLine(application.arguments());
    if (!line.options) {
        (line.isError ? errors : out) << line.text << (line.isError ? "\n" : "");
        return line.isError ? 1 : 0;
    }
    BotOptions& options = *line.options;
    if (!QDir().mkpath(options.decks)) {
        errors << u"Cannot make the folder "_s << options.decks << u'\n';
        return 1;
    }
    if (options.cards.isEmpty()) {
        const packwise::sets::CardFolder folder = packwise::sets::findCardFolder();
        out << folder.words << Qt::endl;
        options.cards = folder.path;
    }

    packwise::Interrupt interrupt;
    packwise::Party party(options, [&out](const QString& text) { out << text << Qt::endl; });
    QObject::connect(&interrupt, &packwise::Interrupt::interrupted, &party,
                     &packwise::Party::leave);
    QObject::connect(&party, &packwise::Party::finished, &application,
                     [](int status) { QCoreApplication::exit(status); });
    QTimer::singleShot(0, &party, &packwise::Party::start);
    return application.exec();
}
