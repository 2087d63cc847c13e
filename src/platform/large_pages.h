#pragma once

#include <QtGlobal>

constexpr qint64 LargePage = 2 * 1024 * 1024;

// Has the system hold this memory, not used yet, in large pages where it can: who goes through it
// from end to end then waits less often for the place of the next page. Both begin and length are
// multiples of LargePage.
void UseLargePages(void* memory, qint64 bytes);
