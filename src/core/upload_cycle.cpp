#include "core/upload_cycle.h"

#include "base/open_files.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "core/offline_picture.h"
#include "core/public_names.h"
#include "core/schedule/schedule_texts.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "picture/picture_pipeline.h"
#include "platform/sound.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

constexpr int minute = 60'000;
constexpr int watchdogTicks = 61;
constexpr int countWraps = 65'000;
// What was made ahead is no longer what the camera sees.
constexpr qint64 stale = 30'000;
// A clock is looked at so often, and a timer that comes so late is still on the minute.
constexpr qint64 longestLook = 1'000;
constexpr qint64 tooLate = 2'000;

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

qint64 UploadCycle::Now() const {
    return parts.Wait.OwnClock().Milliseconds();
}

void UploadCycle::ApplyInterval() {
    qint64& due = run.ThisRun.Due;
    const Settings& values = parts.State.Values;
    Timer4.SetInterval(FirstLook());
    due = std::min(due, Now() + values.TotalInterval());
}

int UploadCycle::FirstLook() const {
    return parts.State.Values.OnTheMinute ? 1 : parts.State.Values.Framerate;
}

void UploadCycle::ApplyHours() {
    const Settings& values = parts.State.Values;
    const QString before = FaultText(parts.Words, hours);
    hours = Schedule(values.Hours, values.Place);
    const QString fault = FaultText(parts.Words, hours);
    if (!fault.isEmpty() && fault != before) parts.Display.ShowStatus(fault);
}

bool UploadCycle::Open() const {
    return hours.Open(parts.Wait.OwnClock().Now());
}

// The tick goes back to the interval of the settings.
void UploadCycle::MakeDue() {
    if (!Timer4.Enabled()) return;
    run.ThisRun.MinutesLeft = 0;
    run.ThisRun.AtOnce = true;
    Timer4.SetInterval(1);
}

void UploadCycle::Start(Starter who) {
    if (run.Running() || parts.Wait.Closing()) return;
    if (run.Busy()) {
        afterwards = Afterwards::Start;
        parts.Transaction.GiveUpConnect();
        return;
    }
    run.ThisRun = {};
    TransactionFlags& flags = parts.Transaction.Flags;
    flags.QuietErrors = who == Starter::System;
    parts.Display.ResetRunningTime();
    if (!parts.ClickSound.isEmpty()) parts.Sounds.Play(parts.ClickSound);
    const bool local = parts.State.Values.LocalMode();
    flags.ConnectionDown = !local;  // whatever still stands
    parts.Net.SetStopped(false);
    const qint64 began = Now();
    parts.Pictures.ForgetStill();
    Timer4.SetInterval(FirstLook());
    if (!Open()) {
        run.ThisRun.Closed = true;
        run.Enter(RunState::OutsideHours);
        Tick();
        return;
    }
    if (local) {
        parts.Display.ShowStatus("Save Picture Local");
        run.Enter(RunState::Waiting);
    } else if (!FilesLeft()) {
        Failed(NoFilesLeft(), began);
    } else if (!Connect(RunState::Waiting) && run.Running()) {
        Failed(NotConnected(), began);
    }
    Timer4.SetInterval(FirstLook());
    EndOfWork();
    ArmTimer4();
}

void UploadCycle::ArmTimer4() {
    const bool ticks = run.Running() && !parts.Wait.Closing() &&
                       !parts.Transaction.Flags.ConnectionDown && run.Is() != RunState::Paused &&
                       run.Step() != RunState::WaitingToRetry &&
                       run.Step() != RunState::OutsideHours;
    Timer4.SetEnabled(ticks);
}

void UploadCycle::Pause() {
    if (!run.Running()) return;
    const bool pause = run.Is() != RunState::Paused;
    pause ? run.Enter(RunState::Paused) : run.Resume();
    run.ThisRun.Absence.Since.reset();  // nobody looks for the camera meanwhile
    parts.Pictures.ForgetStill();
    Timer2.SetEnabled(pause);
    ArmTimer4();
    parts.Display.ShowStatus(pause ? QString("Pause") : QString());
}

void UploadCycle::Stop() {
    const bool due = run.Running() || afterwards != Afterwards::Nothing;
    afterwards = Afterwards::Nothing;
    // Pressed again while the offline picture is on its way: that goes on.
    if (run.Is() == RunState::PublishingOffline) return;
    if (due) afterwards = Afterwards::OfflinePicture;
    EndOfRun();
    parts.Transaction.GiveUpConnect();
    if (parts.State.Values.LocalMode()) parts.Transaction.Flags.ConnectionDown = true;
    parts.Display.ShowStatus("stopped");
    EndOfWork();
}

