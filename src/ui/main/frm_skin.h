#pragma once

#include "base/status_display.h"
#include "texts/texts.h"
#include "ui/skin/shaped_window.h"
#include "ui/skin/skin_folders.h"
#include "ui/skin/skinned_window.h"
#include "ui/skin/window_place.h"

class LinkButton;
class MessageBoxes;
class PictureBox;
class PictureButton;
class PreviewArea;
class GlyphButton;
class VisitorsView;
class Program;
class QComboBox;
class QLabel;
struct RunButtons;

// The main window: six buttons, two LEDs, the preview behind its flap, the driver label and list,
// dressed in a skin. When no skin can be used, a plain window with the same controls.
class frmSkin : public ShapedWindow, public StatusDisplay, public SkinnedWindow {
    Q_OBJECT

  public:
    // All outlive the window.
    frmSkin(Program& ownProgram, const SkinFolders& skinFolders, MessageBoxes& messageBoxes);
    ~frmSkin() override;

    PictureButton* btnStart;
    PictureButton* btnPause;
    PictureButton* btnStop;
    PictureButton* btnOptions;
    PictureButton* btnMin;
    PictureButton* btnExit;
    PictureButton* pic_klappe_open;
    PictureBox* pic_klappe;
    PictureBox* LEDLeft;    // lit while online
    PictureBox* LEDReigth;  // lit while a picture is being sent
    PreviewArea* preview;
    GlyphButton* btnView;    // changes between camera and visitors
    VisitorsView* visitors;  // over the preview when it is wanted
    QComboBox* cbDriver;
    QLabel* Label_Driver;
    QLabel* lblStatus;
    LinkButton* btnRemedy;  // in place of lblStatus while something can be put right

    // The names and the help of the controls come from these texts from now on, in the language in
    // use; they outlive the window. English without them.
    void SetTexts(const Texts& ownTexts);

    // Shows what visitors see in place of the camera, or the camera again.
    void ChangeView();

    // Dresses the window in the skin of the settings and shows it where it was last. What is
    // wrong with the skin is told once.
    void ShowSkinned();

    void LoadBackground(Skin& skin) override;
    void ApplyLayout(Skin& skin) override { ApplySkinLayout(skin); }
    void ApplySkinLayout(Skin& skin);
    [[nodiscard]] bool LayoutComplete() const { return layoutComplete; }

    [[nodiscard]] bool InUse() const override { return true; }
    void ShowStatus(const QString& text) override;
    void ShowTimeOutLabel(std::optional<int> seconds) override;
    void ShowOnline(bool online) override;
    void ShowPictureCount(const QString& text) override;
    void ShowMegabytes(const QString& text) override;

  signals:
    // F11: the overall status window is wanted.
    void StatusOverviewWanted();
    // The address of a camera was dropped on the camera list or the preview.
    void CameraDropped(const QString& address);
    // What is wrong is to be put right.
    void RemedyWanted();
    // The options menu is wanted beside btnOptions, which lies there on the desktop.
    void OptionsWanted(const QRect& button);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Led {
        QPixmap Dark;
        QPixmap Lit;
    };

    void Connect();
    void ShowRunState();
    void EnableButtons(const RunButtons& buttons);
    void ConnectCamera();
    void SetTabOrder();
    void LoadPictures(Skin& skin);
    void PlaceFlap(Skin& skin);
    [[nodiscard]] int RoomFor(const QRect& strip) const;
    [[nodiscard]] bool InDriverArea(const QWidget* control) const;
    void PlaceDriverArea();
    void FitDriverFont();
    void PlaceStatus();
    static void WriteOn(QWidget& label, const QColor& ground);
    void ColourDriver();
    void LayOutPlain();
    void ShowFlap();
    void ShowLeds();
    void ShowDrivers();
    void ShowPreviewSettings();
    void ShowStatusTexts();
    void Renew(QString& part, const QString& text);
    [[nodiscard]] QString ShowRemedy();
    void Minimise();
    void ShowTexts();
    void ShowPauseText();
    void ShowViewTexts();
    [[nodiscard]] QString Word(const QString& key) const { return texts->Get("frmSkin", key); }

    Program& program;
    const SkinFolders& folders;
    MessageBoxes& boxes;
    WindowPlace place;
    Texts builtIn{Texts::Language::English};
    const Texts* texts = &builtIn;
    Led leftLed;
    Led rightLed;
    bool flapEnabled = false;
    bool flapOpen = false;
    bool layoutComplete = false;
    bool statusFits = false;     // in the skin
    bool keyboardWaits = false;  // for a button to be switched on
    bool isOnline = false;
    QString status;
    QString timeOut;
    QString pictureCount;
    QString megabytes;
};
