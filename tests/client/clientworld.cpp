#include "client/clientworld.h"

namespace packwise {

ClientWorld::ClientWorld()
    : frmMessage([this] { return std::make_unique<FrmMessage>(shell, *this); }),
      frmSave([this] { return std::make_unique<FrmSave>(shell); }),
      frmDeckBuild([this] { return std::make_unique<FrmDeckBuild>(shell, frmSave, *this); }),
      frmSecurity([this] { return std::make_unique<FrmSecurity>(shell, *this); }),
      frmCard([this] { return std::make_unique<FrmCard>(shell); }),
      frmClient([this] {
          return std::make_unique<FrmClient>(shell, frmMessage, frmDeckBuild, frmSecurity, frmCard,
                                             [this] { return nextDraw; });
      }),
      frmConnect([this] { return std::make_unique<FrmConnect>(shell, frmClient, frmSecurity); }) {
    listener.listen(QHostAddress::LocalHost);
}

void ClientWorld::join(int number) {
    constexpr int kAnHour = 3600 * 1000;
    FrmClient& client = frmClient();
    for (QTimer* clock : client.findChildren<QTimer*>()) {
        clock->setInterval(kAnHour);
    }
    client.show();
    client.clientName = u"Ann"_s;
    client.wskClient->setRemoteHost(u"127.0.0.1"_s);
    client.wskClient->setRemotePort(listener.serverPort());
    client.Connect();
    ASSERT_TRUE(server.acceptFrom(listener));
    server.say("HELO" + std::to_string(number) + "~");
    ASSERT_TRUE(server.hears("VERS1.41~NAMEAnn~"));
}

void ClientWorld::start(std::string_view info) {
    join();
    tell(
        "NAME0Ann~NAME1Bob~NAME2Cid~NAME3~NAME4~NAME5~NAME6~NAME7~SEAT02~SEAT10~SEAT21~"
        "PAKSFens|Fens|Bells||||~INFO" +
        std::string(info) + "~");
}

void ClientWorld::tell(std::string_view messages) {
    server.say(std::string(messages) + "TEST~");
    ASSERT_TRUE(server.hears("TEST~")) << messages;
}

}  // namespace packwise