// What was put off while a picture was on its way.
void UploadCycle::EndOfWork() {
    if (run.Busy()) return;
    if (run.Is() == RunState::Stopping) {
        run.Enter(RunState::Stopped);
        if (!parts.Wait.Closing()) parts.Display.ShowStatus("stopped");  // not the last step
    }
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
    const qint64 paused = Now() - run.Since();
    const bool shown = paused / 1000 % 2 == 0;
    parts.Display.ShowStatus(shown ? QString("Pause") : QString());
}

void UploadCycle::OnTimer1() {
    if (parts.Wait.Closing()) return;
    const bool online = parts.Net.Online();
    parts.Display.ShowOnline(online && !run.EndedOffline() && !run.Closed());
    if (!run.Running()) return;
    Watchdog();
    OnlineAgain(online);
    FollowHours();
    const bool connecting = parts.Transaction.ConnectInProgress();
    parts.Display.ShowRecording(connecting ? QString("Rec.") : online ? QString() : "offline");
    if (run.Is() == RunState::WaitingToRetry && run.ThisRun.Again.Due(Now())) Tick();
}

void UploadCycle::TryAgainAtOnce() {
    run.ThisRun.Again.Reset();
    run.ThisRun.Absence.Again.Reset();
    // What a run has ended with is no longer so, either.
    if (run.Is() == RunState::Stopped) run.Enter(RunState::Stopped);
}

void UploadCycle::OnlineAgain(bool online) {
    if (online && !wasOnline) TryAgainAtOnce();
    wasOnline = online;
}

void UploadCycle::Watchdog() {
    std::optional<int>& ticks = run.ThisRun.SendStarted;
    if (!ticks) return;
    ticks = *ticks >= countWraps ? 0 : *ticks + 1;
    const bool watched = !parts.State.Values.LocalMode() && !parts.Transaction.Flags.ConnectionDown;
    if (!watched || ticks != watchdogTicks) return;
    parts.Display.ShowStatus("reconnecting ftp");
    parts.Transaction.GiveUpStep();
    ticks.reset();
}

void UploadCycle::OnTimer4() {
    if (run.Busy() || !run.Running() || !TickMakesPicture()) return;
    Tick();
}

bool UploadCycle::TickMakesPicture() {
    const bool due = parts.State.Values.OnTheMinute ? OnTheBeat() : MinutesAreOver();
    return due && run.Is() != RunState::Paused && !parts.Transaction.Flags.ConnectionDown;
}

// Where the clock stands now; it is looked at again soon, because anybody can set it.
Beat UploadCycle::AimAtBeat() {
    const Beat beat = Beat::At(parts.Wait.OwnClock().Now(), parts.State.Values.TotalInterval());
    Timer4.SetInterval(static_cast<int>(std::min(beat.Until, longestLook)));
    run.ThisRun.Due = Now() + beat.Until;
    return beat;
}

bool UploadCycle::OnTheBeat() {
    const Beat beat = AimAtBeat();
    if (std::exchange(run.ThisRun.AtOnce, false)) return true;
    const qint64 multiple = parts.Wait.OwnClock().Now().toMSecsSinceEpoch() - beat.Since;
    const bool next = std::exchange(run.ThisRun.Beat, multiple) != multiple;
    return next && beat.Since < tooLate;
}

bool UploadCycle::MinutesAreOver() {
    qint16& left = run.ThisRun.MinutesLeft;
    // A machine that was suspended has slept through minutes that nobody counted.
    if (left > 0 && Now() < run.ThisRun.Due) {
        Timer4.SetInterval(minute);
        --left;
        parts.Display.ShowStatus("Wait...");
        return false;
    }
    left = 0;
    Timer4.SetInterval(parts.State.Values.Framerate);
    return true;
}

void UploadCycle::Tick() {
    const qint64 began = Now();
    const bool open = Open();
    const auto publish = [this] {
        return parts.State.Values.LocalMode() ? LocalTick() : FtpTick();
    };
    const Outcome trouble = !FilesLeft() ? NoFilesLeft()
                            : open       ? StandIn(publish(), began)
                                         : EndHours();
    run.ThisRun.SendStarted.reset();
    if (run.Running()) {
        run.ThisRun.Closed = !open;
        trouble ? Failed(*trouble, began) : open ? Succeeded() : RestOutside();
    } else {
        if (run.Is() == RunState::Stopping) run.Enter(RunState::Waiting);
        if (!parts.Wait.Closing()) parts.Display.ShowStatus("stopped");
    }
    if (between && run.Step() == RunState::Waiting && run.Running()) between();
    EndOfWork();
    ArmTimer4();
}

void UploadCycle::Failed(const Failure& failure, qint64 began) {
    run.ThisRun.Again.Failed(began, Now(), failure.MostPause);
    run.Enter(RunState::WaitingToRetry, failure.Is);
    parts.Display.ShowStatus(failure.Is.Why);
}

