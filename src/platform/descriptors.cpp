#include "platform/descriptors.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <algorithm>
#endif

namespace packwise {

bool allowDescriptors([[maybe_unused]] int count) {
#ifdef Q_OS_UNIX
    constexpr rlim_t kOwn = 64;
    const rlim_t wanted = static_cast<rlim_t>(count) + kOwn;
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return false;
    }
    if (limit.rlim_cur >= wanted) {
        return true;
    }
    limit.rlim_cur = std::min(wanted, limit.rlim_max);
    return setrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur == wanted;
#else
    return true;
#endif
}

}  // namespace packwise
