#include "base/open_files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace {

constexpr int mostAtATime = 20;

struct Close {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
};

}  // namespace

bool FilesLeft() {
    std::array<std::unique_ptr<std::FILE, Close>, mostAtATime> held;
    for (auto& each : held) {
        // A folder cannot be opened on Windows, where no such limit is near either.
        errno = 0;
        each.reset(std::fopen("/", "r"));
        if (!each && (errno == EMFILE || errno == ENFILE)) return false;
    }
    return true;
}