void UploadCycle::Succeeded() {
    OneRun& once = run.ThisRun;
    const Settings& values = parts.State.Values;
    once.Again.Reset();
    if (once.MinutesLeft == 0) once.MinutesLeft = static_cast<qint16>(values.Uptime);
    once.Due = Now() + values.TotalInterval();
    // The multiples that the picture has taken the time of are left out.
    if (values.OnTheMinute)
        once.Beat = parts.Wait.OwnClock().Now().toMSecsSinceEpoch() - AimAtBeat().Since;
    run.Enter(RunState::Waiting);
}

void UploadCycle::FollowHours() {
    const bool idle = !run.Busy() && run.Is() != RunState::Paused;
    if (!idle || Open() != run.ThisRun.Closed) return;
    run.ThisRun.Closed ? BeginHours() : Tick();
}

void UploadCycle::BeginHours() {
    OneRun& once = run.ThisRun;
    once.Closed = false;
    once.Again.Reset();
    once.Absence = {.OfflineShown = !parts.State.Values.OutsideLast};
    once.MinutesLeft = 0;
    parts.Pictures.ForgetStill();
    run.Enter(RunState::Waiting);
    Timer4.SetInterval(1);
    TransactionFlags& flags = parts.Transaction.Flags;
    flags.ConnectionDown = false;  // as when the server has dropped it
    flags.QuietErrors = true;      // nobody is there to read a message
    ArmTimer4();
}

// The picture for visitors is public once more where a try before has failed.
UploadCycle::Outcome UploadCycle::EndHours() {
    OneRun& once = run.ThisRun;
    bool sent = true;
    if (!parts.State.Values.OutsideLast) {
        run.Enter(RunState::Sending);
        sent = SendOffline(!once.Closed && !once.Absence.Since);
    }
    const Outcome trouble = sent ? Outcome() : OfflineNotSent();
    if (sent && !parts.State.Values.LocalMode()) parts.Transaction.CloseConnection();
    return trouble;
}

void UploadCycle::RestOutside() {
    run.ThisRun.Again.Reset();
    run.Enter(RunState::OutsideHours);
    parts.Display.ShowStatus(OutsideText(parts.Words, hours, parts.Wait.OwnClock().Now()));
}

// Where there has been no new picture for too long, visitors get the offline picture, once.
UploadCycle::Outcome UploadCycle::StandIn(const Outcome& tick, qint64 began) {
    CameraAbsence& absence = run.ThisRun.Absence;
    if (!tick) absence = {};
    if (!tick || !tick->NoPicture || !run.Running()) return tick;
    if (!absence.Since) absence.Since = parts.Pictures.FrozenSince().value_or(began);
    const qint64 patience = static_cast<qint64>(parts.State.Values.OfflineAfter) * minute;
    const bool due = patience > 0 && Now() - *absence.Since >= patience;
    if (due && !absence.OfflineShown && absence.Again.Due(Now())) {
        const qint64 start = Now();
        absence.OfflineShown = SendOffline(false);
        if (!absence.OfflineShown) absence.Again.Failed(start, Now());
    }
    Failure told = *tick;
    if (absence.OfflineShown) told.Is.Why = OfflineShownText(parts.Words, told.Is.Why);
    return told;
}

bool UploadCycle::SendOffline(bool blends) {
    const bool sent =
        offline && offline->SendOfflinePicture({.Then = RunState::Sending, .Blends = blends});
    if (!parts.Wait.Closing()) parts.Display.ShowUpload(0);
    return sent;
}

UploadCycle::Failure UploadCycle::OfflineNotSent() const {
    if (parts.State.Values.LocalMode())
        return {{OfflineUnwrittenText(parts.Words), TroubleKind::LocalFolder}};
    if (!parts.Net.Online()) return {{"No Connection to Internet", TroubleKind::Line}};
    return NotConnected();
}

void UploadCycle::CountPicture(const QString& file) {
    ++pictureCount;
    parts.Display.ShowPictureCount("Pic: " + QString::number(pictureCount));
    pictureBytes = QFileInfo(file).size();
    megabytes.Add(pictureBytes);
    parts.Display.ShowMegabytes("MB: " + megabytes.Text());
}

bool UploadCycle::Online() {
    if (!parts.Net.Online()) run.Enter(RunState::GoingOnline);
    return parts.Net.IstNetzVerbindung();
}

bool UploadCycle::MakePicture() {
    run.Enter(RunState::TakingPicture);
    const qint64 start = Now();
    // Whatever lies in the working folder from before: it has been published, or is too old.
    madeAt.reset();
    parts.State.FindWorkFolder();
    const auto made = [this] { return parts.Pictures.MakePicture(parts.State.ForPicture()); };
    const auto again = [this] {
        return parts.Pictures.Unwritten().startsWith(parts.State.Values.WorkPath) &&
               parts.State.LeaveMemory();
    };
    if (!made() && !(again() && made())) return false;
    run.ThisRun.Absence.Since.reset();
    madeAt = start;
    return true;
}

