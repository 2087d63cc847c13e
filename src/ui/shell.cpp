#include "ui/shell.h"

#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "core/program.h"
#include "ui/menu/help_page.h"
#include "ui/menu/opener.h"
#include "ui/skin/picture_button.h"
#include "ui/tray/program_icons.h"

#include <QApplication>
#include <QEvent>

namespace {

// Own settings of the windows.
const QString windowSection = "Window";
const QString statusWindowKey = "StatusWindow";

}  // namespace

Shell::Shell(Program& ownProgram, const QStringList& ownFolders, MessageBoxes& messageBoxes,
             Opener& ownOpener)
    : program(ownProgram),
      folders(ownFolders),
      boxes(messageBoxes),
      opener(ownOpener),
      LanguageTables(program, Words),
      Skins(folders),
      Figures(program),
      StartPicture(Skins, program.Wait.OwnClock()),
      MainWindow(program, Skins, boxes),
      StatusWindow(program, Skins, Words),
      Chooser(program, Skins, boxes),
      LanguageWindow(LanguageTables, Words, Skins, program.Wait, &MainWindow),
      WebWindow(Words, opener, &MainWindow),
      Menu(Words, program.Wait, program.State, &MainWindow),
      Overview(program, Figures, Words),
      HelpPrompt(program.State, Words, opener),
      AboutBox(Skins, Words),
      FtpWindow({program, Words, boxes}, LanguageTables, &MainWindow),
      CameraWindow({program, Words, boxes}, LanguageTables, &MainWindow),
      TextWindow({program, Words, boxes}, &MainWindow),
      PictureWindow({program, Words, boxes}, &MainWindow),
      OverlayWindow({program, Words, boxes}, TextWindow, PictureWindow, &MainWindow),
      Tray(program, Figures, Words, folders),
      HangUpWindow(program, Words, &MainWindow) {
    MainWindow.SetTexts(Words);
    LanguageTables.SetFields([this] {
        return MessageFields{FtpWindow.OfflinePath(), CameraWindow.PathText()};
    });
    ConnectMenu();
    ConnectWindows();
}

Shell::~Shell() {
    // The mouse leaves the buttons when their window goes, after the status window.
    for (PictureButton* button : MainWindow.findChildren<PictureButton*>())
        button->removeEventFilter(this);
}

void Shell::ConnectMenu() {
    MenuPanel::Dress(Chooser);
    Menu.AddFlyOut(frmMenue::Language, LanguageWindow);
    Menu.AddFlyOut(frmMenue::Skins, {&Chooser, [this](const QPoint& at) { Chooser.Show(at); },
                                     [this] { Chooser.FocusRow(); }});
    Menu.AddFlyOut(frmMenue::Web, WebWindow);
    connect(&MainWindow, &frmSkin::OptionsWanted, &Menu, &frmMenue::OpenBeside);
    connect(&Menu, &frmMenue::Chosen, this, &Shell::Act);
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
    connect(&StatusWindow, &frmStatus::Closed, this, [this] { RememberStatusWindow(false); });
    connect(&Tray, &Tray1::RestoreWanted, this, &Shell::Restore);
    connect(&Tray, &Tray1::StatusWanted, this, &Shell::ShowStatusWindow);
    for (PictureButton* button : MainWindow.findChildren<PictureButton*>())
        button->installEventFilter(this);
}

void Shell::Show() {
    QApplication::setWindowIcon(ProgramIcon(folders, "stillpost"));
    MainWindow.ShowSkinned();
    StartPicture.Finish();
    Tray.Show();
    if (ReadSetting(program.SettingsFile(), windowSection, statusWindowKey) != "1") return;
    StatusWindow.Show(&MainWindow);
    Tray.SetStatusShown(true);
}

void Shell::Restore() {
    MainWindow.showNormal();
    MainWindow.raise();
    MainWindow.activateWindow();
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
    WriteSetting(program.SettingsFile(), windowSection, statusWindowKey,
                 shown ? QString("1") : QString("0"));
}

void Shell::Act(frmMenue::Entry entry) {
    switch (entry) {
        case frmMenue::Status:
            ShowStatusWindow(true);
            break;
        case frmMenue::Ftp:
            FtpWindow.Open();
            break;
        case frmMenue::Camera:
            CameraWindow.Open();
            break;
        case frmMenue::Overlay:
            OverlayWindow.Open();
            break;
        case frmMenue::Help:
            OpenHelp();
            break;
        case frmMenue::Info:
            AboutBox.Show();
            break;
        default:
            break;  // fly-outs
    }
}

void Shell::OpenHelp() {
    const QString page = HelpPage(program.State.LangGerman, folders);
    if (page.isEmpty())
        HelpPrompt.Show();
    else
        Open(QUrl::fromLocalFile(page));
}

void Shell::Open(const QUrl& address) {
    if (!opener.Open(address))
        boxes.Show("Stillpost", Words.Get("Messages", "CannotOpen").arg(address.toLocalFile()));
}

// The status window tells what the button under the mouse does.
bool Shell::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Enter)
        StatusWindow.ShowHelp(qobject_cast<QWidget*>(object)->toolTip());
    else if (event->type() == QEvent::Leave)
        StatusWindow.ShowHelp({});
    return QObject::eventFilter(object, event);
}
