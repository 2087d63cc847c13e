#pragma once

#include <QString>

#include <optional>

// What the program shows of its work: short status texts, time-out counter and gauge, counters and
// the upload bar. The console and the windows implement what they show of it; StatusHub passes
// everything on to all of them.
class StatusDisplay {
  public:
    virtual ~StatusDisplay() = default;

    // Whether anybody looks; the FTP control leaves gauge and label alone otherwise.
    [[nodiscard]] virtual bool InUse() const { return false; }

    // The step that runs: "Send File", "Wait...", "stopped".
    virtual void ShowStatus(const QString& /*text*/) {}

    // "Time Out: N s"; nothing hides the label.
    virtual void ShowTimeOutLabel(std::optional<int> /*seconds*/) {}
    // The gauge beside it, 0 to 25 seconds; nothing hides it.
    virtual void ShowTimeOutGauge(std::optional<int> /*seconds*/) {}

    // The two indicators that tell whether the machine is online.
    virtual void ShowOnline(bool /*online*/) {}
    // The recording state: "Rec." or empty.
    virtual void ShowRecording(const QString& /*text*/) {}

    // The upload bar, 0 to 100 per cent.
    virtual void ShowUpload(int /*percent*/) {}

    // "Pic: N" and "MB: N".
    virtual void ShowPictureCount(const QString& /*text*/) {}
    virtual void ShowMegabytes(const QString& /*text*/) {}

    // The running time starts at "00:00:00" again.
    virtual void ResetRunningTime() {}

    // A command sent to the server or a reply received, without its line end. Never a password.
    virtual void LogCommand(const QString& /*command*/) {}
    virtual void LogReply(const QString& /*reply*/) {}
    // What the program does from now on, in a few words.
    virtual void LogState(const QString& /*state*/) {}
};
