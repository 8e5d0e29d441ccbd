#include "draft/commands.h"
#include "platform/terminal.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    packwise::PrintableStream toOutput(stdout);
    packwise::PrintableStream toErrors(stderr);
    QTextStream out(&toOutput);
    QTextStream errors(&toErrors);
    return packwise::runDraftCommand(QCoreApplication::arguments(), out, errors);
}
