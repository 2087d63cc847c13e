#pragma once

#include <QtGlobal>

namespace SocketOptions {

// Lets the system notice within about two minutes that the peer of a TCP connection is gone, even
// when the line broke without a word. descriptor: the native socket.
void DetectDeadPeer(qintptr descriptor);

}  // namespace SocketOptions
