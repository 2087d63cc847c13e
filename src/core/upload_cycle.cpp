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
      Timer1(parts.Wait.OwnClock(), 1000),
      Timer2(parts.Wait.OwnClock(), 1000),
      Timer4(parts.Wait.OwnClock(), 500) {
    connect(&Timer1, &Timer::Tick, this, &UploadCycle::OnTimer1);
    connect(&Timer2, &Timer::Tick, this, &UploadCycle::OnTimer2);
    connect(&Timer4, &Timer::Tick, this, &UploadCycle::OnTimer4);
    connect(&parts.Transaction, &UploadTransaction::ButtonsEnabled, this,
            &UploadCycle::ButtonsEnabled);
    connect(&parts.Transaction, &UploadTransaction::Failed, this, &UploadCycle::EndOfRun);
    connect(&parts.Transaction, &UploadTransaction::SendStarted, this, [this] {
        sendStarted = true;
        ticksSinceSend = 0;
    });
    Timer1.SetEnabled(true);
}

void UploadCycle::ApplyInterval() {
    Timer4.SetInterval(parts.State.Values.Framerate);
    minutesLeft = std::min<qint16>(minutesLeft, static_cast<qint16>(parts.State.Values.Uptime));
}

void UploadCycle::Start() {
    if (tickRunning) {
        startAfterTick = true;
        return;
    }
    if (running || parts.Transaction.ConnectInProgress() || parts.Wait.Closing()) return;
    TransactionFlags& flags = parts.Transaction.Flags;
    flags.QuietErrors = false;
    parts.Display.ResetRunningTime();
    if (!parts.ClickSound.isEmpty()) parts.Sounds.Play(parts.ClickSound);
    flags.ConnectionDown = false;
    running = true;
    offlineDue = false;
    published = true;
    minutesLeft = 0;
    parts.Net.SetStopped(false);
    if (offline) offline->Clear();
    if (parts.State.Values.LocalMode()) {
        parts.Display.ShowStatus("Save Picture Local");
        emit ButtonsEnabled(false, true);
    } else {
        parts.Transaction.ConnectFtp();
    }
    RunDeferred();
    if (!running || flags.ConnectionDown) return;
    Timer4.SetInterval(parts.State.Values.Framerate);
    Timer4.SetEnabled(!paused);
}

void UploadCycle::Pause() {
    if (!running) return;
    paused = !paused;
    pauseShown = paused;
    Timer2.SetEnabled(paused);
    Timer4.SetEnabled(!paused);
    parts.Display.ShowStatus(paused ? QString("Pause") : QString());
    emit PausedChanged(paused);
}

void UploadCycle::Stop() {
    startAfterTick = false;
    // Pressed again while the offline picture is on its way: that goes on.
    if (offlineRunning) return;
    offlineDue = offlineDue || running;
    if (paused) Pause();
    EndOfRun();
    if (parts.State.Values.LocalMode()) parts.Transaction.Flags.ConnectionDown = true;
    parts.Display.ShowStatus("stopped");
    emit ButtonsEnabled(true, false);
    RunDeferred();
}

void UploadCycle::RunDeferred() {
    if (tickRunning || parts.Transaction.ConnectInProgress()) return;
    // Who has started again since the stop wants no offline picture any more.
    if (std::exchange(offlineDue, false) && !startAfterTick) PublishOffline();
    if (std::exchange(startAfterTick, false)) Start();
}

void UploadCycle::PublishOffline() {
    if (!offline || parts.Wait.Closing() || !offline->Wanted()) return;
    tickRunning = offlineRunning = true;
    parts.Net.SetStopped(false);
    const bool done = offline->SendOfflinePicture();
    parts.Net.SetStopped(true);
    sendStarted = false;
    tickRunning = offlineRunning = false;
    if (parts.Wait.Closing()) return;
    parts.Display.ShowUpload(0);
    if (done) parts.Display.ShowStatus("Offline");
    // A connect made for it has left the buttons as those of a run.
    emit ButtonsEnabled(true, false);
}

void UploadCycle::EndOfRun() {
    running = false;
    sendStarted = false;
    if (paused) {
        paused = false;
        Timer2.SetEnabled(false);
        emit PausedChanged(false);
    }
    Timer4.SetEnabled(false);
    parts.Display.ShowRecording({});  // nobody renews it until the next start
    parts.Net.SetStopped(true);
}

void UploadCycle::Unload() {
    startAfterTick = false;
    offlineDue = false;
    EndOfRun();
    parts.Transaction.Flags.ConnectionDown = true;
}

void UploadCycle::OnTimer2() {
    if (!paused) return;
    pauseShown = !pauseShown;
    parts.Display.ShowStatus(pauseShown ? QString("Pause") : QString());
}

void UploadCycle::OnTimer1() {
    if (!running || parts.Wait.Closing()) return;
    const bool local = parts.State.Values.LocalMode();
    Watchdog();
    const bool online = parts.Net.Online();
    parts.Display.ShowOnline(online);
    const bool connecting = parts.Transaction.ConnectInProgress();
    parts.Display.ShowRecording(connecting ? QString("Rec.") : online ? QString() : "offline");
    if (!local && parts.Transaction.Flags.ConnectionDown && !connecting) ConnectAgain();
}

