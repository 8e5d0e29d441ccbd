// What the console needs of a client and its chat window in the same process.
#pragma once

#include <QString>

namespace packwise {

class LocalClient {
public:
    virtual ~LocalClient() = default;

    // Shows the draft client under that player name and connects it to that port of this machine.
    virtual void start(const QString& name, quint16 port) = 0;

    // Shows a line of this program's own in the chat window; it goes to nobody.
    virtual void showNote(const QString& line) = 0;
};

}  // namespace packwise
