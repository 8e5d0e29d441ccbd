#include "client/clientworld.h"

namespace packwise {
namespace {

using namespace Qt::Literals::StringLiterals;

std::string pack(int cards) {
    std::string text;
    for (int card = 0; card < cards; ++card) {
        text += "GCard" + std::to_string(card) + "|";
    }
    return text;
}

TEST(ClientDispatch, IgnoresBodiesThatAreNotAsTheyShouldBe) {
    const std::string huge(60000, '9');
    const std::vector<std::string> broken = {"HELO",
                                             "HELOx",
                                             "HELO0",
                                             "HELO9",
                                             "HELO-1",
                                             "HELO1x",
                                             "DROP",
                                             "DROP8",
                                             "DROPx",
                                             "DROP-1",
                                             "DROP01",
                                             "DROP-0",
                                             "NAME",
                                             "NAME8Eve",
                                             "NAMEEve",
                                             "NAME\xFF",
                                             "ADDR",
                                             "ADDR9127.0.0.1",
                                             "ADDRx",
                                             "SEAT",
                                             "SEAT1",
                                             "SEAT18",
                                             "SEAT81",
                                             "SEATxy",
                                             "SEAT012",
                                             "PAKS",
                                             "PAKSa|b|c|d|e|",
                                             "PAKSa|b|c|d|e|f",
                                             "PAKSa|b|c|d|e|f|g|",
                                             "PAKS||||||x",
                                             "INFO",
                                             "INFOR1",
                                             "INFOR1x",
                                             "INFOR10",
                                             "INFOR1-3",
                                             "INFOR1999999999999",
                                             "BOOSnobar",
                                             "BOOSUa|Bb",
                                             "BOOS|",
                                             "BOOSU|",
                                             "BOOS" + pack(16),
                                             "BOOS" + pack(5000),
                                             "TURN",
                                             "TURN0",
                                             "TURN9",
                                             "TURN-1",
                                             "TURNx",
                                             "RPCK",
                                             "RPCK!",
                                             "RPCK0",
                                             "RPCK03",
                                             "RPCK0-1",
                                             "RPCK80",
                                             "RPCKx0",
                                             "RPCK0x",
                                             "RPCK00!!",
                                             "RPCK099999999999",
                                             "BSTA",
                                             "BSTA8",
                                             "BSTA-1",
                                             "BSTAx",
                                             "BSTA01",
                                             "RSTA",
                                             "RSTA8",
                                             "RSTAx",
                                             "CODE",
                                             "CODE1",
                                             "CODE1x",
                                             "CODE8123",
                                             "CODEx1",
                                             "CODE1--1",
                                             "CODE199999999999"};
    for (const char* info : {"B", "R130"}) {
        ClientWorld world;
        world.start(info);
        world.tell("ROUN1~BOOSUFirst|BSecond|GThird|~");
        const QStringList before = world.everything();
        for (const std::string& message : broken) {
            world.tell(message + "~");
            ASSERT_EQ(world.everything(), before) << message;
        }
        for (const char* command : {"HELO", "DROP", "SEAT", "TURN", "RPCK", "BSTA", "CODE"}) {
            world.tell(command + huge + "~");
            ASSERT_EQ(world.everything(), before) << command;
        }
    }
}

TEST(ClientDispatch, TakesAnyCommandAtAnyTime) {
    const char* const messages[] = {"BOOSUa|~", "RPCK70!~", "TURN1~",   "REVW~",  "RPAU~",
                                    "BSTA7~",   "RSTA7~",   "INFOZ~",   "INFOR~", "ROUN~",
                                    "SNOW~",    "DROP7~",   "DROP7~",   "BOOS~",  "INFOR15~",
                                    "INFOB~",   "OVER~",    "BOOSUb|~", "OVER~",  "CODE7-32768~"};
    ClientWorld world;
    world.join();
    for (const char* message : messages) {
        world.tell(message);
        world.frmClient->tmrReview->stop();
        world.frmClient->tmrRoch->stop();
    }
    EXPECT_EQ(world.frmSecurity->lstCode->text(7), u"-32768"_s);
    EXPECT_EQ(world.frmClient->lstHistory->count(), 2);
}

}  // namespace
}  // namespace packwise
