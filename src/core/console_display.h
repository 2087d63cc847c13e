#pragma once

#include "base/clock.h"
#include "base/status_display.h"

#include <functional>

// What --verbose prints: every status text, every command sent to the server and every reply, one
// line each with the time of day. The counters that change while a step waits would drown the steps
// themselves; the line that ends the wait tells what came of it.
class ConsoleDisplay : public StatusDisplay {
  public:
    // print receives each line without its line end.
    ConsoleDisplay(const Clock& clock, std::function<void(const QString&)> print);

    [[nodiscard]] bool InUse() const override { return true; }
    void ShowStatus(const QString& text) override;
    void ShowOnline(bool online) override;
    void ShowPictureCount(const QString& text) override;
    void ShowMegabytes(const QString& text) override;
    void LogCommand(const QString& command) override;
    void LogReply(const QString& reply) override;
    void LogState(const QString& state) override;

  private:
    void Print(const QString& mark, const QString& text);

    const Clock& clock;
    std::function<void(const QString&)> print;
    std::optional<bool> online;
    QString lastStatus;  // the line printed last, if it was a status
};
