#include "protocol/messages.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace packwise {
namespace {

// What is read of a message and written again; "" for what cannot be.
struct Echo {
    std::string text;

    template <class Message>
    void on(const Message& message) {
        text = message.write();
    }
    // A pick that cannot be is a pick all the same.
    void on(const to_server::PackBack& message) { text = message.rest ? message.write() : "?"; }
    void on(const to_server::Pick& message) { text = message.row ? message.write() : "?"; }
};

TEST(Messages, OfClientsAreReadAndWritten) {
    for (const std::string message :
         {"VERS1.41~", "VERS~", "NAMEJos\xE9|x~", "DROP~", "PING~", "PONG~", "TEST~", "MESG~",
          "MESG<Ann> hi | you~", "CARDUa~", "BPCK~", "BPCKUa|Bb c|~", "RAND~", "RPCK0~", "RPCK14~",
          "RROK~", "RPOK~", "CODE0~", "CODE-2147483648~"}) {
        Echo echo;
        to_server::dispatch(message.substr(0, message.size() - 1), echo);
        EXPECT_EQ(echo.text, message);
    }
    for (const auto& [message, read] : std::initializer_list<std::pair<std::string, std::string>>{
             {"", ""},
             {"PIN", ""},
             {"ping", ""},
             {"HELO1", ""},
             {"NAME", ""},
             {"CARDU", ""},
             {"CARDUa|", ""},
             {"CODE", ""},
             {"CODE07", ""},
             {"CODE-0", ""},
             {"CODE2147483648", ""},
             {"DROP01", "DROP~"},
             {"RPCK05", "RPCK5~"},
             {"RPCK", "?"},
             {"RPCK15", "?"},
             {"RPCK-1", "?"},
             {"RPCK1!", "?"},
             {"BPCK|", "?"},
             {"BPCKUa", "?"},
             {"BPCKU|", "?"},
             {"BPCKUa|Ub|Uc|Ud|Ue|Uf|Ug|Uh|Ui|Uj|Uk|Ul|Um|Un|Uo|Up|", "?"}}) {
        Echo echo;
        to_server::dispatch(message, echo);
        EXPECT_EQ(echo.text, read) << message;
    }
}

TEST(Messages, OfTheServerAreReadAndWritten) {
    for (const std::string message :
         {"HELO8~",         "MESGa~",   "STAT~",     "NAME0~", "NAME7x1~", "ADDR310.0.0.1~",
          "DROP7~",         "PING~",    "PONG~",     "TEST~",  "CLOS~",    "SEAT07~",
          "PAKSA|B|C||||~", "INFOB~",   "INFOR130~", "INFOX~", "ROUN2:3~", "BOOS~",
          "BOOSUa|Bb|~",    "SNOW~",    "BSTA0~",    "REVW~",  "RSTA7~",   "TURN8~",
          "RPCK714~",       "RPCK00!~", "RPAU~",     "OVER~",  "CODE7-12~"}) {
        Echo echo;
        to_client::dispatch(message.substr(0, message.size() - 1), echo);
        EXPECT_EQ(echo.text, message);
    }
    // A blank stands between two of them.
    std::istringstream broken(
        "HELO HELOx HELO0 HELO9 HELO-1 HELO01 HELO1x NAME NAME8x NAMEEve NAME\xFF ADDR ADDRx "
        "ADDR9127.0.0.1 DROP DROP8 DROP01 DROP-1 SEAT SEAT0 SEAT08 SEAT81 SEAT000 SEATxy PAKS "
        "PAKSA|B|C| PAKSA|B|C||| PAKSA|B|C||||| PAKSA|B|C||||x INFO INFOR1 INFOR10 INFOR131 "
        "INFOR1x INFOR1-3 INFOR1999999999999 BOOSnobar BOOSUa BOOSUa|Bb BOOS| BOOSU| BSTA BSTA8 "
        "BSTA00 BSTA-1 RSTA RSTAx TURN TURN0 TURN9 TURN-1 RPCK RPCK0 RPCK! RPCK80 RPCK015 RPCK0-1 "
        "RPCKx0 RPCK0x RPCK0!! RPCK099999999999 CODE CODE0 CODE0x CODE81 CODE1--1 "
        "CODE199999999999");
    std::vector<std::string> all(std::istream_iterator<std::string>(broken), {});
    std::string sixteen = "BOOS";
    for (int card = 0; card < 16; ++card) {
        sixteen += "UCard|";
    }
    all.push_back(sixteen);
    for (const char* letters : {"HELO", "DROP", "SEAT", "TURN", "RPCK", "BSTA", "CODE"}) {
        all.push_back(letters + std::string(60000, '9'));
    }
    for (const std::string& bad : all) {
        Echo echo;
        to_client::dispatch(bad, echo);
        EXPECT_EQ(echo.text, "") << bad;
    }
    Echo untimed;
    to_client::dispatch("INFOR05", untimed);
    EXPECT_EQ(untimed.text, "INFOR00~") << "the seconds of an untimed draft are not looked at";
}

TEST(Packs, TakeOneCardOut) {
    const Pack pack = *Pack::read("Ua|Bb|Gc|");
    EXPECT_EQ(pack.size(), 3);
    EXPECT_EQ(pack.card(2), "Gc");
    EXPECT_EQ(pack.without(1).text(), "Ua|Gc|");
    struct Case {
        const char* pack;
        const char* rest;
        const char* card;
    };
    for (const Case& c : {
             Case{"Ua|Bb|Gc|", "Bb|Gc|", "Ua"},
             Case{"Ua|Bb|Gc|", "Ua|Gc|", "Bb"},
             Case{"Ua|Bb|Gc|", "Ua|Bb|", "Gc"},
             Case{"Ua|Bb|Gc|", "Gc|Ua|", "Bb"},
             Case{"Ua|Bb|Gc|", "Ua|Ua|", ""},
             Case{"Ua|Bb|Gc|", "Ua|Bd|", ""},
             Case{"Ua|Bb|Gc|", "Ua|", ""},
             Case{"Ua|Bb|Gc|", "Ua|Bb|Gc|", ""},
             Case{"Ua|Bb|Gc|", "", ""},
             Case{"Ua|", "", "Ua"},
             Case{"Uab|Uac|Ua|", "Uab|Ua|", "Uac"},
         }) {
        EXPECT_EQ(Pack::read(c.pack)->cardLessIn(*Pack::read(c.rest)), c.card) << c.rest;
    }
}

}  // namespace
}  // namespace packwise
