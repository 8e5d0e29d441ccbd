#include "platform/freeport.h"

#include <QTcpServer>

#include <random>

namespace packwise {

quint16 freePort() {
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        const auto port = static_cast<quint16>(2000 + std::random_device{}() % 7900);
        if (QTcpServer probe; probe.listen(QHostAddress::AnyIPv4, port)) {
            return port;
        }
    }
    return 0;
}

}  // namespace packwise
