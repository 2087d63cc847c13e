#include "platform/file_use.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <csignal>

bool OnlyUser(const QFile& file) {
    const int descriptor = file.handle();
    struct stat known {};
    if (fstat(descriptor, &known) != 0 || !S_ISREG(known.st_mode) || known.st_nlink != 1)
        return false;
    // A lease is given only on a file that nobody else has open. Who opens it at this moment sends
    // a signal, of a kind that is ignored unless somebody asks for it.
    if (fcntl(descriptor, F_SETSIG, SIGURG) != 0 || fcntl(descriptor, F_SETLEASE, F_WRLCK) != 0)
        return false;
    fcntl(descriptor, F_SETLEASE, F_UNLCK);
    return true;
}
