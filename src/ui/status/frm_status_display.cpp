#include "base/profile_file.h"
#include "core/program.h"
#include "core/settings/interval.h"
#include "ui/status/frm_status.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/status/status_texts.h"

// What the status window shows of the work, and what its sliders change.

bool frmStatus::InUse() const {
    return program.State.StatusShown;
}

void frmStatus::showEvent(QShowEvent* event) {
    ShapedWindow::showEvent(event);
    program.State.StatusShown = true;
    Timer1.SetEnabled(true);
    RefreshStatus();
    // Before the first step the label keeps the caption that it was made with.
    if (!memory.Status.isNull()) ShowStatus(memory.Status);
    ShowRecording(memory.Recording);
    ShowOnline(memory.Online);
    ShowUpload(memory.Upload);
    ShowPictureCount(memory.PictureCount);
    ShowMegabytes(memory.Megabytes);
    ShowTimeOutLabel({});
    ShowTimeOutGauge({});
    ShowRunningTime();
    ShowHelp({});
}

void frmStatus::hideEvent(QHideEvent* event) {
    ShapedWindow::hideEvent(event);
    program.State.StatusShown = false;
    Timer1.SetEnabled(false);
}

void frmStatus::ShowStatus(const QString& text) {
    Label4->setText(text);
}

void frmStatus::ShowTimeOutLabel(std::optional<int> seconds) {
    if (seconds) Label9->setText(StatusTexts::TimeOut(*seconds));
    Label9->setVisible(seconds.has_value());
}

void frmStatus::ShowTimeOutGauge(std::optional<int> seconds) {
    if (seconds) Gauge->SetValue(*seconds);
    Gauge->setVisible(seconds.has_value());
}

void frmStatus::ShowOnline(bool online) {
    Label3->setVisible(online);
}

void frmStatus::ShowRecording(const QString& text) {
    Label2->setText(text);
}

void frmStatus::ShowUpload(int percent) {
    ProgressBar1->SetValue(std::clamp(percent, 0, 100));
}

void frmStatus::ShowPictureCount(const QString& text) {
    Label7->setText(text);
    ShowFormat();
}

void frmStatus::ShowMegabytes(const QString& text) {
    Label8->setText(text);
}

void frmStatus::ShowRunningTime() {
    lblTime->setText(StatusTexts::RunningTime(memory.RunningTime()));
}

void frmStatus::ShowFormat() {
    const QSize size(program.ezVidCap1.Width(), program.ezVidCap1.Height());
    lblAufloesung->setText(program.State.DriverPresent ? StatusTexts::Format(size) : QString());
}

void frmStatus::ShowQuality(int percent) {
    lblJPG->setText(StatusTexts::Quality(percent));
    Slider1->setAccessibleDescription(lblJPG->text());
}

void frmStatus::ShowInterval(qint64 milliseconds) {
    lblUpload->setText(StatusTexts::Interval(milliseconds));
    if (Slider2->Choosing()) Label6->setText(StatusTexts::ChosenInterval(milliseconds));
    Slider2->setAccessibleDescription(lblUpload->text());
}

void frmStatus::RefreshStatus() {
    const Settings& values = program.State.Values;
    const QString selected = program.DriverText();
    if (!program.State.DriverPresent)
        Label1->setText("No Video Capture Device!");
    else
        Label1->setText(selected.isEmpty() ? values.Treiber : selected);
    // What is being chosen at this moment stands.
    if (!Slider1->Choosing()) {
        const int quality = ValLong(values.JPGQuality);
        ShowQuality(quality);
        Slider1->SetValue(quality);
    }
    if (!Slider2->Choosing()) {
        const qint64 interval = values.TotalInterval();
        ShowInterval(interval);
        Slider2->SetValue(
            static_cast<int>(std::min<qint64>(interval, std::numeric_limits<int>::max())));
    }
    ShowFormat();
    lblOverlay->setText(StatusTexts::Overlay(values.Overlay));
}

// Only what has changed is handed on: the other settings may be in use by a picture on its way, and
// the time to the next picture goes on running.
void frmStatus::SaveQuality(int percent) {
    const QString quality = QString::number(percent);
    WriteSetting(program.SettingsFile(), "Einstellungen", "JPGQuality", quality);
    program.State.Values.JPGQuality = quality;
    program.PictureValues.JPGQuality = quality;
    ShowQuality(percent);
}

void frmStatus::SaveInterval(int milliseconds) {
    const IntervalParts parts = SplitInterval(milliseconds);
    const auto write = [this](const QString& key, int number) {
        WriteSetting(program.SettingsFile(), "Einstellungen", key, QString::number(number));
    };
    write("Framerate", parts.Framerate);
    write("Uptime", parts.Uptime);
    program.State.Values.Framerate = parts.Framerate;
    program.State.Values.Uptime = parts.Uptime;
    program.Cycle.ApplyInterval();
    ShowInterval(milliseconds);
}
