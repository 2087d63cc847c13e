#include "core/commands/check.h"

#include "base/status_display.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/access_of.h"
#include "core/fault_advice.h"
#include "core/settings/load_settings.h"
#include "core/settings/settings_check.h"
#include "net/publishing/answer_texts.h"
#include "net/publishing/trial_texts.h"
#include "platform/platform.h"

#include <QMetaEnum>

namespace {

constexpr int cameraTries = 6;  // of some seconds each: a stream may begin slowly

class Checking {
  public:
    Checking(const CommandSurroundings& ownAround, bool isRunning)
        : around(ownAround), running(isRunning), wait(around.Wait) {}

    CommandStatus Run() {
        if (!CheckFile()) return status;
        settings = LoadSettings(file);
        CheckCamera();
        CheckServer();
        Say(status == CommandStatus::Fine       ? QString("Fine")
            : status == CommandStatus::Warnings ? QString("Warnings")
                                                : QString("Failed"));
        return status;
    }

  private:
    void Say(const QString& key, const QStringList& values = {}) const {
        around.Print(Filled(words.Get("Check", key), values));
    }

    void Worsen(CommandStatus to) { status = std::max(status, to); }

    bool CheckFile() {
        QString fault;
        const auto bytes = ReadSettingsFile(file, fault);
        if (!bytes) {
            Say(fault, {file});
            Worsen(CommandStatus::Failed);
            return false;
        }
        for (const SettingFinding& each : CheckSettings(*bytes)) {
            Tell(each);
            Worsen(CommandStatus::Warnings);
        }
        if (status == CommandStatus::Fine) Say("FileFine", {file});
        return true;
    }

    void Tell(const SettingFinding& found) const {
        const QString what = QString::fromLatin1(
            QMetaEnum::fromType<SettingFinding::What>().valueToKey(static_cast<int>(found.Is)));
        QString text = Filled(words.Get("Check", what), {found.Section, found.Key, found.Written});
        if (!found.Range.isEmpty())
            text += ' ' + Filled(words.Get("Check", "Range"), {found.Range});
        if (!found.Counts.isEmpty())
            text += ' ' + Filled(words.Get("Check", "Counts"), {found.Counts});
        Say("Line", {"ftpOptions.ini", QString::number(found.Line), text});
    }

    void CheckCamera() {
        ezVidCap capture(wait, *around.System.Cameras);
        capture.SetCameras(settings.Cameras);
        const QStringList names = capture.DriverNames();
        const QString wanted = settings.Treiber.isEmpty() ? names.value(0) : settings.Treiber;
        const auto index = static_cast<int>(names.indexOf(wanted));
        if (wanted.isEmpty() || index < 0) {
            Say(wanted.isEmpty() ? QString("NoCamera") : "CameraGone", {wanted});
            Worsen(CommandStatus::Failed);
            return;
        }
        capture.SetAdjustments(settings.CameraControls);
        capture.SetCaptureFormat(settings.CaptureFormat);
        capture.SetPatience(settings.CameraPatience);
        capture.SetDriverIndex(index);
        if (running && capture.InstalledSelected()) {
            Say("CameraInUse", {wanted});
            return;
        }
        bool taken = false;
        for (int i = 0; i < cameraTries && !taken && !wait.Closing(); ++i)
            taken = capture.GrabFrame() || !Slow(capture.FaultCause());
        if (capture.Running() && capture.Width() > 0) {
            Say("Camera",
                {wanted, QString::number(capture.Width()), QString::number(capture.Height())});
            return;
        }
        Say("CameraFault", {wanted, FaultAdvice(capture.FaultCause(), words)});
        Worsen(CommandStatus::Failed);
    }

    // Whether a picture may still come.
    static bool Slow(CaptureFault fault) {
        return fault == CaptureFault::NoWholePicture || fault == CaptureFault::Silent;
    }

    void CheckServer() {
        if (settings.Server.isEmpty()) {
            Say("NoServer");
            Worsen(CommandStatus::Failed);
            return;
        }
        const ServerAccess access = AccessOf(settings, around.Folder);
        StatusDisplay nobody;
        ConnectionTrial trial(wait, nobody);
        const TrialOutcome outcome = trial.Run(access);
        Say("Server", {TrialText(words, access, outcome)});
        if (!outcome.Answer.Fine()) Worsen(CommandStatus::Failed);
        if (!outcome.LeftBehind.isEmpty()) Worsen(CommandStatus::Warnings);
    }

    const CommandSurroundings& around;
    bool running;
    Waiting& wait;
    QString file = SettingsFileIn(around.Folder);
    Texts words{LanguageIn(file).value_or(Texts::Language::English)};
    Settings settings;
    CommandStatus status = CommandStatus::Fine;
};

}  // namespace

CommandStatus Check(const CommandSurroundings& around, bool running) {
    return Checking(around, running).Run();
}
