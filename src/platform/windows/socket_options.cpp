#include "platform/socket_options.h"

// Before anything that includes winsock.h, with which it does not go together.
#include <winsock2.h>

#include <mstcpip.h>
#include <ws2tcpip.h>

namespace {

// An idle connection is probed after a minute; the system ends it when ten probes are lost, which
// is another minute here.
constexpr ULONG idleMilliseconds = 60'000;
constexpr ULONG probeMilliseconds = 6'000;
// TCP_MAXRT, which the compiler's headers do not name: seconds of resending.
constexpr int longestResending = 5;
constexpr DWORD resendSeconds = 120;

}  // namespace

void SocketOptions::DetectDeadPeer(qintptr descriptor) {
    const auto socket = static_cast<SOCKET>(descriptor);
    // A socket that does not take an option works all the same, only less watchfully.
    tcp_keepalive probes{
        .onoff = 1, .keepalivetime = idleMilliseconds, .keepaliveinterval = probeMilliseconds};
    DWORD answered = 0;
    WSAIoctl(socket, SIO_KEEPALIVE_VALS, &probes, sizeof probes, nullptr, 0, &answered, nullptr,
             nullptr);
    // While data is on its way there are no probes.
    setsockopt(socket, IPPROTO_TCP, longestResending, reinterpret_cast<const char*>(&resendSeconds),
               sizeof resendSeconds);
}

qintptr SocketOptions::Duplicate(qintptr descriptor) {
    WSAPROTOCOL_INFOW info{};
    if (WSADuplicateSocketW(static_cast<SOCKET>(descriptor), GetCurrentProcessId(), &info) != 0)
        return NoDescriptor;
    return static_cast<qintptr>(WSASocketW(FROM_PROTOCOL_INFO, FROM_PROTOCOL_INFO,
                                           FROM_PROTOCOL_INFO, &info, 0,
                                           WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT));
}

void SocketOptions::EndSending(qintptr descriptor) {
    shutdown(static_cast<SOCKET>(descriptor), SD_SEND);
}
