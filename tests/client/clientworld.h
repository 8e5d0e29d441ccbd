// A draft client with its real companions, and a scripted server on a real socket.
#pragma once

#include "client/cardlist.h"
#include "client/colorbars.h"
#include "client/frmclient.h"
#include "client/frmconnect.h"
#include "client/passingarrow.h"
#include "companions/clientlink.h"
#include "companions/frmcard.h"
#include "companions/frmmessage.h"
#include "companions/frmsecurity.h"
#include "deck/decklink.h"
#include "deck/frmdeckbuild.h"
#include "deck/frmsave.h"
#include "support/fakeshell.h"
#include "support/peer.h"
#include "widgets/lazy.h"

namespace packwise {

class ClientWorld : public ClientLink, public DeckLink {
public:
    ClientWorld();

    // Connects the client, called Ann, to the server as player `number` of the table. Its clocks
    // only tick when their handlers are called.
    void join(int number = 1);

    // join(), and a draft of Ann, Bob and Cid at the positions 2, 0 and 1. `info` is the body of
    // INFO.
    void start(std::string_view info);

    // Says messages, each with its "~", waits until the client has handled them all, and fails if
    // it wrote anything.
    void tell(std::string_view messages);

    FakeShell shell;
    QTcpServer listener;
    Peer server;
    double nextDraw = 0;

    Lazy<FrmMessage> frmMessage;
    Lazy<FrmSave> frmSave;
    Lazy<FrmDeckBuild> frmDeckBuild;
    Lazy<FrmSecurity> frmSecurity;
    Lazy<FrmCard> frmCard;
    Lazy<FrmClient> frmClient;
    Lazy<FrmConnect> frmConnect;

private:
    QString clientName() const override { return QStringLiteral("Ann"); }
    void send(std::string_view) override {}
    void closeConnection() override {}
    void showCard(const QString&, const QStringList&, int, int) override {}
    void hideCard() override {}
    PickLog picks() const override { return {}; }
    void deckSaved(const QString&) override {}
    void notSaved(const QString&, const QString&) override {}
};

}  // namespace packwise
