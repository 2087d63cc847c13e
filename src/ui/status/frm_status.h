#pragma once

#include "base/clock.h"
#include "base/status_display.h"
#include "ui/skin/shaped_window.h"
#include "ui/skin/skinned_window.h"
#include "ui/skin/window_place.h"
#include "ui/status/status_memory.h"

class GlyphButton;
class PictureBar;
class PictureSlider;
class Program;
class ReadoutLabel;
class SkinFolders;
class SkinLayout;
class Texts;

// The status window: what the program is doing, and the sliders for JPEG quality and interval. It
// is dressed in the skin in use. While it is hidden nothing updates it; shown again, it is up to
// date. Its own texts are the same in every language, the help for what is under the mouse is not.
class frmStatus : public ShapedWindow, public SkinnedWindow, public StatusDisplay {
    Q_OBJECT

  public:
    // All outlive the window.
    frmStatus(Program& ownProgram, const SkinFolders& skinFolders, Texts& ownTexts);
    ~frmStatus() override;

    ReadoutLabel* Label1;  // capture driver
    ReadoutLabel* Label2;  // recording state
    ReadoutLabel* Label3;  // online state
    ReadoutLabel* Label4;  // status text
    ReadoutLabel* Label5;  // captions of the sliders
    ReadoutLabel* Label6;
    ReadoutLabel* Label7;  // picture count
    ReadoutLabel* Label8;  // megabytes sent
    ReadoutLabel* Label9;  // time-out counter
    ReadoutLabel* lblAufloesung;
    ReadoutLabel* lblJPG;
    ReadoutLabel* lblmouseover;
    ReadoutLabel* lblOverlay;
    ReadoutLabel* lblTime;
    ReadoutLabel* lblUpload;
    PictureSlider* Slider1;  // JPEG quality, per cent
    PictureSlider* Slider2;  // upload interval, milliseconds
    PictureBar* ProgressBar1;
    PictureBar* Gauge;  // of the time-out
    GlyphButton* btnClose;

    // Shows the window where it was last, or else beside the neighbour, in front of the others.
    void Show(const QWidget* neighbour = nullptr);

    // Per cent; milliseconds. Only the labels: the handles stay where they are.
    void ShowQuality(int percent);
    void ShowInterval(qint64 milliseconds);
    // Fills labels and sliders from the settings in force.
    void RefreshStatus();
    // Help for a control of any window; empty for none. Ignored while the window is not shown.
    void ShowHelp(const QString& text);

    void LoadBackground(Skin& skin) override;
    void ApplyLayout(Skin& skin) override { ApplyStatusLayout(skin); }
    void ApplyStatusLayout(Skin& skin);

    [[nodiscard]] bool InUse() const override;
    void ShowStatus(const QString& text) override;
    void ShowTimeOutLabel(std::optional<int> seconds) override;
    void ShowTimeOutGauge(std::optional<int> seconds) override;
    void ShowOnline(bool online) override;
    void ShowRecording(const QString& text) override;
    void ShowUpload(int percent) override;
    void ShowPictureCount(const QString& text) override;
    void ShowMegabytes(const QString& text) override;
    void ResetRunningTime() override { ShowRunningTime(); }

  signals:
    // The operator has closed the window.
    void Closed();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    [[nodiscard]] QList<ReadoutLabel*> StatusLabels() const;
    void NameControls();
    void Connect();
    void ConnectSliders();
    void AddContextMenu();
    void ShowNames();
    void ShowHelpFor(const QObject* control);
    void ShowFormat();
    void ShowRunningTime();
    void SaveQuality(int percent);
    void SaveInterval(int milliseconds);
    void LoadPictures(Skin& skin, bool ownBar);
    void SetLabelColour(const QColor& colour);
    void SetFonts();
    void PlaceControls(const SkinLayout& positions);
    void PlaceClose(const SkinLayout& positions);
    [[nodiscard]] QPoint FreeCorner() const;
    void PlaceTimeOut(const SkinLayout& positions, const QString& skinName);
    void FitWidths(int driverWidth);
    void LayOutPlain();

    Program& program;
    const SkinFolders& folders;
    Texts& texts;
    StatusMemory memory;
    QAction* closeAction;
    WindowPlace place;
    Timer Timer1;                         // the running time
    const QObject* underMouse = nullptr;  // the control whose help is shown
    bool dressed = false;
};
