#include "platform/file_use.h"

// Who reads a file keeps it from being renamed in any case: a new one is as good.
bool OnlyUser(const QFile& /*file*/) {
    return false;
}
