#include "platform/terminal.h"
#include "sets/commands.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication app(argc, argv);
    packwise::PrintableStream toOutput(stdout);
    packwise::PrintableStream toErrors(stderr);
    QTextStream out(&toOutput);
    QTextStream err(&toErrors);
    return packwise::sets::run(QCoreApplication::arguments(), out, err);
}
