#pragma once

#include "camera/capture_fault.h"

class Texts;

// What to do about it, in a sentence of the language in use; of none at all, that no picture comes.
[[nodiscard]] QString FaultAdvice(CaptureFault fault, const Texts& texts);