void UploadCycle::Watchdog() {
    if (!sendStarted) return;
    ticksSinceSend = ticksSinceSend >= countWraps ? 0 : ticksSinceSend + 1;
    TransactionFlags& flags = parts.Transaction.Flags;
    const bool watched = !parts.State.Values.LocalMode() && !flags.ConnectionDown;
    if (!watched || ticksSinceSend != watchdogTicks) return;
    parts.Display.ShowStatus("reconnecting ftp");
    flags.FtpError = true;
    sendStarted = false;
}

void UploadCycle::ConnectAgain() {
    parts.Transaction.Flags.ConnectionDown = false;
    parts.Transaction.ConnectFtp();
    RunDeferred();
    if (running && !parts.Transaction.Flags.ConnectionDown) Timer4.SetEnabled(!paused);
}

void UploadCycle::OnTimer4() {
    if (tickRunning || !running) return;
    tickRunning = true;
    if (TickMakesPicture()) Tick();
    tickRunning = false;
    RunDeferred();
}

bool UploadCycle::TickMakesPicture() {
    if (minutesLeft > 0) {
        Timer4.SetInterval(minute);
        --minutesLeft;
        parts.Display.ShowStatus("Wait...");
        return false;
    }
    Timer4.SetInterval(parts.State.Values.Framerate);
    return !paused && !parts.Transaction.Flags.ConnectionDown;
}

void UploadCycle::Tick() {
    if (parts.State.Values.LocalMode())
        LocalTick();
    else
        FtpTick();
    if (!running && !parts.Wait.Closing()) parts.Display.ShowStatus("stopped");
}

void UploadCycle::CountPicture(const QString& file) {
    ++pictureCount;
    parts.Display.ShowPictureCount("Pic: " + QString::number(pictureCount));
    megabytes.Add(QFileInfo(file).size());
    parts.Display.ShowMegabytes("MB: " + megabytes.Text());
}

void UploadCycle::LocalTick() {
    parts.Transaction.Flags.ConnectionDown = false;
    const QString source = parts.State.WorkFile(PublicNames::Sending);
    const QString target = parts.State.Values.Verzeichnis + PublicNames::Picture;
    if (parts.State.Values.Verzeichnis.isEmpty()) {
        // Without a folder the picture would land wherever the program was started.
        parts.Display.ShowStatus("No folder for the pictures: Verzeichnis is empty");
    } else if (MakePicture()) {
        if (WholeFile::Copy(source, target)) {
            CountPicture(target);
            emit PicturePublished(++publishedCount);
        } else {
            parts.Display.ShowStatus("Cannot write " + target);
        }
    }
    FinishTick(true);
}

bool UploadCycle::ConnectForTick() {
    // Servers drop idle connections. The history goes on counting over such a connect, or it would
    // never move on where the interval is longer than the server's patience.
    const int historyCounter = parts.Transaction.HistoryCounter();
    const bool connected = parts.Transaction.ConnectFtp();
    parts.Transaction.SetHistoryCounter(historyCounter);
    return connected;
}

bool UploadCycle::MakePicture() {
    const qint64 start = parts.Wait.OwnClock().Milliseconds();
    const bool made = parts.Pictures.MakePicture();
    if (made) madeAt = start;
    const QString& unwritten = parts.Pictures.Unwritten();
    if (!made && !unwritten.isEmpty()) parts.Display.ShowStatus("Cannot write " + unwritten);
    return made;
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

void UploadCycle::FtpTick() {
    if (!published && parts.Transaction.Flags.ConnectionDown) {
        parts.Transaction.CloseConnection();
        parts.Display.ShowOnline(false);
        return;
    }
    if (!parts.Net.IstNetzVerbindung()) {
        parts.Display.ShowStatus("reconnecting");
        return;
    }
    const bool lost = !parts.Ftp.IsConnected();
    const bool connected = !lost || ConnectForTick();
    if (!running || parts.Wait.Closing()) return;
    published = false;
    const QString file = parts.State.WorkFile(PublicNames::Sending);
    if (PrepareSending() && connected && parts.Transaction.Publish(file)) {
        QFile::remove(file);
        published = true;
        parts.Display.ShowUpload(0);
        parts.Display.ShowStatus("wait...");
        emit PicturePublished(++publishedCount);
    }
    FinishTick(lost && !connected);
}

void UploadCycle::FinishTick(bool connectTried) {
    TransactionFlags& flags = parts.Transaction.Flags;
    const bool local = parts.State.Values.LocalMode();
    if (!local && running && flags.FtpError && parts.Net.IstNetzVerbindung()) {
        if (!connectTried) parts.Transaction.ConnectFtp();
        if (running && !parts.Wait.Closing()) MakePicture();
    }
    sendStarted = false;
    const int uptime = parts.State.Values.Uptime;
    if (uptime > 0 && minutesLeft == 0) minutesLeft = static_cast<qint16>(uptime);
    if (running && !paused && !parts.Wait.Closing() && !flags.ConnectionDown)
        Timer4.SetEnabled(true);
}
