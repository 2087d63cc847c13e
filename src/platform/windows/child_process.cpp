#include "platform/child_process.h"

// A program without a console starts others with one that nobody sees.
void ChildProcess::KeepOffTerminal(QProcess& /*process*/) {}
