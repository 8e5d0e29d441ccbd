#include "client/frmconnect.h"

#include "client/frmclient.h"
#include "companions/frmsecurity.h"
#include "platform/settings.h"
#include "widgets/codepagevalidator.h"
#include "widgets/look.h"
#include "widgets/shell.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>

#include <cmath>

namespace packwise {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMostNameLetters = 12;
constexpr int kMostAddressLetters = 15;

// Twips.
constexpr int kConnectWidth = 3450;
constexpr int kConnectHeight = 1935;
constexpr int kEdge = 150;
constexpr int kRowHeight = 435;
constexpr int kFieldLeft = 900;
constexpr int kFieldHeight = 345;
constexpr int kButtonLeft = 1095;
constexpr int kButtonWidth = 1260;
constexpr int kButtonHeight = 390;

}  // namespace

std::optional<quint16> readPort(const QString& text) {
    bool isNumber = false;
    const double value = std::nearbyint(text.trimmed().toDouble(&isNumber));
    if (!isNumber || !(value >= 1 && value <= 65535)) {
        return std::nullopt;
    }
    return static_cast<quint16>(value);
}

FrmConnect::FrmConnect(Shell& shell, Lazy<FrmClient>& frmClient, Lazy<FrmSecurity>& frmSecurity)
    : Form(u"frmConnect"_s, u"Client Connection"_s, FormBorder::Fixed),
      shell_(shell),
      frmClient_(frmClient),
      frmSecurity_(frmSecurity) {
    setClientSizeTwips(kConnectWidth, kConnectHeight);
    txtName = addField(u"Name"_s, u"Name"_s, 0);
    txtName->setMaxLength(kMostNameLetters);
    acceptCodePageOnly(*txtName);
    txtIP = addField(u"IP"_s, u"IP"_s, 1);
    txtIP->setMaxLength(kMostAddressLetters);
    txtPort = addField(u"Port"_s, u"Port"_s, 2);
    cmdConnect = new QPushButton(u"&Connect"_s, this);
    cmdConnect->setAutoDefault(true);
    placeControl(*cmdConnect, {kButtonLeft, kEdge + 3 * kRowHeight, kButtonWidth, kButtonHeight},
                 u"cmdConnect"_s);
    connect(cmdConnect, &QPushButton::clicked, this, &FrmConnect::cmdConnect_Click);

    txtName->setText(setting::clientName.read(shell_.settings()));
    txtPort->setText(setting::clientPort.read(shell_.settings()));
    const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
    if (clipboard && clipboard->hasText()) {
        takeAddress(clipboard->text().trimmed());
        txtIP->selectAll();
    }
}

QLineEdit* FrmConnect::addField(const QString& caption, const QString& name, int row) {
    const int top = kEdge + row * kRowHeight;
    auto* label = new QLabel(caption, this);
    placeControl(*label, {kEdge, top, kFieldLeft - kEdge, kFieldHeight}, u"lbl"_s + name + u'Q');
    auto* field = new QLineEdit(this);
    placeControl(*field, {kFieldLeft, top, kConnectWidth - kFieldLeft - kEdge, kFieldHeight},
                 u"txt"_s + name, caption);
    label->setBuddy(field);
    connect(field, &QLineEdit::returnPressed, this, &FrmConnect::cmdConnect_Click);
    return field;
}

void FrmConnect::takeAddress(const QString& copied) {
    // Without a dot it is hardly an address: "20:30", "Note: 7".
    static const QRegularExpression withPort(
        u"^([^\\s:]*\\.[^\\s:]*)(?:\\s*:\\s*|,?\\s+port\\s+)(\\d{1,5})$"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = withPort.match(copied);
    if (match.hasMatch() && readPort(match.captured(2))) {
        txtIP->setText(match.captured(1));
        txtPort->setText(match.captured(2));
    } else {
        txtIP->setText(copied);  // the whole, before the box cuts it
    }
}

bool FrmConnect::nameAccepted() {
    if (txtName->text().isEmpty()) {
        shell_.boxes().error(this, u"Name required"_s);
        return false;
    }
    if (txtName->text().contains(u'~')) {
        shell_.boxes().error(this, u"Character ~ reserved"_s);
        return false;
    }
    return true;
}

void FrmConnect::cmdConnect_Click() {
    if (!nameAccepted()) {
        return;
    }
    if (txtIP->text().trimmed().isEmpty()) {
        shell_.boxes().error(this, u"Server IP address required"_s);
        return;
    }
    FrmClient& client = frmClient_();
    client.clientName = txtName->text();
    client.wskClient->setRemoteHost(txtIP->text().trimmed());
    frmSecurity_->lstIP->setText(0, txtIP->text());
    const std::optional<quint16> port = readPort(txtPort->text());
    if (!port) {
        shell_.boxes().error(this, u"Bad port"_s);
        return;
    }
    client.wskClient->setRemotePort(*port);
    setting::clientName.write(shell_.settings(), txtName->text());
    setting::clientPort.write(shell_.settings(), txtPort->text());
    hide();
    client.present();
    // Last, since an address that is refused at once is told by a box over the client's window.
    client.Connect();
}

bool FrmConnect::queryUnload(UnloadMode) {
    shell_.end();
    return true;
}

}  // namespace packwise
