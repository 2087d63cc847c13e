#pragma once

#include <QString>

#include <functional>

class Waiting;
struct Platform;

// What a command that works without windows needs. All outlive it.
struct CommandSurroundings {
    Waiting& Wait;
    const Platform& System;
    QString Folder;                             // the program folder
    std::function<void(const QString&)> Print;  // a line for people, without its end
};

// How a command ends, for those who start it from a script.
enum class CommandStatus {
    Fine = 0,
    Warnings = 1,  // pictures can be published, but something is not as it seems
    Failed = 2,    // none can be, or none was
};
