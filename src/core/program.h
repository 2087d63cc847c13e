#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class Clock;
class Connectivity;
class ezVidCap;
class FTP;
class HangUpQuestion;
class MessageBoxes;
class OfflinePicture;
class PageControl;
class PicturePipeline;
class RunRecord;
class RunStatus;
class StatusHub;
class Texts;
class UploadCycle;
class UploadTransaction;
class Waiting;
struct MainState;
struct PictureState;
struct Platform;
struct ProfileEntry;
struct Settings;

// The whole program without its windows: the controls and timers that the main window holds, the
// order of start-up, the way out.
class Program : public QObject {
    Q_OBJECT

  public:
    struct Surroundings {
        Clock& Time;
        const Platform& System;
        MessageBoxes& Boxes;
        PageControl& Page;
        QString Folder;                     // the program folder
        QString ClickSound;                 // path of "Click.wav"; empty when there is none
        QStringList InstalledFolders = {};  // copies of what the program folder does not have
        QString Name = {};                  // of one among several; the setting goes first
    };
    explicit Program(const Surroundings& surroundings);
    ~Program() override;

  private:
    struct Controls;
    Surroundings surroundings;
    std::unique_ptr<Controls> controls;  // what follows, in the order of their needs

  public:
    Waiting& Wait;
    Texts& Words;  // in the language of the settings
    StatusHub& Display;
    MainState& State;
    Connectivity& Net;
    FTP& FTP1;
    ezVidCap& ezVidCap1;
    PictureState& PictureValues;
    PicturePipeline& Pictures;
    RunStatus& Run;
    UploadTransaction& Transaction;
    OfflinePicture& Offline;
    UploadCycle& Cycle;
    RunRecord& Record;

    // Start-up in its order: capture devices, settings, old working files removed, capture switched
    // on; with `autostarter` and Autostart "1" the cycle starts at once.
    void Load(bool autostarter);

    // The click of btnStart: what the operator has changed in the settings file or plugged in since
    // the last run counts from here on. Without a place for the pictures nothing is started.
    void Start();

    // Reads all settings again and hands them to everybody concerned.
    void LoadSettings();

    // Writes settings, all of them or none, and loads them. Returns false when the file cannot be
    // written; nothing has changed then.
    [[nodiscard]] bool ChangeSettings(const QList<ProfileEntry>& entries);
    // Writes what only the next start asks for. Whether it can be written makes no difference now.
    void Remember(const QList<ProfileEntry>& entries) const;

    // Looks for capture devices again: one that was plugged in meanwhile can be used. On Linux
    // that makes no sound.
    void RefreshDrivers();
    // Lists a camera (NAME|ADDRESS) that is not written down behind the others and selects it; the
    // one of the call before is forgotten. Empty: only that.
    void TryCamera(const QString& line);
    // The live preview for now; the next LoadSettings goes back to the settings.
    void ShowPreview(bool on, bool stretched, bool centred);

    // Capture devices as the driver list shows them; the message that there is none otherwise.
    [[nodiscard]] QStringList DriverList() const { return drivers; }
    [[nodiscard]] int DriverIndex() const;
    // Another device was chosen in the list.
    void SelectDriver(int index);
    // The selected device, or that there is none, in the user's language.
    [[nodiscard]] QString DriverText() const;

    // The operator ends the program. When a connection that it dialled stands, and the settings do
    // not say that it is always hung up (Abwahl), the question is shown instead; its answer ends
    // the program.
    void Leave();
    // Who asks; without one, and by everybody but the operator, nobody is asked.
    void SetHangUpQuestion(HangUpQuestion* asker) { question = asker; }
    // Ends the program but leaves the line open.
    void ExitKeepingLine();

    // Ends the program: hangs up what it dialled, ends every wait, then Ended() once the event
    // handlers have returned.
    void Exit();

    // Removes the working files; the last thing done.
    void CleanUp();

    [[nodiscard]] QString SettingsFile() const;
    // What is wrong with it, in a line for a log; empty: nothing.
    [[nodiscard]] QString SettingsRemark() const;
    // Of one among several, else empty.
    [[nodiscard]] QString Name() const;
    // "Garden - Stillpost", or "Stillpost" alone.
    [[nodiscard]] QString Title() const;
    [[nodiscard]] QString ProgramFolder() const { return surroundings.Folder; }
    // The services of the system.
    [[nodiscard]] const Platform& System() const { return surroundings.System; }

  signals:
    void Loaded();
    void SettingsLoaded();
    void DriversChanged();
    void PreviewChanged();
    // The operator wants to start, and the settings do not say where to.
    void SetUpWanted();
    void Ended();

  private:
    void ListDrivers();
    void LookForCamera();
    void FollowHours();
    void ApplyLanguage();
    [[nodiscard]] int WantedDriver() const;
    void ApplyAccess(const Settings& before);
    void DeleteOldFiles();
    [[nodiscard]] bool WorksInMemory() const;
    [[nodiscard]] QString NoDriverText() const;
    [[nodiscard]] QString NotSetUpText() const;

    QStringList drivers;
    QString tried;  // a camera that is not written down; empty: none
    HangUpQuestion* question = nullptr;
    bool closed = false;  // it is outside the hours
    bool exiting = false;
};
