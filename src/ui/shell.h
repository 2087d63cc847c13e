#pragma once

#include "ui/dialogs/frm_msg.h"
#include "ui/dialogs/frm_oberflaeche.h"
#include "ui/dialogs/frm_statusgesamt.h"
#include "ui/dialogs/info.h"
#include "ui/main/frm_skin.h"
#include "ui/main/splash.h"
#include "ui/menu/frm_download_hilfe.h"
#include "ui/menu/frm_language.h"
#include "ui/menu/frm_menue.h"
#include "ui/menu/frm_web.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/status/frm_status.h"
#include "ui/texts/languages.h"
#include "ui/texts/toolkit_texts.h"
#include "ui/tray/run_figures.h"
#include "ui/tray/tray1.h"

class MessageBoxes;
class Opener;

// All windows of the program and what connects them: the main window, the status window, the
// options menu with its fly-outs, the overview, help, about box and the tray icon.
class Shell : public QObject {
    Q_OBJECT

  public:
    // All outlive the shell. folders: the program folder, then the installed copies of what the
    // program only reads.
    Shell(Program& ownProgram, const QStringList& ownFolders, MessageBoxes& messageBoxes,
          Opener& ownOpener);
    ~Shell() override;

  private:
    Program& program;
    QStringList folders;
    MessageBoxes& boxes;
    Opener& opener;

  public:
    Texts Words{Texts::Language::English};
    ToolkitTexts ToolkitWords{Words};
    Languages LanguageTables;
    SkinFolders Skins;
    RunFigures Figures;
    Splash StartPicture;
    frmSkin MainWindow;
    frmStatus StatusWindow;
    frmOberflaeche Chooser;
    frmLanguage LanguageWindow;
    frmWeb WebWindow;
    frmMenue Menu;
    frmStatusgesamt Overview;
    frmDownloadHilfe HelpPrompt;
    Info AboutBox;
    frmFTP FtpWindow;
    frmCam CameraWindow;
    frmText TextWindow;
    frmBild PictureWindow;
    frmOverlay OverlayWindow;
    Tray1 Tray;
    frmMsg HangUpWindow;

    // Shows the main window, the tray icon and, when it was open at the end of the last run, the
    // status window. After the program has loaded.
    void Show();

    // The actions of the menu.
    void Act(frmMenue::Entry entry);
    // Shows or hides the status window and remembers it.
    void ShowStatusWindow(bool shown);
    void Restore();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void ConnectMenu();
    void ConnectWindows();
    void RememberStatusWindow(bool shown);
    void OpenHelp();
    void Open(const QUrl& address);
};
