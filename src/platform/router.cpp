#include "platform/router.h"

#include "platform/addresses.h"

#include <QHostAddress>

#include <miniupnpc/miniupnpc.h>
#include <miniupnpc/upnpcommands.h>
#include <natpmp.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

#ifdef Q_OS_WIN
#include <winsock2.h>
#endif

namespace packwise {

namespace {

#ifdef Q_OS_WIN
// Sockets are there only for those who ask the system for them; neither library does.
class SocketUse {
public:
    SocketUse() {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
    }
    SocketUse(const SocketUse&) = delete;
    SocketUse& operator=(const SocketUse&) = delete;
    ~SocketUse() { WSACleanup(); }
};
#else
class SocketUse {};
#endif

// How a router is searched for by UPnP. Each of them answers to the first; those that do not keep
// to the standard, to another.
struct UpnpSearch {
    const char* target;
    int milliseconds;
};
constexpr UpnpSearch kUsualSearch{"urn:schemas-upnp-org:device:InternetGatewayDevice:1", 2000};
constexpr UpnpSearch kOtherSearches[] = {{"urn:schemas-upnp-org:service:WANIPConnection:1", 1000},
                                         {"urn:schemas-upnp-org:service:WANPPPConnection:1", 1000},
                                         {"upnp:rootdevice", 1000}};
constexpr auto kNatPmpPatience = std::chrono::milliseconds(2000);
constexpr int kMostPortsTried = 20;
constexpr const char* kDescription = "Packwise draft";
constexpr const char* kProtocol = "TCP";

// UPnP's own numbers.
constexpr int kPermanentLeasesOnly = 725;
constexpr int kConflict = 718;

class UpnpRouter : public Router {
public:
    explicit UpnpRouter(const UpnpSearch& search) : search_(search) {}
    UpnpRouter(const UpnpRouter&) = delete;
    UpnpRouter& operator=(const UpnpRouter&) = delete;
    ~UpnpRouter() override {
        if (isFound_) {
            FreeUPNPUrls(&urls_);
        }
    }

    // Whether a router answers.
    bool find() {
        int error = 0;
        UPNPDev* const devices = upnpDiscoverDevice(search_.target, search_.milliseconds, nullptr,
                                                    nullptr, 0, 0, 2, &error);
        const int found = devices ? UPNP_GetValidIGD(devices, &urls_, &data_, ownAddress_.data(),
                                                     static_cast<int>(ownAddress_.size()))
                                  : 0;
        freeUPNPDevlist(devices);
        isFound_ = found != 0;
        // 1 is a router that is connected, 2 one that says that it is not or whose outside address
        // is not public; 3 is no router.
        return found == 1 || found == 2;
    }

    RouterAnswer map(quint16 port, quint16 wanted, int leaseSeconds) override {
        std::array<char, 64> outside{};
        if (UPNP_GetExternalIPAddress(urls_.controlURL, data_.first.servicetype, outside.data()) !=
            UPNPCOMMAND_SUCCESS) {
            return {RouterAnswer::Refused, {}, 0};
        }
        const QString address = QString::fromLatin1(outside.data());
        if (rangeOf(address) != AddressRange::Public) {
            return {RouterAnswer::BehindAnother, address, 0};
        }
        for (int tried = 0; tried < kMostPortsTried && wanted + tried <= 65535; ++tried) {
            const auto outsidePort = static_cast<quint16>(wanted + tried);
            if (isAnothers(outsidePort, port)) {
                continue;
            }
            int error = add(outsidePort, port, leaseSeconds);
            if (error == kPermanentLeasesOnly) {
                error = add(outsidePort, port, 0);
            }
            if (error == UPNPCOMMAND_SUCCESS) {
                mapped_ = outsidePort;
                inside_ = port;
                return {RouterAnswer::Open, address, outsidePort};
            }
            if (error != kConflict) {
                break;
            }
        }
        return {RouterAnswer::Refused, address, 0};
    }

    void unmap() override {
        // The router may have given it to somebody else, after a lease that ran out in a sleep.
        if (mapped_ != 0 && !isAnothers(mapped_, inside_)) {
            UPNP_DeletePortMapping(urls_.controlURL, data_.first.servicetype,
                                   std::to_string(mapped_).c_str(), kProtocol, nullptr);
        }
        mapped_ = 0;
    }

private:
    // A router may let one client write over the mapping of another program or machine, so it is
    // asked first who has the port. One that this program has left behind is its own.
    bool isAnothers(quint16 outsidePort, quint16 port) {
        std::array<char, 64> client{};
        std::array<char, 16> clientPort{};
        std::array<char, 128> description{};
        std::array<char, 16> enabled{};
        std::array<char, 32> lease{};
        const int error = UPNP_GetSpecificPortMappingEntry(
            urls_.controlURL, data_.first.servicetype, std::to_string(outsidePort).c_str(),
            kProtocol, nullptr, client.data(), clientPort.data(), description.data(),
            enabled.data(), lease.data());
        return error == UPNPCOMMAND_SUCCESS &&
               !(std::string(client.data()) == ownAddress_.data() &&
                 std::string(clientPort.data()) == std::to_string(port) &&
                 std::string(description.data()) == kDescription);
    }

