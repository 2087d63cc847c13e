#include "core/upload_cycle.h"

#include "base/status_display.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "core/offline_picture.h"
#include "core/public_names.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "net/ftp.h"
#include "picture/picture_pipeline.h"
#include "platform/sound.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

constexpr int minute = 60'000;
constexpr int watchdogTicks = 61;
constexpr int countWraps = 65'000;

}  // namespace

UploadCycle::UploadCycle(const Parts& ownParts)
    : parts(ownParts),
      run(parts.Run),
      Timer1(parts.Wait.OwnClock(), 1000),
      Timer2(parts.Wait.OwnClock(), 1000),
      Timer4(parts.Wait.OwnClock(), 500) {
    connect(&Timer1, &Timer::Tick, this, &UploadCycle::OnTimer1);
    connect(&Timer2, &Timer::Tick, this, &UploadCycle::OnTimer2);
    connect(&Timer4, &Timer::Tick, this, &UploadCycle::OnTimer4);
    connect(&parts.Transaction, &UploadTransaction::Failed, this, &UploadCycle::EndOfRun);
    Timer1.SetEnabled(true);
}

void UploadCycle::ApplyInterval() {
    Timer4.SetInterval(parts.State.Values.Framerate);
    qint16& left = run.ThisRun.MinutesLeft;
    left = std::min<qint16>(left, static_cast<qint16>(parts.State.Values.Uptime));
}

void UploadCycle::Start() {
    if (run.Running() || parts.Wait.Closing()) return;
    if (run.Busy()) {
        afterwards = Afterwards::Start;
        return;
    }
    run.ThisRun = {};
    TransactionFlags& flags = parts.Transaction.Flags;
    flags.QuietErrors = false;
    parts.Display.ResetRunningTime();
    if (!parts.ClickSound.isEmpty()) parts.Sounds.Play(parts.ClickSound);
    flags.ConnectionDown = false;
    parts.Net.SetStopped(false);
    if (parts.State.Values.LocalMode()) {
        parts.Display.ShowStatus("Save Picture Local");
        run.Enter(RunState::Waiting);
    } else {
        parts.Transaction.ConnectFtp();
    }
    Timer4.SetInterval(parts.State.Values.Framerate);
    GoOn();
}

// After a connect: the ticks follow, or what the operator asked for meanwhile.
void UploadCycle::GoOn() {
    EndOfWork();
    const bool ticks = run.Running() && !parts.Transaction.Flags.ConnectionDown;
    if (ticks) Timer4.SetEnabled(run.Is() != RunState::Paused);
}

void UploadCycle::Pause() {
    if (!run.Running()) return;
    const bool pause = run.Is() != RunState::Paused;
    pause ? run.Enter(RunState::Paused) : run.Resume();
    Timer2.SetEnabled(pause);
    Timer4.SetEnabled(!pause);
    parts.Display.ShowStatus(pause ? QString("Pause") : QString());
}

void UploadCycle::Stop() {
    const bool due = run.Running() || afterwards != Afterwards::Nothing;
    afterwards = Afterwards::Nothing;
    // Pressed again while the offline picture is on its way: that goes on.
    if (run.Is() == RunState::PublishingOffline) return;
    if (due) afterwards = Afterwards::OfflinePicture;
    EndOfRun();
    if (parts.State.Values.LocalMode()) parts.Transaction.Flags.ConnectionDown = true;
    parts.Display.ShowStatus("stopped");
    EndOfWork();
}

// What was put off while a picture was on its way.
void UploadCycle::EndOfWork() {
    if (run.Busy()) return;
    if (run.Is() == RunState::Stopping) run.Enter(RunState::Stopped);
    if (afterwards == Afterwards::OfflinePicture) {
        afterwards = Afterwards::Nothing;
        PublishOffline();
    }
    if (std::exchange(afterwards, Afterwards::Nothing) == Afterwards::Start) Start();
}

