#include "app/program.h"
#include "platform/look.h"

#include <QApplication>

int main(int argc, char** argv) {
    packwise::chooseEventLoop();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("packwise"));
    QApplication::setDesktopFileName(QStringLiteral("packwise"));
    packwise::applyLook(application);
    packwise::Program program;
    QObject::connect(&program, &packwise::Program::hasEnded, &application,
                     [] { QCoreApplication::exit(0); });
    program.start();
    return QApplication::exec();
}
