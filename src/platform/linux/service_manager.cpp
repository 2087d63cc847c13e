#include "platform/service_manager.h"

#include <QtGlobal>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

QByteArray Take(const char* variable) {
    const QByteArray value = qgetenv(variable);
    qunsetenv(variable);
    return value;
}

// It says which file the journal reads from: a terminal or a file may have been put in its place.
bool JournalReadsErrors() {
    const QByteArray told = qgetenv("JOURNAL_STREAM");
    struct stat file {};
    if (told.isEmpty() || fstat(STDERR_FILENO, &file) != 0) return false;
    return told == QByteArray::number(file.st_dev) + ':' + QByteArray::number(file.st_ino);
}

}  // namespace

ServiceManager ServiceManager::OfThisProcess() {
    ServiceManager manager;
    manager.socket = Take("NOTIFY_SOCKET");
    const qlonglong patience = Take("WATCHDOG_USEC").toLongLong() / 1000;
    const QByteArray process = Take("WATCHDOG_PID");
    const bool meant = process.isEmpty() || process.toLongLong() == getpid();
    constexpr qlonglong longest = 86'400'000;
    if (meant) manager.watchdog = static_cast<int>(std::clamp<qlonglong>(patience, 0, longest));
    manager.journal = JournalReadsErrors();
    return manager;
}

void ServiceManager::Tell(const QByteArray& lines) const {
    sockaddr_un address{};
    const auto length = static_cast<std::size_t>(socket.size());
    if (length < 2 || length >= sizeof address.sun_path) return;
    address.sun_family = AF_UNIX;
    std::memcpy(static_cast<char*>(address.sun_path), socket.constData(), length);
    // A name that is in no folder begins with a zero, for which the manager writes '@'.
    if (socket.startsWith('@')) address.sun_path[0] = '\0';
    const int sender = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (sender < 0) return;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    (void)sendto(sender, lines.constData(), static_cast<std::size_t>(lines.size()), MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&address), size);
    close(sender);
}
