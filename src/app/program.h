// One running Packwise: the object that owns the eleven windows, their settings and their message
// boxes, and carries the calls that run from a lower floor up to a window of a higher one. A
// process may hold several.
#pragma once

#include "app/frmmain.h"
#include "client/frmclient.h"
#include "client/frmconnect.h"
#include "companions/clientlink.h"
#include "companions/frmcard.h"
#include "companions/frminfo.h"
#include "companions/frmmessage.h"
#include "companions/frmsecurity.h"
#include "console/frmfixseats.h"
#include "console/frmserver.h"
#include "console/localclient.h"
#include "deck/decklink.h"
#include "deck/frmdeckbuild.h"
#include "deck/frmsave.h"
#include "widgets/heldkey.h"
#include "widgets/lazy.h"
#include "widgets/shell.h"

#include <QDir>
#include <QObject>

#include <array>
#include <cstdint>
#include <random>

namespace packwise {

class Program : public QObject,
                public Shell,
                public LocalClient,
                public ClientLink,
                public DeckLink {
    Q_OBJECT
public:
    // `settingsFile` is the store; `seed` seeds every draw of this program. The record of a draft
    // that is hosted goes into the folder `records`; there is none when that is empty.
    explicit Program(QString settingsFile = SettingsStore::userFile(),
                     std::uint64_t seed = std::random_device{}(), const QString& records = {});
    ~Program() override;

    // Where the user started the program, if its current folder is another by now.
    void setStartFolder(const QString& folder) { startFolder_ = folder; }
    // Shows the start window.
    void start();

    SettingsStore& settings() override { return settings_; }
    MessageBoxes& boxes() override { return boxes_; }
    QString startFolder() const override { return startFolder_; }
    bool isVisible(FormId form) const override;
    void saveForms() override;
    void end() override;
    bool ended() const override { return ended_; }

Q_SIGNALS:
    void hasEnded();

private:
    SettingsStore settings_;
    MessageBoxes boxes_;
    HeldKeys heldKeys_;
    std::mt19937_64 generator_;
    QString startFolder_ = QDir::currentPath();
    bool ended_ = false;

public:
    Lazy<FrmMain> frmMain;
    Lazy<FrmSecurity> frmSecurity;
    Lazy<FrmMessage> frmMessage;
    Lazy<FrmCard> frmCard;
    Lazy<FrmSave> frmSave;
    Lazy<FrmDeckBuild> frmDeckBuild;
    Lazy<FrmFixSeats> frmFixSeats;
    Lazy<FrmClient> frmClient;
    Lazy<FrmConnect> frmConnect;
    Lazy<FrmServer> frmServer;
    Lazy<FrmInfo> frmInfo;

private:
    // The windows made so far; null for the others.
    std::array<Form*, 11> loadedForms() const;

    double draw();

    // LocalClient
    void start(const QString& name, quint16 port) override;
    void showNote(const QString& line) override;

    // ClientLink and DeckLink
    QString clientName() const override;
    void send(std::string_view message) override;
    void closeConnection() override;
    void showCard(const QString& name, const QStringList& sets, int left, int top) override;
    void hideCard() override;
    PickLog picks() const override;
    void deckSaved(const QString& path) override;
    void notSaved(const QString& path, const QString& reason) override;
};

}  // namespace packwise
