#include "core/program.h"

#include "base/clock.h"
#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "camera/ezvidcap.h"
#include "core/access_of.h"
#include "core/day_film.h"
#include "core/hang_up_question.h"
#include "core/main_state.h"
#include "core/offline_picture.h"
#include "core/public_names.h"
#include "core/run_record.h"
#include "core/run_state.h"
#include "core/settings/load_settings.h"
#include "core/settings/settings_check.h"
#include "core/settings/work_folder.h"
#include "core/upload_cycle.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "net/ftp/ftp.h"
#include "net/page_control.h"
#include "net/publishing/make_server.h"
#include "picture/picture_pipeline.h"
#include "platform/platform.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace {

// Both channels at 0x7C7C: what the wave-out mixer gets back after the enumeration.
constexpr quint32 usualVolume = 0x7C7C7C7C;
constexpr quint32 muted = 0;

constexpr int cameraWatchMilliseconds = 10'000;

}  // namespace

struct Program::Controls {
    explicit Controls(const Surroundings& around)
        : Wait(around.Time),
          Net(Wait, *around.System.Online, *around.System.Dial, Display, around.Page),
          FTP1(Wait, Display),
          ezVidCap1(Wait, *around.System.Cameras),
          PictureValues{around.Folder, around.InstalledFolders},
          Pictures(PictureValues, ezVidCap1, Wait, around.Boxes, Display),
          Run(around.Time, Display),
          Servers({Wait, Display, [this] { return Net.Online(); }}, FTP1),
          Transaction({Wait, Net, Display, around.Boxes, State, Words, Run},
                      Servers.Of(Protocol::Ftp)),
          Offline({Wait, Net, Transaction, Pictures, PictureValues, Display, State}),
          Cycle({Wait, Net, Transaction, Pictures, Display, *around.System.Sounds, State, Run,
                 Words, around.ClickSound}),
          Record(around.Time, Run, Cycle, QDir(around.Folder).filePath("last24hours.bin")),
          FilmOfDay({Wait, Net, Transaction, Display, State, Words, Run, PictureValues.Locale},
                    QDir(around.Folder).filePath("dayfilm")),
          CameraWatch(around.Time, cameraWatchMilliseconds) {}

    Waiting Wait;
    Texts Words{Texts::Language::English};
    StatusHub Display;
    MainState State;
    Connectivity Net;
    FTP FTP1;
    ezVidCap ezVidCap1;
    PictureState PictureValues;
    PicturePipeline Pictures;
    RunStatus Run;
    PictureServers Servers;
    UploadTransaction Transaction;
    OfflinePicture Offline;
    UploadCycle Cycle;
    RunRecord Record;
    DayFilm FilmOfDay;
    Timer CameraWatch;  // for the camera of a run that is not there
};

Program::Program(const Surroundings& ownSurroundings)
    : surroundings(ownSurroundings),
      controls(std::make_unique<Controls>(surroundings)),
      Wait(controls->Wait),
      Words(controls->Words),
      Display(controls->Display),
      State(controls->State),
      Net(controls->Net),
      FTP1(controls->FTP1),
      ezVidCap1(controls->ezVidCap1),
      PictureValues(controls->PictureValues),
      Pictures(controls->Pictures),
      Run(controls->Run),
      Transaction(controls->Transaction),
      Offline(controls->Offline),
      Cycle(controls->Cycle),
      Record(controls->Record) {
    FTP1.SetProgramFolder(surroundings.Folder);
    State.SettingsFile = SettingsFile();
    Cycle.SetOfflinePicture(&Offline);
    Cycle.SetBetween([this] { controls->FilmOfDay.SendWhenDue(); });
    connect(&ezVidCap1, &ezVidCap::FaultChanged, this, [this](const QString& fault) {
        // Who tries a camera sees it there.
        if (!fault.isEmpty() && tried.isEmpty()) Display.ShowStatus(fault);
    });
    connect(&Run, &RunStatus::Changed, this, &Program::FollowHours);
    connect(&controls->CameraWatch, &Timer::Tick, this, &Program::LookForCamera);
    controls->CameraWatch.SetEnabled(true);
    connect(&Wait, &Waiting::Idle, this, [this] {
        if (exiting) emit Ended();
    });
}

Program::~Program() = default;

QString Program::SettingsFile() const {
    return SettingsFileIn(surroundings.Folder);
}

QString Program::Name() const {
    return State.Values.Name.isEmpty() ? surroundings.Name : State.Values.Name;
}

