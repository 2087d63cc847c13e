#include "ui/shell.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "base/profile_file.h"
#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/run_state.h"
#include "ui/dialogs/frm_another_camera.h"
#include "ui/dialogs/frm_log.h"
#include "ui/dialogs/frm_msg.h"
#include "ui/dialogs/frm_oberflaeche.h"
#include "ui/dialogs/frm_report.h"
#include "ui/dialogs/frm_statusgesamt.h"
#include "ui/dialogs/info.h"
#include "ui/film/frm_film.h"
#include "ui/guide/guide.h"
#include "ui/main/frm_skin.h"
#include "ui/main/splash.h"
#include "ui/menu/frm_download_hilfe.h"
#include "ui/menu/frm_language.h"
#include "ui/menu/frm_menue.h"
#include "ui/menu/frm_web.h"
#include "ui/menu/help_key.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/hours/frm_hours.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/remedy.h"
#include "ui/skin/picture_button.h"
#include "ui/skin/window_system.h"
#include "ui/status/frm_status.h"
#include "ui/texts/languages.h"
#include "ui/texts/toolkit_texts.h"
#include "ui/tray/program_icons.h"
#include "ui/tray/run_figures.h"
#include "ui/tray/tray1.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QPointer>

namespace {

// Own settings of the windows.
const QString windowSection = "Window";
const QString statusWindowKey = "StatusWindow";

}  // namespace

struct Shell::Parts {
    Program& Core;
    QStringList Folders;
    MessageBoxes& Boxes;
    Opener Open;

    Texts& Words = Core.Words;
    ToolkitTexts ToolkitWords{Words};
    Languages LanguageTables{Core, Words};
    SkinFolders Skins{Folders};
    RunFigures Figures{Core};
    Splash StartPicture{Skins, Core.Wait.OwnClock()};
    frmSkin MainWindow{Core, Skins, Boxes};
    frmStatus StatusWindow{Core, Skins, Words};
    frmOberflaeche Chooser{Core, Skins, Boxes};
    frmLanguage LanguageWindow{LanguageTables, Words, Skins, Core.Wait, &MainWindow};
    frmWeb WebWindow{Words, Open, &MainWindow};
    frmMenue Menu{Words, Core.Wait, Core.State, &MainWindow};
    frmStatusgesamt Overview{Core, Figures, Words};
    frmLog LogWindow{Core.ProgramFolder(), Core.Wait.OwnClock(), Words, Open};
    frmReport ReportWindow{Core, Words};
    frmAnotherCamera AnotherCameraWindow{Core.ProgramFolder(), Words, &MainWindow};
    frmDownloadHilfe HelpPrompt{Core.State, Words, Open};
    Info AboutBox{Skins, Words};
    frmFTP FtpWindow{{Core, Words, Boxes}, LanguageTables, &MainWindow};
    frmCam CameraWindow{{Core, Words, Boxes}, LanguageTables, &MainWindow};
    frmHours HoursWindow{{Core, Words, Boxes}, &MainWindow};
    frmText TextWindow{{Core, Words, Boxes}, &MainWindow};
    frmBild PictureWindow{{Core, Words, Boxes}, &MainWindow};
    frmOverlay OverlayWindow{{Core, Words, Boxes}, TextWindow, PictureWindow, &MainWindow};
    Tray1 Tray{Core, Figures, Words, Folders};
    frmMsg HangUpWindow{Core, Words, &MainWindow};
    Guide FirstSteps{{Core, Words, Boxes}, LanguageTables, &MainWindow};
    frmFilm FilmWindow{{Core, Words, Boxes}, Open, &MainWindow};
};