    int add(quint16 outsidePort, quint16 port, int leaseSeconds) {
        return UPNP_AddPortMapping(urls_.controlURL, data_.first.servicetype,
                                   std::to_string(outsidePort).c_str(),
                                   std::to_string(port).c_str(), ownAddress_.data(), kDescription,
                                   kProtocol, nullptr, std::to_string(leaseSeconds).c_str());
    }

    [[maybe_unused, no_unique_address]] SocketUse use_;
    UpnpSearch search_;
    bool isFound_ = false;
    UPNPUrls urls_{};
    IGDdatas data_{};
    std::array<char, 64> ownAddress_{};
    quint16 mapped_ = 0;  // the outside port; 0 without a mapping
    quint16 inside_ = 0;  // the port of this machine that it leads to
};

class NatPmpRouter : public Router {
public:
    // Whether a router answers.
    bool find() {
        natpmpresp_t response{};
        const int result = ask(response, sendpublicaddressrequest);
        if (result == 0) {
            outside_ = QHostAddress(ntohl(response.pnu.publicaddress.addr.s_addr)).toString();
        }
        return result == 0 || isRefusal(result);
    }

    RouterAnswer map(quint16 port, quint16 wanted, int leaseSeconds) override {
        if (outside_.isEmpty()) {
            return {RouterAnswer::Refused, {}, 0};
        }
        if (rangeOf(outside_) != AddressRange::Public) {
            return {RouterAnswer::BehindAnother, outside_, 0};
        }
        natpmpresp_t response{};
        const int result = ask(response, [&](natpmp_t* link) {
            return sendnewportmappingrequest(link, NATPMP_PROTOCOL_TCP, port, wanted,
                                             static_cast<std::uint32_t>(leaseSeconds));
        });
        if (result != 0) {
            return {isRefusal(result) ? RouterAnswer::Refused : RouterAnswer::NoRouter, outside_,
                    0};
        }
        mapped_ = port;
        return {RouterAnswer::Open, outside_, response.pnu.newportmapping.mappedpublicport};
    }

    void unmap() override {
        natpmpresp_t response{};
        if (mapped_ != 0) {
            ask(response, [this](natpmp_t* link) {
                return sendnewportmappingrequest(link, NATPMP_PROTOCOL_TCP, mapped_, 0, 0);
            });
        }
        mapped_ = 0;
    }

private:
    // Whether it is an error that the router itself tells.
    static bool isRefusal(int result) {
        return result <= NATPMP_ERR_UNDEFINEDERROR && result > NATPMP_TRYAGAIN;
    }

    // Sends a request, again where it must, and waits for the response. The library's result. Each
    // has a socket of its own: a slow router answers more than once to one that was sent again,
    // which would pass for the response to the next.
    template <class Send>
    static int ask(natpmpresp_t& response, const Send& send) {
        natpmp_t link{};
        int result = initnatpmp(&link, 0, 0);
        if (result == 0) {
            result = send(&link) < 0 ? NATPMP_ERR_SENDERR : NATPMP_TRYAGAIN;
        }
        const auto until = std::chrono::steady_clock::now() + kNatPmpPatience;
        while (result == NATPMP_TRYAGAIN && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            result = readnatpmpresponseorretry(&link, &response);
        }
        closenatpmp(&link);
        return result;
    }

    [[maybe_unused, no_unique_address]] SocketUse use_;
    QString outside_;
    quint16 mapped_ = 0;  // the port of this machine; 0 without a mapping
};

// What tells more of two answers that are not Open.
int weight(RouterAnswer::Kind kind) {
    switch (kind) {
        case RouterAnswer::BehindAnother:
            return 2;
        case RouterAnswer::Refused:
            return 1;
        default:
            return 0;
    }
}

}  // namespace

FoundRouter openAtRouter(quint16 port, quint16 wanted, int leaseSeconds,
                         const std::function<bool()>& isWanted) {
    RouterAnswer best;
    const auto tryOne = [&](auto router) -> std::unique_ptr<Router> {
        if (!isWanted() || !router->find() || !isWanted()) {
            return nullptr;
        }
        const RouterAnswer answer = router->map(port, wanted, leaseSeconds);
        if (answer.kind == RouterAnswer::Open || weight(answer.kind) > weight(best.kind)) {
            best = answer;
        }
        if (answer.kind != RouterAnswer::Open) {
            return nullptr;
        }
        if (!isWanted()) {
            router->unmap();
            return nullptr;
        }
        return router;
    };
    std::unique_ptr<Router> router = tryOne(std::make_unique<UpnpRouter>(kUsualSearch));
    if (!router && best.kind != RouterAnswer::Open) {
        router = tryOne(std::make_unique<NatPmpRouter>());
    }
    for (const UpnpSearch& search : kOtherSearches) {
        if (best.kind == RouterAnswer::NoRouter) {
            router = tryOne(std::make_unique<UpnpRouter>(search));
        }
    }
    if (!isWanted()) {
        best = {RouterAnswer::Stopped, {}, 0};
    }
    return {best, std::move(router)};
}

}  // namespace packwise
