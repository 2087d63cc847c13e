#pragma once

#include "base/status_display.h"

#include <vector>

// Passes on what the program shows to every display that is in use.
class StatusHub : public StatusDisplay {
  public:
    // The display must outlive the hub or be removed first.
    void Add(StatusDisplay& display) { displays.push_back(&display); }
    void Remove(StatusDisplay& display) { std::erase(displays, &display); }

    [[nodiscard]] bool InUse() const override;
    void ShowStatus(const QString& text) override { Each(&StatusDisplay::ShowStatus, text); }
    void ShowTimeOutLabel(std::optional<int> seconds) override {
        Each(&StatusDisplay::ShowTimeOutLabel, seconds);
    }
    void ShowTimeOutGauge(std::optional<int> seconds) override {
        Each(&StatusDisplay::ShowTimeOutGauge, seconds);
    }
    void ShowOnline(bool online) override { Each(&StatusDisplay::ShowOnline, online); }
    void ShowRecording(const QString& text) override { Each(&StatusDisplay::ShowRecording, text); }
    void ShowUpload(int percent) override { Each(&StatusDisplay::ShowUpload, percent); }
    void ShowPictureCount(const QString& text) override {
        Each(&StatusDisplay::ShowPictureCount, text);
    }
    void ShowMegabytes(const QString& text) override { Each(&StatusDisplay::ShowMegabytes, text); }
    void ResetRunningTime() override { Each(&StatusDisplay::ResetRunningTime); }
    void LogCommand(const QString& command) override { Each(&StatusDisplay::LogCommand, command); }
    void LogReply(const QString& reply) override { Each(&StatusDisplay::LogReply, reply); }
    void LogState(const QString& state) override { Each(&StatusDisplay::LogState, state); }

  private:
    template <typename Show, typename... What>
    void Each(Show show, const What&... what) {
        for (StatusDisplay* display : displays)
            if (display->InUse()) (display->*show)(what...);
    }

    std::vector<StatusDisplay*> displays;
};
