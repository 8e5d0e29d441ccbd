// What the console needs of a client that runs in the same process.
#pragma once

#include <QString>

namespace packwise {

class LocalClient {
public:
    virtual ~LocalClient() = default;

    // Shows the draft client under that player name and connects it to that port of this machine.
    virtual void start(const QString& name, quint16 port) = 0;
};

}  // namespace packwise
