#pragma once

#include <QByteArray>

// The system's manager of services, where it has started this program: it is told when the work has
// begun, what is being done, and again and again that the program still lives. Elsewhere nothing
// happens.
class ServiceManager {
  public:
    // Takes over what the manager has told this process; what the program starts is not told. One
    // for each process.
    [[nodiscard]] static ServiceManager OfThisProcess();

    // Lines such as "READY=1" and "STATUS=…", see sd_notify(3). Waits for nothing.
    void Tell(const QByteArray& lines) const;

    // How long the manager waits for a sign of life, milliseconds; 0: it wants none.
    [[nodiscard]] int WatchdogMilliseconds() const { return watchdog; }
    // What is printed on standard error comes into the system's journal, which has times of its
    // own.
    [[nodiscard]] bool KeepsJournal() const { return journal; }

  private:
    QByteArray socket;  // empty: nobody to be told
    int watchdog = 0;
    bool journal = false;
};
