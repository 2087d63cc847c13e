#include "platform/child_process.h"

#include <QProcess>

#include <unistd.h>

void ChildProcess::KeepOffTerminal(QProcess& process) {
    process.setChildProcessModifier([] { static_cast<void>(setsid()); });
}
