#include "platform/memory_folder.h"

#include <QFileInfo>

#include <unistd.h>

QString MemoryFolder() {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QFileInfo info(folder);
    // Who becomes another user may take the variable along.
    const bool usable =
        info.isAbsolute() && info.isDir() && info.isWritable() && info.ownerId() == geteuid();
    return usable ? folder : QString();
}
