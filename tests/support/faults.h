// What may befall a program that writes files, for as long as an object of these lives.
#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#endif

namespace packwise {

#ifdef Q_OS_UNIX

// No file can become longer than that many bytes, as on a disk that is full by then.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit before_{};
};

// Rights bind, also one who runs the tests as root.
class Unprivileged {
public:
    Unprivileged() { change(0, 65534); }
    ~Unprivileged() { change(65534, 0); }
    Q_DISABLE_COPY_MOVE(Unprivileged)

private:
    void change(uid_t from, uid_t to) {
        if (geteuid() == from && getuid() == 0 && seteuid(to) != 0) {
            qFatal("cannot change the rights");
        }
    }
};

#else

using rlim_t = unsigned long long;

// A process can bring neither about there; tools/windows/check leaves the tests out that want them.
struct FullDisk {
    explicit FullDisk(rlim_t) {}
};
struct Unprivileged {
    Unprivileged() {}
};

#endif

}  // namespace packwise
