#pragma once

#include "base/clock.h"
#include "core/commands/surroundings.h"

class Program;

// `stillpost --once`: takes one picture, publishes it and ends the program. What may pass by
// itself, as a camera that begins slowly or a server that is restarted, is tried again for a
// minute.
class Once : public QObject {
    Q_OBJECT

  public:
    // The program, not loaded yet, outlives this.
    Once(Program& ownProgram, std::function<void(const QString&)> ownPrint);

    // Inside the event loop. The program has ended when it says so.
    void Begin();
    [[nodiscard]] CommandStatus Status() const { return status; }

  private:
    void Look();
    void End(CommandStatus how, const QString& text);
    [[nodiscard]] QString Text(const QString& key) const;

    Program& program;
    std::function<void(const QString&)> print;
    Timer limit;
    qint64 began = 0;  // clock milliseconds
    CommandStatus status = CommandStatus::Failed;
    bool ended = false;
};