QString Program::Title() const {
    const QString name = Name();
    return name.isEmpty() ? QString("Stillpost") : name + " - Stillpost";
}

void Program::Load(bool autostarter) {
    if (exiting) return;
    KeepToOwner(SettingsFile());
    ApplyLanguage();
    // Enumerating capture devices can make sound on some systems.
    surroundings.System.Sounds->SetVolume(muted);
    if (!Wait.Closing()) ListDrivers();
    LoadSettings();
    surroundings.System.Sounds->SetVolume(usualVolume);
    DeleteOldFiles();
    ezVidCap1.SetEnabled(State.DriverPresent);
    PictureValues.CameraRunning = State.DriverPresent;
    const QString remark = SettingsRemark();
    if (!remark.isEmpty()) Display.ShowStatus(remark);
    emit Loaded();
    if (exiting || !State.Values.Autostart || !autostarter) return;
    if (State.Values.Server.isEmpty())
        surroundings.Boxes.Show("Stillpost", (NotSetUpText() + u' ' + remark).trimmed());
    else
        Cycle.Start(UploadCycle::Starter::System);
}

void Program::Start() {
    if (!Run.Running() && !Run.Busy()) {
        ListDrivers();
        LoadSettings();
        ezVidCap1.SetEnabled(State.DriverPresent);
        PictureValues.CameraRunning = State.DriverPresent;
        if (State.Values.Server.isEmpty()) {
            Display.ShowStatus(NotSetUpText());
            emit SetUpWanted();
            return;
        }
    }
    Cycle.Start();
}

void Program::ListDrivers() {
    // The written-down cameras belong to the list, so they are read before the other settings.
    QStringList cameras = ::LoadSettings(SettingsFile()).Cameras;
    if (!tried.isEmpty()) cameras << tried;
    ezVidCap1.SetCameras(cameras);
    drivers = ezVidCap1.DriverNames();
    State.DriverPresent = !drivers.isEmpty();
    if (!State.DriverPresent) drivers << NoDriverText();
    emit DriversChanged();
}

// A machine that starts by itself may find its camera a little later than the program does, and
// nobody is there to press Start again.
void Program::LookForCamera() {
    if (!Run.Running() || DriverIndex() >= 0) return;
    const QStringList now = ezVidCap1.DriverNames();
    const QStringList before = State.DriverPresent ? drivers : QStringList();
    if (now != before) RefreshDrivers();
}

// Outside the hours the camera is let go, whatever else wants to show it; windows that are opened
// to set it may take it again.
void Program::FollowHours() {
    if (std::exchange(closed, Run.Closed()) == Run.Closed()) return;
    ezVidCap1.SetPreview(State.Values.Preview && !closed);
    if (closed) ezVidCap1.Release();
}

void Program::RefreshDrivers() {
    ListDrivers();
    if (State.DriverPresent) {
        ezVidCap1.SetEnabled(true);
        PictureValues.CameraRunning = true;
    }
    if (DriverIndex() >= 0) return;
    // One that is unplugged stays selected, so that it works again once it is back; one that was
    // taken out of the settings does not.
    const int wanted = State.DriverPresent ? WantedDriver() : -1;
    if (wanted < 0 && ezVidCap1.InstalledSelected()) return;
    ezVidCap1.SetDriverIndex(wanted);
    emit DriversChanged();
}

void Program::TryCamera(const QString& line) {
    tried = line;
    RefreshDrivers();
    if (!line.isEmpty()) SelectDriver(static_cast<int>(drivers.size()) - 1);
}

void Program::ShowPreview(bool on, bool stretched, bool centred) {
    State.Values.Preview = on;
    State.Values.StretchPreview = stretched;
    State.Values.CenterVideo = centred;
    ezVidCap1.SetPreview(on);
    emit PreviewChanged();
}

void Program::ApplyLanguage() {
    const auto named = LanguageIn(SettingsFile());
    // Any other word leaves the language as it is.
    if (!named) return;
    State.LangEnglish = named == Texts::Language::English;
    State.LangGerman = named == Texts::Language::German;
    State.LangFrench = named == Texts::Language::French;
    Words.SetLanguage(*named);
}

QString Program::NoDriverText() const {
    if (State.LangGerman) return "Kein Video-Treiber verfügbar!";
    if (State.LangFrench) return "Pas de conducteur vidéo disponible!";
    return "No Video Capture Device!";
}

QString Program::NotSetUpText() const {
    if (State.LangGerman) return "Nichts ist eingerichtet: wohin sollen die Bilder?";
    if (State.LangFrench) return "Rien n'est réglé : où envoyer les images ?";
    return "Nothing is set up: where are the pictures to go?";
}

