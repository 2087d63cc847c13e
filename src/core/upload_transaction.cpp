#include "core/upload_transaction.h"

#include "base/clock.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "core/history_plan.h"
#include "core/public_names.h"
#include "net/connectivity.h"
#include "net/ftp.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int sendSeconds = 45;
constexpr int deleteSeconds = 30;
constexpr int renameSeconds = 15;
constexpr int lastShownSeconds = 30;

// The history moves on with every eleventh picture, not with every one.
constexpr int ticksPerShift = 10;

// What a server answers to DELE or RNFR of a file that it does not have.
constexpr int noSuchFile = 550;

bool IsRefusal(int replyCode) {
    return replyCode >= 400;
}

}  // namespace

UploadTransaction::UploadTransaction(Waiting& ownWaiting, FTP& ownFtp,
                                     Connectivity& ownConnectivity, StatusDisplay& ownDisplay,
                                     MessageBoxes& ownBoxes, const MainState& ownState)
    : waiting(ownWaiting),
      ftp(ownFtp),
      connectivity(ownConnectivity),
      display(ownDisplay),
      boxes(ownBoxes),
      state(ownState) {
    connect(&ftp, &FTP::ServerResponse, this, &UploadTransaction::OnReply);
    connect(&ftp, &FTP::SendProgress, this, &UploadTransaction::OnSendProgress);
    connect(&ftp, &FTP::Error, this, [this] { Flags.FtpError = true; });
    connect(&ftp, &FTP::CommandSentToServer, this,
            [this](const QString& command) { display.LogCommand(command); });
}

void UploadTransaction::OnReply(const QString& chunk) {
    display.LogReply(chunk.trimmed());
    log.Add(waiting.OwnClock().Now().time(), chunk);
    // Every line counts: a 226 often comes in one chunk with the 150 before it.
    lines.Feed(chunk);
    for (const int code : std::exchange(lines.Codes, {})) Flags.LowerBy(code);
    emit LogChanged();
}

void UploadTransaction::OnSendProgress(qint32 sent, qint32 total) {
    if (!display.InUse() || total < 1) return;
    const int percent = static_cast<int>(std::min<qint64>(sent * 100LL / total, 100));
    constexpr int firstSight = 25;  // an empty bar would look as if nothing happened
    display.ShowUpload(percent == 0 ? firstSight : percent);
    display.ShowStatus("Send " + QString::number(sent) + " Bytes");
}

bool UploadTransaction::MayGoOn() const {
    return !Flags.FtpError && !Flags.ConnectionDown && !waiting.Closing() && connectivity.Online();
}

bool UploadTransaction::BeginStep(const QString& status) {
    if (Flags.ConnectionDown) return false;
    display.ShowStatus(status);
    Flags.FtpError = false;
    return true;
}

void UploadTransaction::AwaitReply(const bool& waitFlag, int seconds) {
    const auto showRest = [this, seconds](qint64 elapsed) {
        const int rest = seconds - static_cast<int>(elapsed / 1000);
        const bool shown = rest >= 0 && rest <= lastShownSeconds;
        display.ShowTimeOutLabel(shown ? std::optional(rest) : std::nullopt);
    };
    const auto hopeless = [this] {
        return Flags.FtpError || Flags.ConnectionDown || !connectivity.Online() ||
               !ftp.IsConnected() || IsRefusal(ftp.ReplyCode());
    };
    const auto end = waiting.Until(
        [&waitFlag] { return !waitFlag; },
        {.LimitMilliseconds = seconds * 1000LL, .Hopeless = hopeless, .EveryPass = showRest});
    display.ShowTimeOutLabel(std::nullopt);
    // Without the awaited reply nobody knows what the server holds: the steps that build on this
    // one must not run, whatever ended the wait.
    if (end != Waiting::End::Done) Flags.FtpError = true;
}

void UploadTransaction::CloseConnection() {
    display.ShowStatus("Close Connection");
    Flags.FtpError = false;
    Flags.ConnectionDown = true;
    ftp.Cancel();
    ftp.Disconnect();
}

void UploadTransaction::SendFile(const QString& localPath) {
    if (!BeginStep("Send File")) return;
    Flags.WaitSend = true;
    emit SendStarted();
    if (ftp.PutFile({}, PublicNames::Sending, localPath, false))
        AwaitReply(Flags.WaitSend, sendSeconds);
    else
        Flags.FtpError = true;
}

void UploadTransaction::DeleteFile(const QString& name) {
    if (!BeginStep("Delete File")) return;
    Flags.WaitDelete = true;
    if (ftp.KillFile({}, name))
        AwaitReply(Flags.WaitDelete, deleteSeconds);
    else
        // What is not there need not be deleted: the first pictures of an empty folder.
        Flags.FtpError = ftp.ReplyCode() != noSuchFile;
}

void UploadTransaction::DeletePublic() {
    DeleteFile(PublicNames::Picture);
}

void UploadTransaction::RenameFile(const QString& from, const QString& to, Missing missing) {
    if (!BeginStep("Rename File")) return;
    Flags.WaitRenameFrom = true;
    Flags.WaitRenameTo = true;
    if (!ftp.Rename({}, from, to)) {
        const bool isMissing = Flags.WaitRenameFrom && ftp.ReplyCode() == noSuchFile;
        Flags.FtpError = missing == Missing::IsFault || !isMissing;
        return;
    }
    AwaitReply(Flags.WaitRenameFrom, renameSeconds);
    if (!Flags.FtpError) AwaitReply(Flags.WaitRenameTo, renameSeconds);
}

void UploadTransaction::RenamePublic() {
    RenameFile(PublicNames::Sending, PublicNames::Picture);
}

void UploadTransaction::ShiftHistory() {
    const int pictures = state.Values.lastpictureanz;
    display.ShowStatus("make lastpictures (" + QString::number(pictures) + ")");
    for (const HistoryStep& step : HistoryPlan(pictures)) {
        if (!MayGoOn()) return;
        if (step.To.isEmpty())
            DeleteFile(step.From);
        else
            RenameFile(step.From, step.To, Missing::IsNoFault);
    }
}

bool UploadTransaction::Publish(const QString& localPath) {
    Flags.FtpError = false;
    if (MayGoOn()) SendFile(localPath);
    bool shifted = false;
    if (MayGoOn() && state.Values.lastpictures && ++historyCounter > ticksPerShift) {
        historyCounter = 0;
        shifted = true;
        ShiftHistory();
    }
    // A shift has moved the public picture away already.
    if (MayGoOn() && state.Values.Delete && !shifted) DeletePublic();
    if (!MayGoOn()) return false;
    RenamePublic();
    return !Flags.FtpError && !Flags.WaitRenameTo;
}
