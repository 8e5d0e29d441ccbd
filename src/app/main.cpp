#include "app/program.h"
#include "platform/interrupt.h"
#include "platform/terminal.h"
#include "platform/userfolders.h"
#include "platform/version.h"
#include "sets/cardfolder.h"
#include "widgets/look.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace {

// What is printed in place of a start; empty when the command line does not ask for it.
std::string answerTo(int argc, char** argv) {
    const std::string title = packwise::versionLine(QStringLiteral("packwise")).toStdString();
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--version") {
            return title;
        }
        if (word == "--help") {
            return title +
                   "\n"
                   "Hosts and joins live drafts of Magic: the Gathering. Start it without "
                   "options;\n"
                   "a window then asks whether to connect to a draft or to start one. The card\n"
                   "sets are those of the folder in which it starts; if that holds none (files\n"
                   "*.pw), those of your own card folder, made with two sample sets at first.\n"
                   "\n"
                   "  --records FOLDER   where the record of a draft that is hosted here goes "
                   "once\n"
                   "                     it is over; packwise-draft shows and checks it\n"
                   "  --no-records       keeps no record\n"
                   "  --version          tells the version\n"
                   "  --help             shows this text\n"
                   "\n"
                   "packwise-sets makes card sets; packwise-bot brings players for empty seats.\n";
        }
    }
    return {};
}

// The folder that the command line names for records, absolute; empty for none. Other words are
// passed over.
QString recordFolder(const QStringList& arguments) {
    QString folder = packwise::userRecordFolder();
    const QString option = QStringLiteral("--records");
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments[i] == QStringLiteral("--no-records")) {
            folder.clear();
        } else if (arguments[i] == option && i + 1 < arguments.size()) {
            folder = arguments[++i];
        } else if (arguments[i].startsWith(option + u'=')) {
            folder = arguments[i].mid(option.size() + 1);
        }
    }
    return folder.isEmpty() ? folder : QDir(folder).absolutePath();
}

}  // namespace

int main(int argc, char** argv) {
    // Before anything that needs a display.
    if (const std::string answer = answerTo(argc, argv); !answer.empty()) {
        packwise::joinTerminal();
        packwise::StandardStream out(stdout);
        return out.write(answer.c_str()) < 0 ? 1 : 0;
    }
    packwise::chooseEventLoop();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("packwise"));
    QApplication::setDesktopFileName(QStringLiteral("packwise"));
    packwise::applyLook(application);
    const QString startFolder = QDir::currentPath();
    const QString records = recordFolder(QApplication::arguments());
    const packwise::sets::CardFolder cards = packwise::sets::findCardFolder();
    if (!QDir::setCurrent(cards.path)) {
        qWarning("cannot enter the folder %s", qUtf8Printable(cards.path));
    }
    packwise::Program program(packwise::SettingsStore::userFile(), std::random_device{}(), records);
    program.setStartFolder(startFolder);
    QObject::connect(&program, &packwise::Program::hasEnded, &application,
                     [] { QCoreApplication::exit(0); });
    // The system's wish to end takes the same way out, so that nothing stays open at a router.
    packwise::Interrupt interrupt;
    QObject::connect(&interrupt, &packwise::Interrupt::interrupted, &program,
                     &packwise::Program::end);
    program.start();
    return QApplication::exec();
}
