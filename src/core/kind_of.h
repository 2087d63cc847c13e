#pragma once

#include "core/trouble.h"
#include "net/server_answer.h"

// Where the operator can do something about that answer of a server.
[[nodiscard]] TroubleKind KindOf(ServerFault fault);
