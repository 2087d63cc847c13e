#include "platform/large_pages.h"

// They take a right that users do not have.
void UseLargePages(void* /*memory*/, qint64 /*bytes*/) {}
