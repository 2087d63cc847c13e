#include "platform/socket_options.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace {

void Set(int socket, int level, int option, int value) {
    // A socket that does not take the option works all the same, only less watchfully.
    static_cast<void>(setsockopt(socket, level, option, &value, sizeof value));
}

}  // namespace

void SocketOptions::DetectDeadPeer(qintptr descriptor) {
    const int socket = static_cast<int>(descriptor);
    // An idle connection is probed after a minute; six probes lost in another minute end it.
    Set(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    Set(socket, IPPROTO_TCP, TCP_KEEPIDLE, 60);
    Set(socket, IPPROTO_TCP, TCP_KEEPINTVL, 10);
    Set(socket, IPPROTO_TCP, TCP_KEEPCNT, 6);
    // While data is on its way there are no probes, and resending alone would go on for a quarter
    // of an hour.
    Set(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, 120'000);
}

qintptr SocketOptions::Duplicate(qintptr descriptor) {
    return fcntl(static_cast<int>(descriptor), F_DUPFD_CLOEXEC, 0);
}

void SocketOptions::EndSending(qintptr descriptor) {
    shutdown(static_cast<int>(descriptor), SHUT_WR);
}
