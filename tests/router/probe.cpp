// Opens a port at the router and says what comes of it, until its input ends:
// router_probe PORT LEASE_SECONDS
#include "platform/lineinput.h"
#include "platform/reachwords.h"
#include "platform/routerport.h"

#include <QCoreApplication>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    using namespace packwise;
    const QCoreApplication application(argc, argv);
    const auto port = static_cast<quint16>(std::stoi(argc > 2 ? argv[1] : "5252"));
    RouterPort router;
    const auto tell = [port](const RouterAnswer& answer) {
        std::puts(qPrintable(wordsFor(answer, QStringLiteral("this machine"), port)));
        std::fflush(stdout);
    };
    QObject::connect(&router, &RouterPort::answered, tell);
    QObject::connect(&router, &RouterPort::changed, tell);
    router.open(port, std::stoi(argc > 2 ? argv[2] : "3600"));
    LineInput typed;
    QObject::connect(&typed, &LineInput::line, [](const QString&) { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}