void UploadCycle::PublishOffline() {
    if (!offline || parts.Wait.Closing() || !offline->Wanted()) return;
    run.Enter(RunState::PublishingOffline);
    parts.Net.SetStopped(false);
    const bool done = offline->SendOfflinePicture();
    parts.Net.SetStopped(true);
    run.Enter(RunState::Offline);
    if (parts.Wait.Closing()) return;
    parts.Display.ShowUpload(0);
    if (done) parts.Display.ShowStatus("Offline");
}

void UploadCycle::EndOfRun() {
    if (run.Running()) run.Enter(run.Busy() ? RunState::Stopping : RunState::Stopped);
    Timer2.SetEnabled(false);
    Timer4.SetEnabled(false);
    parts.Display.ShowRecording({});  // nobody renews it until the next start
    parts.Net.SetStopped(true);
}

void UploadCycle::Unload() {
    afterwards = Afterwards::Nothing;
    EndOfRun();
    parts.Transaction.Flags.ConnectionDown = true;
}

void UploadCycle::OnTimer2() {
    const bool shown = run.Since().secsTo(parts.Wait.OwnClock().Now()) % 2 == 0;
    parts.Display.ShowStatus(shown ? QString("Pause") : QString());
}

void UploadCycle::OnTimer1() {
    if (!run.Running() || parts.Wait.Closing()) return;
    Watchdog();
    const bool online = parts.Net.Online();
    parts.Display.ShowOnline(online);
    const bool connecting = parts.Transaction.ConnectInProgress();
    parts.Display.ShowRecording(connecting ? QString("Rec.") : online ? QString() : "offline");
    const bool down = parts.Transaction.Flags.ConnectionDown;
    if (!parts.State.Values.LocalMode() && down && !run.Busy()) ConnectAgain();
}

void UploadCycle::Watchdog() {
    std::optional<int>& ticks = run.ThisRun.SendStarted;
    if (!ticks) return;
    ticks = *ticks >= countWraps ? 0 : *ticks + 1;
    TransactionFlags& flags = parts.Transaction.Flags;
    const bool watched = !parts.State.Values.LocalMode() && !flags.ConnectionDown;
    if (!watched || ticks != watchdogTicks) return;
    parts.Display.ShowStatus("reconnecting ftp");
    flags.FtpError = true;
    ticks.reset();
}

void UploadCycle::ConnectAgain() {
    parts.Transaction.Flags.ConnectionDown = false;
    parts.Transaction.ConnectFtp();
    GoOn();
}

void UploadCycle::OnTimer4() {
    if (run.Busy() || !run.Running()) return;
    if (TickMakesPicture()) {
        const QString trouble = parts.State.Values.LocalMode() ? LocalTick() : FtpTick();
        const bool ended = !run.Running();
        if (run.Is() != RunState::Stopped)
            run.Enter(trouble.isEmpty() ? RunState::Waiting : RunState::WaitingToRetry, trouble);
        if (ended && !parts.Wait.Closing()) parts.Display.ShowStatus("stopped");
    }
    EndOfWork();
}

bool UploadCycle::TickMakesPicture() {
    qint16& left = run.ThisRun.MinutesLeft;
    if (left > 0) {
        Timer4.SetInterval(minute);
        --left;
        parts.Display.ShowStatus("Wait...");
        return false;
    }
    Timer4.SetInterval(parts.State.Values.Framerate);
    return run.Is() != RunState::Paused && !parts.Transaction.Flags.ConnectionDown;
}

void UploadCycle::CountPicture(const QString& file) {
    ++pictureCount;
    parts.Display.ShowPictureCount("Pic: " + QString::number(pictureCount));
    megabytes.Add(QFileInfo(file).size());
    parts.Display.ShowMegabytes("MB: " + megabytes.Text());
}

bool UploadCycle::Online() {
    if (!parts.Net.Online()) run.Enter(RunState::GoingOnline);
    return parts.Net.IstNetzVerbindung();
}

