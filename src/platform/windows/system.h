#pragma once

// The system's own header without what hardly anyone needs.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
