#pragma once

#include "ui/menu/links.h"

#include <QObject>
#include <QStringList>

#include <memory>

class Guide;
class Info;
class Languages;
class MessageBoxes;
class Program;
class Splash;
class Texts;
class Tray1;
class frmAnotherCamera;
class frmBild;
class frmCam;
class frmDownloadHilfe;
class frmFTP;
class frmFilm;
class frmHours;
class frmLanguage;
class frmLog;
class frmMenue;
class frmMsg;
class frmOberflaeche;
class frmOverlay;
class frmReport;
class frmSkin;
class frmStatus;
class frmStatusgesamt;
class frmWeb;

// All windows of the program and what connects them: the main window, the status window, the
// options menu with its fly-outs, the overview, help, about box and the tray icon.
class Shell : public QObject {
    Q_OBJECT

    struct Parts;
    std::unique_ptr<Parts> parts;

  public:
    // Opens an address, or calls `failed`, perhaps later.
    using SystemOpener =
        std::function<void(const QUrl& address, const std::function<void()>& failed)>;

    // Program and message boxes outlive the shell. folders: the program folder, then the installed
    // copies of what the program only reads.
    Shell(Program& program, const QStringList& folders, MessageBoxes& boxes,
          const SystemOpener& opener);
    ~Shell() override;

    Texts& Words;
    Languages& LanguageTables;
    Splash& StartPicture;
    frmSkin& MainWindow;
    frmStatus& StatusWindow;
    frmOberflaeche& Chooser;
    frmLanguage& LanguageWindow;
    frmWeb& WebWindow;
    frmMenue& Menu;
    frmStatusgesamt& Overview;
    frmLog& LogWindow;
    frmReport& ReportWindow;
    frmAnotherCamera& AnotherCameraWindow;
    frmDownloadHilfe& HelpPrompt;
    Info& AboutBox;
    frmFTP& FtpWindow;
    frmCam& CameraWindow;
    frmOverlay& OverlayWindow;
    frmHours& HoursWindow;
    Tray1& Tray;
    frmMsg& HangUpWindow;
    Guide& FirstSteps;
    frmFilm& FilmWindow;

    // Shows the main window, the tray icon and, when it was open at the end of the last run, the
    // status window. After the program has loaded.
    void Show();

    // Opens the guide where there are no settings yet, in the system's language, or all but the
    // camera.
    void OfferGuide();
    // A page of the help in the language in use, named without its ending; where that is missing
    // the start page, else the offer to download the help.
    void OpenHelp(const QString& page = {});
    // Shows or hides the status window and remembers it.
    void ShowStatusWindow(bool shown);
    void Restore();
    // The same for somebody who has started the program once more. token: the desktop's leave to
    // come to the front; may be empty.
    void ComeToFront(const QByteArray& token);
    // Opens the settings where what is wrong with the run is put right.
    void OpenRemedy();

  signals:
    // A second program is to be started with that program folder.
    void ProgramWanted(const QString& folder);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void ConnectMenu();
    void ConnectWindows();
    void RememberStatusWindow(bool shown);
    void OpenAddress(const QUrl& address);

    SystemOpener openAddress;
};
