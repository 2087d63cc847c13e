#include "platform/foreground.h"

// The desktop decides that, by the token that goes along (core/folder_claim.h).
void Foreground::HandTo(qint64 /*process*/) {}
