// What the chat and Draft Information need of the draft client.
#pragma once

#include <QString>

#include <string_view>

namespace packwise {

class ClientLink {
public:
    virtual ~ClientLink() = default;

    virtual QString clientName() const = 0;

    // Writes a whole message to the server; dropped when there is no connection.
    virtual void send(std::string_view message) = 0;

    // Closes the connection to the server.
    virtual void closeConnection() = 0;
};

}  // namespace packwise