bool UploadCycle::MakePicture() {
    run.Enter(RunState::TakingPicture);
    const qint64 start = parts.Wait.OwnClock().Milliseconds();
    const bool made = parts.Pictures.MakePicture(parts.State.ForPicture());
    if (made) madeAt = start;
    if (!made && !parts.Pictures.Unwritten().isEmpty()) parts.Display.ShowStatus(NoPicture());
    return made;
}

QString UploadCycle::NoPicture() const {
    const QString& unwritten = parts.Pictures.Unwritten();
    return unwritten.isEmpty() ? QString("No picture from the camera")
                               : "Cannot write " + unwritten;
}

QString UploadCycle::LocalTick() {
    parts.Transaction.Flags.ConnectionDown = false;
    const QString target = parts.State.Values.Verzeichnis + PublicNames::Picture;
    QString trouble;
    if (parts.State.Values.Verzeichnis.isEmpty()) {
        // Without a folder the picture would land wherever the program was started.
        trouble = "No folder for the pictures: Verzeichnis is empty";
        parts.Display.ShowStatus(trouble);
    } else if (!MakePicture()) {
        trouble = NoPicture();
    } else if (!WholeFile::Copy(parts.State.WorkFile(PublicNames::Sending), target)) {
        trouble = "Cannot write " + target;
        parts.Display.ShowStatus(trouble);
    } else {
        CountPicture(target);
        emit PicturePublished(++publishedCount);
    }
    FinishTick(true);
    return trouble;
}

bool UploadCycle::PrepareSending() {
    const QString file = parts.State.WorkFile(PublicNames::Sending);
    // A picture that could not be sent is sent by the next tick. After a long loss of the line,
    // though, it is no longer what the camera sees.
    const qint64 age = parts.Wait.OwnClock().Milliseconds() - madeAt;
    if (madeAt >= 0 && age > 2 * parts.State.Values.TotalInterval() + minute) QFile::remove(file);
    if (!QFile::exists(file)) MakePicture();
    if (!QFile::exists(file)) return false;
    CountPicture(file);
    return true;
}

QString UploadCycle::FtpTick() {
    bool& published = run.ThisRun.Published;
    if (!published && parts.Transaction.Flags.ConnectionDown) {
        parts.Transaction.CloseConnection();
        parts.Display.ShowOnline(false);
        return "Close Connection";
    }
    if (!Online()) {
        parts.Display.ShowStatus("reconnecting");
        return "No Connection to Internet";
    }
    const bool lost = !parts.Ftp.IsConnected();
    const bool connected = !lost || parts.Transaction.ConnectOnceMore(RunState::TakingPicture);
    if (!run.Running() || parts.Wait.Closing()) return {};
    published = false;
    const QString trouble = Publish(connected);
    FinishTick(lost && !connected);
    return trouble;
}

QString UploadCycle::Publish(bool connected) {
    const QString file = parts.State.WorkFile(PublicNames::Sending);
    if (!PrepareSending()) return NoPicture();
    if (!connected) return parts.Transaction.Failure();
    if (!parts.Transaction.Publish(file)) return "FTP: " + parts.Ftp.GetLastErrorString();
    QFile::remove(file);
    run.ThisRun.Published = true;
    parts.Display.ShowUpload(0);
    parts.Display.ShowStatus("wait...");
    emit PicturePublished(++publishedCount);
    return {};
}

void UploadCycle::FinishTick(bool connectTried) {
    const TransactionFlags& flags = parts.Transaction.Flags;
    const bool local = parts.State.Values.LocalMode();
    if (!local && run.Running() && flags.FtpError && Online()) {
        if (!connectTried) parts.Transaction.ConnectFtp(RunState::TakingPicture);
        if (run.Running() && !parts.Wait.Closing()) MakePicture();
    }
    OneRun& once = run.ThisRun;
    once.SendStarted.reset();
    const int uptime = parts.State.Values.Uptime;
    if (uptime > 0 && once.MinutesLeft == 0) once.MinutesLeft = static_cast<qint16>(uptime);
    const bool ticks = run.Running() && run.Is() != RunState::Paused;
    if (ticks && !parts.Wait.Closing() && !flags.ConnectionDown) Timer4.SetEnabled(true);
}
