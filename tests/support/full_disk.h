#pragma once

#include <csignal>

#include <sys/resource.h>

// While it lives this process gets no more than so much of something.
class Shortage {
  public:
    Shortage(__rlimit_resource_t ofWhat, rlim_t most) : what(ofWhat) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(what, &before);
        const rlimit tight{most, before.rlim_max};
        setrlimit(what, &tight);
    }
    ~Shortage() { setrlimit(what, &before); }
    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;

  private:
    __rlimit_resource_t what;
    rlimit before{};
};

// No file grows beyond so many bytes, as on a full disk.
struct FullDisk : Shortage {
    explicit FullDisk(rlim_t bytes) : Shortage(RLIMIT_FSIZE, bytes) {}
};
