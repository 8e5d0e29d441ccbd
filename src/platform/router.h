// Asking the router of a home network to let others in, by UPnP or NAT-PMP. These calls block for
// seconds: they belong on a thread of their own (see RouterPort).
#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace packwise {

struct RouterAnswer {
    enum Kind {
        Open,           // outsideAddress and outsidePort lead to the port of this machine
        NoRouter,       // no router answers
        Refused,        // the router answers, and does not allow it
        BehindAnother,  // the router's own outside address is not a public one
        Stopped         // it was no longer wanted
    };
    Kind kind = NoRouter;
    QString outsideAddress;  // in dotted decimal; also with BehindAnother
    quint16 outsidePort = 0;
};

// A router that was found. Its mapping goes by itself when the lease runs out.
class Router {
public:
    virtual ~Router() = default;

    // Lets TCP connections to an outside port come to `port` of this machine, for so many seconds:
    // the outside port `wanted` if it is free, else the next that is. A mapping of somebody else is
    // never touched. Called again, it renews.
    virtual RouterAnswer map(quint16 port, quint16 wanted, int leaseSeconds) = 0;
    // Takes the mapping away.
    virtual void unmap() = 0;
};

struct FoundRouter {
    RouterAnswer answer;
    std::unique_ptr<Router> router;  // with an answer of the kind Open
};

// Looks for a router and lets it map, as Router::map. `isWanted` is asked between the steps, every
// few seconds at least, from the caller's thread.
FoundRouter openAtRouter(quint16 port, quint16 wanted, int leaseSeconds,
                         const std::function<bool()>& isWanted);

}  // namespace packwise