QString Program::SettingsRemark() const {
    return ::SettingsRemark(SettingsFile(), Words);
}

QString Program::DriverText() const {
    if (!State.DriverPresent) return NoDriverText();
    return drivers.value(DriverIndex());
}

int Program::DriverIndex() const {
    return ezVidCap1.DriverIndex();
}

void Program::SelectDriver(int index) {
    if (!State.DriverPresent || index < 0 || index >= drivers.size()) return;
    ezVidCap1.SetDriverIndex(index);
    emit DriversChanged();
}

void Program::LoadSettings() {
    const Settings before = std::exchange(State.Values, ::LoadSettings(SettingsFile()));
    const Settings& values = State.Values;
    ApplyAccess(before);
    Net.SetDialling(values.Anwahl, values.AWName);
    ezVidCap1.SetAdjustments(values.CameraControls);
    ezVidCap1.SetCaptureFormat(values.CaptureFormat);
    ezVidCap1.SetPatience(values.CameraPatience);
    SelectDriver(WantedDriver());
    ezVidCap1.SetPreview(values.Preview && !Run.Closed());
    // The time to the next picture goes on running when something else has changed.
    const bool sameBeat = before.OnTheMinute == values.OnTheMinute;
    if (!sameBeat || before.TotalInterval() != values.TotalInterval()) Cycle.ApplyInterval();
    ApplyLanguage();
    Cycle.ApplyHours();
    emit SettingsLoaded();
}

bool Program::ChangeSettings(const QList<ProfileEntry>& entries) {
    if (WriteSettings(SettingsFile(), entries) == 0) return false;
    LoadSettings();
    return true;
}

void Program::Remember(const QList<ProfileEntry>& entries) const {
    (void)WriteSettings(SettingsFile(), entries);
}

void Program::ApplyAccess(const Settings& before) {
    const Settings& values = State.Values;
    const ServerAccess access = AccessOf(values, ProgramFolder());
    PictureServer& server = controls->Servers.Of(access.Way);
    server.SetAccess(access);
    Transaction.Use(server);
    Net.SetServer(values.Server);
    // The next picture logs in where the settings now say; a kept connection would hold on to the
    // old server for hours.
    ServerAccess former = AccessOf(before, ProgramFolder());
    former.DeleteFirst = values.Delete;  // has nothing to do with the way to the server
    if (former == access) return;
    Cycle.TryAgainAtOnce();
    if (Transaction.IsConnected()) server.Close();
}

// The camera of the settings. Who has named none gets the first one; another one never takes the
// place of the one named, which may only be unplugged.
int Program::WantedDriver() const {
    const QString& named = State.Values.Treiber;
    if (named.isEmpty() && DriverIndex() < 0) return 0;
    return static_cast<int>(drivers.indexOf(named));
}

void Program::DeleteOldFiles() {
    for (const char* name : {"1pw.jpg", "pw.jpg", "0pw.jpg", "1pw.bmp", "1pw.bmp.part", "pw.bmp"})
        QFile::remove(State.WorkFile(QString::fromLatin1(name)));
    // What lies there from a run without a place in memory, a crashed one perhaps.
    if (WorksInMemory()) WorkFolder::Remove(WorkFolder::OnDisk(surroundings.Folder));
}

void Program::Leave() {
    const bool always = ::LoadSettings(SettingsFile()).Abwahl;
    if (question && !exiting && !always && Net.DialConnection() != 0)
        question->Ask(Net.DialledEntry());
    else
        Exit();
}

void Program::ExitKeepingLine() {
    Net.KeepConnection();
    Exit();
}

void Program::Exit() {
    if (exiting) return;
    exiting = true;
    Net.HangUp();
    Cycle.Unload();
    Record.Save();
    const bool idle = Wait.Depth() == 0;
    Wait.Close();
    if (idle) emit Ended();
}

void Program::CleanUp() {
    QFile::remove(State.WorkFile(PublicNames::Bitmap));
    WholeFile::Forget(State.WorkFile(PublicNames::Bitmap));
    for (const QString& name : {PublicNames::Sending, PublicNames::Sent})
        QFile::remove(State.WorkFile(name));
    // Made whether it was used to the end or not.
    const QString memory = WorkFolder::InMemory(surroundings.Folder);
    if (!memory.isEmpty()) WorkFolder::Remove(memory);
}

bool Program::WorksInMemory() const {
    return State.Values.WorkPath == WorkFolder::InMemory(surroundings.Folder);
}