Shell::Shell(Program& program, const QStringList& folders, MessageBoxes& boxes,
             const SystemOpener& opener)
    : parts(new Parts{program, folders, boxes, [this](const QUrl& at) { OpenAddress(at); }}),
      Words(parts->Words),
      LanguageTables(parts->LanguageTables),
      StartPicture(parts->StartPicture),
      MainWindow(parts->MainWindow),
      StatusWindow(parts->StatusWindow),
      Chooser(parts->Chooser),
      LanguageWindow(parts->LanguageWindow),
      WebWindow(parts->WebWindow),
      Menu(parts->Menu),
      Overview(parts->Overview),
      LogWindow(parts->LogWindow),
      ReportWindow(parts->ReportWindow),
      AnotherCameraWindow(parts->AnotherCameraWindow),
      HelpPrompt(parts->HelpPrompt),
      AboutBox(parts->AboutBox),
      FtpWindow(parts->FtpWindow),
      CameraWindow(parts->CameraWindow),
      OverlayWindow(parts->OverlayWindow),
      HoursWindow(parts->HoursWindow),
      Tray(parts->Tray),
      HangUpWindow(parts->HangUpWindow),
      FirstSteps(parts->FirstSteps),
      FilmWindow(parts->FilmWindow),
      openAddress(opener) {
    MainWindow.SetTexts(Words);
    LanguageTables.SetFields([this] {
        return MessageFields{FtpWindow.OfflinePath(), CameraWindow.PathText()};
    });
    ConnectMenu();
    ConnectWindows();
    new HelpKey([this](const QString& page) { OpenHelp(page); }, this);
}

Shell::~Shell() {
    // The mouse leaves the buttons when their window goes, after the status window.
    for (PictureButton* button : MainWindow.findChildren<PictureButton*>())
        button->removeEventFilter(this);
}

void Shell::ConnectMenu() {
    Menu.AddFlyOut(frmMenue::Language, LanguageWindow);
    Menu.AddFlyOut(frmMenue::Skins, {&Chooser, [this] { Chooser.Fit(); },
                                     [this](const QPoint& at) { Chooser.Show(at); },
                                     [this] { Chooser.FocusRow(); }});
    Menu.AddFlyOut(frmMenue::Web, WebWindow);
    connect(&MainWindow, &frmSkin::OptionsWanted, &Menu, &frmMenue::OpenBeside);
    // What an entry without a fly-out opens.
    const auto open = [this](frmMenue::Entry entry, auto action) {
        connect(&Menu, &frmMenue::Chosen, this, [entry, action](frmMenue::Entry chosen) {
            if (chosen == entry) action();
        });
    };
    open(frmMenue::Status, [this] { ShowStatusWindow(true); });
    open(frmMenue::Ftp, [this] { FtpWindow.Open(); });
    open(frmMenue::Camera, [this] { CameraWindow.Open(); });
    open(frmMenue::Overlay, [this] { OverlayWindow.Open(); });
    open(frmMenue::Hours, [this] { HoursWindow.Open(); });
    open(frmMenue::Help, [this] { OpenHelp(); });
    open(frmMenue::Info, [this] { AboutBox.Show(); });
    open(frmMenue::Guide, [this] { FirstSteps.Open(); });
    open(frmMenue::Archive, [this] { CameraWindow.Archive.Open(); });
    open(frmMenue::Film, [this] { FilmWindow.Open(); });
    open(frmMenue::Visitors, [this] { MainWindow.ChangeView(); });
    open(frmMenue::AnotherCamera, [this] { AnotherCameraWindow.Open(); });
    connect(&parts->Core, &Program::SetUpWanted, &FirstSteps, qOverload<>(&Guide::Open));
    connect(&LanguageWindow, &frmLanguage::Choosing, &Menu, &frmMenue::CloseAll);
    connect(&WebWindow, &frmWeb::Choosing, &Menu, &frmMenue::CloseAll);
    connect(&Chooser, &frmOberflaeche::Choosing, &Menu, &frmMenue::CloseAll);
}

void Shell::ConnectWindows() {
    Chooser.AddWindow(MainWindow);
    Chooser.AddWindow(StatusWindow);
    const auto title = [this] { Chooser.setWindowTitle(Words.Get("frmOberflaeche", "Title")); };
    connect(&Words, &Texts::Changed, &Chooser, title);
    title();
    connect(&MainWindow, &frmSkin::StatusOverviewWanted, &Overview, &frmStatusgesamt::Show);
    connect(&MainWindow, &frmSkin::CameraDropped, this, [this](const QString& address) {
        CameraWindow.Open();
        CameraWindow.AddCamera(address);
    });
    connect(&StatusWindow, &frmStatus::Closed, this, [this] { RememberStatusWindow(false); });
    connect(&Tray, &Tray1::RestoreWanted, this, &Shell::Restore);
    connect(&Tray, &Tray1::RemedyWanted, this, &Shell::OpenRemedy);
    connect(&MainWindow, &frmSkin::RemedyWanted, this, &Shell::OpenRemedy);
    connect(&Overview, &frmStatusgesamt::RemedyWanted, this, &Shell::OpenRemedy);
    connect(&Overview, &frmStatusgesamt::LogWanted, &LogWindow, &frmLog::Show);
    connect(&AboutBox, &Info::ReportWanted, &ReportWindow, &frmReport::Open);
    connect(&AnotherCameraWindow, &frmAnotherCamera::Made, this, &Shell::ProgramWanted);
    connect(&Tray, &Tray1::StatusWanted, this, &Shell::ShowStatusWindow);
    for (PictureButton* button : MainWindow.findChildren<PictureButton*>())
        button->installEventFilter(this);
}