UploadCycle::Failure UploadCycle::Locally(const Trouble& why) const {
    return {why, std::min(Retry::FirstPause, parts.State.Values.TotalInterval())};
}

UploadCycle::Failure UploadCycle::NoFilesLeft() const {
    return Locally({parts.Words.Get("Messages", "NoFilesLeft")});
}

UploadCycle::Failure UploadCycle::NoPicture() const {
    Failure failure = WhyNoPicture();
    failure.NoPicture = true;
    return failure;
}

UploadCycle::Failure UploadCycle::WhyNoPicture() const {
    const QString& unwritten = parts.Pictures.Unwritten();
    const bool work = QFileInfo(unwritten).dir() == QDir(parts.State.Values.WorkPath);
    if (!unwritten.isEmpty())
        return Locally({"Cannot write " + unwritten,
                        work ? TroubleKind::WorkFolder : TroubleKind::LocalFolder});
    const QString trouble = parts.Pictures.CameraTrouble();
    if (trouble.isEmpty()) return Locally({"No picture from the camera"});
    return Locally({trouble, TroubleKind::Camera});
}

UploadCycle::Failure UploadCycle::NotConnected() const {
    const bool refused = parts.Transaction.LoginRefused();
    return {parts.Transaction.Failure(), refused ? Retry::MostPauseRefused : Retry::MostPause};
}

UploadCycle::Outcome UploadCycle::LocalTick() {
    parts.Transaction.Flags.ConnectionDown = false;
    // Without a folder the picture would land wherever the program was started.
    if (parts.State.Values.Verzeichnis.isEmpty())
        return Locally(
            {"No folder for the pictures: Verzeichnis is empty", TroubleKind::LocalFolder});
    // That writes it into the folder as well.
    if (!MakePicture()) return NoPicture();
    parts.Display.ShowStatus("Save Picture Local");
    const QString file = parts.State.Values.Verzeichnis + PublicNames::Picture;
    CountPicture(file);
    parts.State.KeepPublished(file, Now());
    emit PicturePublished(++publishedCount, pictureBytes);
    return {};
}

UploadCycle::Outcome UploadCycle::FtpTick() {
    if (!Online()) {
        parts.Display.ShowStatus("reconnecting");
        return Failure{{"No Connection to Internet", TroubleKind::Line}};
    }
    const bool connected = run.Running() && Connect(RunState::TakingPicture);
    if (!connected || !run.Running() || parts.Wait.Closing()) return NotConnected();
    run.ThisRun.Published = false;
    Outcome trouble = Publish();
    if (trouble) MakeReady();
    return trouble;
}

// Whether the connection stands; makes it where it does not, the first time that it fails once more
// at once: a server that was only restarted is there again. Not where it would lock somebody out.
bool UploadCycle::Connect(RunState then) {
    UploadTransaction& transaction = parts.Transaction;
    bool& down = transaction.Flags.ConnectionDown;
    if (!down && transaction.IsConnected()) return true;
    const bool first = run.ThisRun.Again.Fresh();
    const bool connected = std::exchange(down, false) ? transaction.ConnectFtp(then)
                                                      : transaction.ConnectOnceMore(then);
    if (connected || !first || transaction.LoginRefused() || !run.Running()) return connected;
    down = false;
    return transaction.ConnectFtp(then);
}

bool UploadCycle::PrepareSending() {
    const QString file = parts.State.WorkFile(PublicNames::Sending);
    const bool fresh = madeAt && Now() - *madeAt <= stale && QFile::exists(file);
    if (!fresh && !MakePicture()) return false;
    CountPicture(file);
    return true;
}

UploadCycle::Outcome UploadCycle::Publish() {
    const QString file = parts.State.WorkFile(PublicNames::Sending);
    if (!PrepareSending()) return NoPicture();
    if (!parts.Transaction.Publish(file)) return Failure{parts.Transaction.Failure()};
    // Even where the file cannot be removed: no picture is published twice.
    madeAt.reset();
    parts.State.KeepPublished(file, Now());
    run.ThisRun.Published = true;
    parts.Display.ShowUpload(0);
    parts.Display.ShowStatus("wait...");
    emit PicturePublished(++publishedCount, pictureBytes);
    return {};
}

// After a failed step: a new connection, and the next picture, so that the next try has both.
void UploadCycle::MakeReady() {
    if (!parts.Transaction.Flags.FtpError || !run.Running() || !Online()) return;
    if (!run.Running() || !parts.Transaction.ConnectFtp(RunState::TakingPicture)) return;
    if (run.Running() && !parts.Wait.Closing()) MakePicture();
}
