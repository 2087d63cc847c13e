#pragma once

#include "base/status_display.h"

#include <functional>
#include <vector>

// Passes on what the program shows to every display that is in use.
class StatusHub : public StatusDisplay {
  public:
    // The display must outlive the hub or be removed first.
    void Add(StatusDisplay& display);
    void Remove(StatusDisplay& display);

    [[nodiscard]] bool InUse() const override;
    void ShowStatus(const QString& text) override;
    void ShowTimeOutLabel(std::optional<int> seconds) override;
    void ShowTimeOutGauge(std::optional<int> seconds) override;
    void ShowOnline(bool online) override;
    void ShowRecording(const QString& text) override;
    void ShowUpload(int percent) override;
    void ShowPictureCount(const QString& text) override;
    void ShowMegabytes(const QString& text) override;
    void ResetRunningTime() override;
    void LogCommand(const QString& command) override;
    void LogReply(const QString& reply) override;

  private:
    void Each(const std::function<void(StatusDisplay&)>& show);

    std::vector<StatusDisplay*> displays;
};
