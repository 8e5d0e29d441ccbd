// The draft client as chat and Draft Information see it.
#pragma once

#include "companions/clientlink.h"
#include "support/test.h"

namespace packwise {

class FakeClient : public ClientLink {
public:
    QString clientName() const override { return name; }
    void send(std::string_view message) override { sent.emplace_back(message); }
    void closeConnection() override { closed = true; }

    QString name = QStringLiteral("Fox");
    std::vector<std::string> sent;
    bool closed = false;
};

}  // namespace packwise
