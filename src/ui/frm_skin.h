#pragma once

#include "base/status_display.h"

#include <QWidget>

class PreviewArea;
class Program;
class QComboBox;
class QLabel;
class QPushButton;

// The main window: six buttons, the preview, the driver label and list, and the status line.
class frmSkin : public QWidget, public StatusDisplay {
    Q_OBJECT

  public:
    explicit frmSkin(Program& program);
    ~frmSkin() override;

    QPushButton* btnStart;
    QPushButton* btnPause;
    QPushButton* btnStop;
    QPushButton* btnOptions;
    QPushButton* btnMin;
    QPushButton* btnExit;
    QComboBox* cbDriver;
    QLabel* Label_Driver;
    QLabel* lblStatus;

    [[nodiscard]] bool InUse() const override { return true; }
    void ShowStatus(const QString& text) override;
    void ShowTimeOutLabel(std::optional<int> seconds) override;
    void ShowTimeOutGauge(std::optional<int>) override {}
    void ShowOnline(bool online) override;
    void ShowRecording(const QString&) override {}
    void ShowUpload(int) override {}
    void ShowPictureCount(const QString& text) override;
    void ShowMegabytes(const QString& text) override;
    void ResetRunningTime() override {}
    void LogCommand(const QString&) override {}
    void LogReply(const QString&) override {}

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QPushButton* AddButton(const QString& text, const QString& shortcut);
    void LayOut();
    void Connect();
    void ShowDrivers();
    void ShowPreviewSettings();
    void ShowCounters();
    void OpenSettingsFile();

    Program& program;
    PreviewArea* preview;
    QLabel* lblTimeOut;
    QLabel* lblOnline;
    QLabel* lblCounters;
    QString pictureCount;
    QString megabytes;
};
