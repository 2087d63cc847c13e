#pragma once

class QProcess;

namespace ChildProcess {

// Keeps a program that is to be started off the terminal of this one: it can ask nobody there, and
// the keys that end this program leave its end to this program.
void KeepOffTerminal(QProcess& process);

}  // namespace ChildProcess
