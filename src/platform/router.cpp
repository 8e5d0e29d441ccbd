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

constexpr int kDiscoverMilliseconds = 2000;
constexpr auto kNatPmpPatience = std::chrono::milliseconds(2000);
constexpr int kMostPortsTried = 20;
constexpr const char* kDescription = "Packwise draft";
constexpr const char* kProtocol = "TCP";

// UPnP's own numbers.
constexpr int kPermanentLeasesOnly = 725;
constexpr int kConflict = 718;

class UpnpRouter : public Router {
public:
    UpnpRouter() = default;
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
        UPNPDev* const devices =
            upnpDiscover(kDiscoverMilliseconds, nullptr, nullptr, 0, 0, 2, &error);
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
                return {RouterAnswer::Open, address, outsidePort};
            }
            if (error != kConflict) {
                break;
            }
        }
        return {RouterAnswer::Refused, address, 0};
    }

    void unmap() override {
        if (mapped_ != 0) {
            UPNP_DeletePortMapping(urls_.controlURL, data_.first.servicetype,
                                   std::to_string(mapped_).c_str(), kProtocol, nullptr);
            mapped_ = 0;
        }
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

    [[no_unique_address]] SocketUse use_;
    bool isFound_ = false;
    UPNPUrls urls_{};
    IGDdatas data_{};
    std::array<char, 64> ownAddress_{};
    quint16 mapped_ = 0;  // the outside port; 0 without a mapping
};

class NatPmpRouter : public Router {
public:
    NatPmpRouter() = default;
    NatPmpRouter(const NatPmpRouter&) = delete;
    NatPmpRouter& operator=(const NatPmpRouter&) = delete;
    ~NatPmpRouter() override {
        if (isOpen_) {
            closenatpmp(&link_);
        }
    }

    // Whether a router answers.
    bool find() {
        isOpen_ = initnatpmp(&link_, 0, 0) == 0;
        natpmpresp_t response{};
        if (!isOpen_ || sendpublicaddressrequest(&link_) < 0) {
            return false;
        }
        const int result = answerTo(response);
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
        if (sendnewportmappingrequest(&link_, NATPMP_PROTOCOL_TCP, port, wanted,
                                      static_cast<std::uint32_t>(leaseSeconds)) < 0) {
            return {RouterAnswer::NoRouter, outside_, 0};
        }
        const int result = answerTo(response);
        if (result != 0) {
            return {isRefusal(result) ? RouterAnswer::Refused : RouterAnswer::NoRouter, outside_,
                    0};
        }
        mapped_ = port;
        return {RouterAnswer::Open, outside_, response.pnu.newportmapping.mappedpublicport};
    }

    void unmap() override {
        natpmpresp_t response{};
        if (mapped_ != 0 &&
            sendnewportmappingrequest(&link_, NATPMP_PROTOCOL_TCP, mapped_, 0, 0) >= 0) {
            answerTo(response);
        }
        mapped_ = 0;
    }

private:
    // Whether it is an error that the router itself tells.
    static bool isRefusal(int result) {
        return result <= NATPMP_ERR_UNDEFINEDERROR && result > NATPMP_TRYAGAIN;
    }

    // Waits for the response to a request, which is sent again meanwhile. The library's result.
    int answerTo(natpmpresp_t& response) {
        const auto until = std::chrono::steady_clock::now() + kNatPmpPatience;
        int result = NATPMP_TRYAGAIN;
        while (result == NATPMP_TRYAGAIN && std::chrono::steady_clock::now() < until) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            result = readnatpmpresponseorretry(&link_, &response);
        }
        return result;
    }

    [[no_unique_address]] SocketUse use_;
    bool isOpen_ = false;
    natpmp_t link_{};
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

FoundRouter openAtRouter(quint16 port, int leaseSeconds, const std::function<bool()>& isWanted) {
    RouterAnswer best;
    const auto tryOne = [&](auto router) -> std::unique_ptr<Router> {
        if (!isWanted() || !router->find() || !isWanted()) {
            return nullptr;
        }
        const RouterAnswer answer = router->map(port, port, leaseSeconds);
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
    std::unique_ptr<Router> router = tryOne(std::make_unique<UpnpRouter>());
    if (!router && best.kind != RouterAnswer::Open) {
        router = tryOne(std::make_unique<NatPmpRouter>());
    }
    if (!isWanted()) {
        best = {RouterAnswer::Stopped, {}, 0};
    }
    return {best, std::move(router)};
}

}  // namespace packwise