void Shell::Show() {
    QApplication::setWindowIcon(ProgramIcon(parts->Folders, "stillpost"));
    MainWindow.ShowSkinned();
    StartPicture.Finish();
    Tray.Show();
    if (ReadSetting(parts->Core.SettingsFile(), windowSection, statusWindowKey) != "1") return;
    StatusWindow.Show(&MainWindow);
    Tray.SetStatusShown(true);
}

void Shell::OfferGuide() {
    const Settings& values = parts->Core.State.Values;
    if (!QFile::exists(parts->Core.SettingsFile()))
        FirstSteps.Open(Guide::LanguageOf(QLocale::system()));
    else if (!values.Name.isEmpty() && values.Treiber.isEmpty())
        FirstSteps.Open();  // made for another camera, which is not chosen yet
}

void Shell::Restore() {
    // Where windows cannot come to the front by themselves, one that is shown anew does.
    if (!WindowSystem::PlacesWindows() && !MainWindow.isActiveWindow()) MainWindow.hide();
    MainWindow.showNormal();
    MainWindow.raise();
    MainWindow.activateWindow();
}

void Shell::ComeToFront(const QByteArray& token) {
    // Where Qt looks for it on Wayland.
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
    Restore();
}

void Shell::OpenRemedy() {
    const auto& trouble = parts->Core.Run.Ongoing();
    const auto remedy = Remedy::For(trouble, Words);
    if (!remedy) return;
    const bool camera = remedy->In == Remedy::Window::Camera;
    SettingsWindow& window = camera ? static_cast<SettingsWindow&>(CameraWindow) : FtpWindow;
    window.OpenAt(remedy->Field, trouble->Why);
}

void Shell::ShowStatusWindow(bool shown) {
    if (shown)
        StatusWindow.Show(&MainWindow);
    else
        StatusWindow.hide();
    RememberStatusWindow(shown);
}

void Shell::RememberStatusWindow(bool shown) {
    Tray.SetStatusShown(shown);
    parts->Core.Remember({{windowSection, statusWindowKey, shown ? QString("1") : QString("0")}});
}

void Shell::OpenHelp(const QString& page) {
    if (Menu.isVisible()) Menu.CloseAll();
    const bool german = parts->Core.State.LangGerman;
    const QString book = german ? QString("/Hilfe/") : QString("/help/");
    const QString start = german ? QString("HILFE.html") : QString("HELP.html");
    QString file;
    if (!page.isEmpty()) file = Paths::Find(parts->Folders, book + page + ".html");
    if (file.isEmpty()) file = Paths::Find(parts->Folders, book + start);
    if (file.isEmpty())
        HelpPrompt.Show();
    else
        OpenAddress(QUrl::fromLocalFile(file));
}

void Shell::OpenAddress(const QUrl& address) {
    openAddress(address, [self = QPointer(this), address] {
        if (!self) return;
        const QString place =
            address.isLocalFile() ? Paths::Native(address.toLocalFile()) : address.toString();
        self->parts->Boxes.Show("Stillpost", self->Words.Get("Messages", "CannotOpen").arg(place));
    });
}

// The status window tells what the button under the mouse does.
bool Shell::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Enter)
        StatusWindow.ShowHelp(qobject_cast<QWidget*>(object)->toolTip());
    else if (event->type() == QEvent::Leave)
        StatusWindow.ShowHelp({});
    return QObject::eventFilter(object, event);
}
