#pragma once

#include <QtGlobal>

namespace SocketOptions {

// Lets the system notice within about two minutes that the peer of a TCP connection is gone, even
// when the line broke without a word. descriptor: the native socket.
void DetectDeadPeer(qintptr descriptor);

constexpr qintptr NoDescriptor = -1;

// Another descriptor of the same connection, which goes on when the first one is closed;
// NoDescriptor where the system has none left.
[[nodiscard]] qintptr Duplicate(qintptr descriptor);

// Tells the peer that nothing more comes; it may still send.
void EndSending(qintptr descriptor);

}  // namespace SocketOptions
