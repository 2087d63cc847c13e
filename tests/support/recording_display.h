#pragma once

#include "base/status_display.h"

#include <QStringList>

// A display that writes down everything it is shown, in order.
class RecordingDisplay : public StatusDisplay {
  public:
    QStringList Statuses;     // every status text
    QStringList Commands;     // every command sent
    QStringList States;       // every state of the run
    QList<int> Uploads;       // every value of the upload bar
    QStringList Counters;     // "Pic: 1", "MB: 0.01"
    QList<int> LabelSeconds;  // every number that the time-out label showed
    QList<int> GaugeSeconds;  // every value of the gauge
    bool LabelVisible = false;
    bool GaugeVisible = false;
    bool Online = false;
    QString Recording;

    [[nodiscard]] bool InUse() const override { return true; }
    void ShowStatus(const QString& text) override { Statuses << text; }
    void ShowTimeOutLabel(std::optional<int> seconds) override {
        LabelVisible = seconds.has_value();
        if (seconds && (LabelSeconds.isEmpty() || LabelSeconds.last() != *seconds))
            LabelSeconds << *seconds;
    }
    void ShowTimeOutGauge(std::optional<int> seconds) override {
        GaugeVisible = seconds.has_value();
        if (seconds) GaugeSeconds << *seconds;
    }
    void ShowOnline(bool online) override { Online = online; }
    void ShowRecording(const QString& text) override { Recording = text; }
    void ShowUpload(int percent) override { Uploads << percent; }
    void ShowPictureCount(const QString& text) override { Counters << text; }
    void ShowMegabytes(const QString& text) override { Counters << text; }
    void LogCommand(const QString& command) override { Commands << command; }
    void LogState(const QString& state) override { States << state; }
};
