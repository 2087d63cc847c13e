#include "core/upload_transaction.h"

#include "base/clock.h"
#include "base/message_boxes.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "core/public_names.h"
#include "net/connectivity.h"
#include "net/ftp/ftp.h"

#include <algorithm>
#include <array>

namespace {

constexpr int sendSeconds = 45;
constexpr int deleteSeconds = 30;
constexpr int renameSeconds = 15;
constexpr int lastShownSeconds = 30;
constexpr int ftpTimeOutSeconds = 30;
constexpr int loginSeconds = 30;
// The control itself waits for the answer to a password as long as the connection stands.
constexpr int silentLoginMilliseconds = 120'000;
constexpr int loginNotAccepted = 530;

// The history moves on with every eleventh picture, not with every one.
constexpr int ticksPerShift = 10;

// What a server answers about a file that it does not have.
constexpr int notThere = 550;
// About a folder that it does not have, or whose name it does not take.
constexpr std::array noSuchFolder{550, 553, 501};
// When it does not rename over a file.
constexpr std::array noReplacing{553, 550, 501, 450};

const QString title = "Stillpost";

template <std::size_t Count>
bool IsOneOf(const std::array<int, Count>& codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

int SecondsSinceMidnight(const QTime& time) {
    return time.msecsSinceStartOfDay() / 1000;
}

}  // namespace

UploadTransaction::UploadTransaction(Waiting& ownWaiting, FTP& ownFtp,
                                     Connectivity& ownConnectivity, StatusDisplay& ownDisplay,
                                     MessageBoxes& ownBoxes, const MainState& ownState,
                                     RunStatus& ownRun)
    : waiting(ownWaiting),
      ftp(ownFtp),
      connectivity(ownConnectivity),
      display(ownDisplay),
      boxes(ownBoxes),
      state(ownState),
      run(ownRun) {
    connect(&ftp, &FTP::ServerResponse, this, &UploadTransaction::OnReply);
    connect(&ftp, &FTP::Replied, this, [this](int code) { Flags.LowerBy(code); });
    connect(&ftp, &FTP::SendProgress, this, &UploadTransaction::OnSendProgress);
    connect(&ftp, &FTP::StrangerRefused, this, [this](const QString& address) {
        display.ShowStatus("Refused a data connection from " + address + " (DataFrom)");
    });
    connect(&ftp, &FTP::Error, this, [this] { Flags.FtpError = true; });
    connect(&ftp, &FTP::CommandSentToServer, this,
            [this](const QString& command) { display.LogCommand(command); });
}

void UploadTransaction::OnReply(const QString& chunk) {
    display.LogReply(chunk.trimmed());
    log.Add(waiting.OwnClock().Now().time(), chunk);
    emit LogChanged();
}

void UploadTransaction::OnSendProgress(qint32 sent, qint32 total) {
    if (!display.InUse() || total < 1) return;
    const int percent = static_cast<int>(std::min<qint64>(sent * 100LL / total, 100));
    constexpr int firstSight = 25;  // an empty bar would look as if nothing happened
    display.ShowUpload(percent == 0 ? firstSight : percent);
    display.ShowStatus("Send " + QString::number(sent) + " Bytes");
}

void UploadTransaction::Warn(const QString& german, const QString& english) {
    failure = state.LangGerman ? german : english;
    if (!Flags.QuietErrors && !waiting.Closing()) boxes.Show(title, failure);
}

bool UploadTransaction::ConnectFtp(RunState then) {
    if (ConnectInProgress() || Flags.ConnectionDown) return false;
    Flags.ConnectionDown = true;
    run.Enter(RunState::Connecting);
    failure.clear();
    loginRefused = givenUp = false;

    const int startTime = SecondsSinceMidnight(waiting.OwnClock().Now().time());
    if (state.Values.Anwahl) connectivity.DialConfigured();
    HistoryCounter = 0;
    const bool online = connectivity.IstNetzVerbindung();
    if (!online) AskWhenOffline();
    bool connected = online && !givenUp && ConnectOnline();
    // A time of day never reaches this number: the server counts as slow only by its time-outs.
    if (startTime > 1'000'000) {
        Warn("Der angegebene FTP-Server ist extrem langsam oder temp. nicht ansprechbar!",
             "Your FTP-Server is to slow or temp. not avaiable!");
        display.ShowStatus("Offline");
        connected = false;
    }
    return FinishConnect(connected, then);
}

bool UploadTransaction::ConnectOnceMore(RunState then) {
    const int counted = HistoryCounter;
    const bool connected = ConnectFtp(then);
    HistoryCounter = counted;
    return connected;
}

void UploadTransaction::GiveUpConnect() {
    if (!ConnectInProgress()) return;
    givenUp = true;
    boxes.Withdraw();
    ftp.Cancel();
    ftp.Disconnect();
}

// A second in which nothing is done but to notice that the connect was given up.
bool UploadTransaction::PauseConnect() {
    constexpr qint64 second = 1000;
    const auto end = waiting.Until([this] { return givenUp; }, {.LimitMilliseconds = second});
    return end == Waiting::End::Limit;
}

bool UploadTransaction::ConnectOnline() {
    display.ShowStatus("Setup fast FTP");
    if (!PauseConnect()) return false;
    ftp.Cancel();
    if (!PauseConnect()) return false;
    ftp.Disconnect();
    if (!PauseConnect()) return false;
    ftp.SetRemoteHost({});
    ftp.SetRemoteHost(state.Values.Server);
    ftp.SetUserName(state.Values.User);
    ftp.SetPassword(state.Values.PW);
    ftp.SetTimeOut(ftpTimeOutSeconds);
    display.ShowStatus("Connecting...");
    return PauseConnect() && LogIn() && ChangeDirectory();
}

bool UploadTransaction::LogIn() {
    Flags.FtpError = false;
    Flags.WaitLogin = true;
    Timer patience(waiting.OwnClock(), silentLoginMilliseconds);
    connect(&patience, &Timer::Tick, this, [this] { ftp.Disconnect(); });
    patience.SetEnabled(true);
    if (!ftp.Connect()) {
        LoginFailed();
        return false;
    }
    const auto gone = [this] { return !ftp.IsConnected() || !connectivity.Online(); };
    waiting.Until([this] { return !Flags.WaitLogin; },
                  {.LimitMilliseconds = loginSeconds * 1000LL, .Hopeless = gone});
    return true;
}

void UploadTransaction::LoginFailed() {
    if (givenUp) return;
    loginRefused = ftp.GetLastErrorCode().toInt() == loginNotAccepted;
    if (loginRefused && Flags.QuietErrors) {
        failure = Advice().arg(ftp.GetLastErrorString().section(u'\r', 0, 0));
        return;
    }
    Warn(
        "Der angebebene Server existiert nicht oder der Username bzw. Passwort ist falsch!\n"
        "Eventuell wurde der Connect durch eine Firewall verhindert.",
        "The Server dont exists or Username or Password is wrong!\n"
        "Maybe the Connect was blocked by a Firewall!");
}

QString UploadTransaction::Advice() const {
    if (state.LangGerman)
        return "Anmeldung abgelehnt (%1): Benutzername und Passwort in den FTP-Einstellungen "
               "prüfen";
    if (state.LangFrench)
        return "Connexion refusée (%1) : vérifiez nom d'utilisateur et mot de passe dans les "
               "réglages FTP";
    return "Login refused (%1): check user name and password in the FTP settings";
}

bool UploadTransaction::ChangeDirectory() {
    const QString& configured = state.Values.Verzeichnis;
    const QString directory = configured.isEmpty() ? QString(".") : configured;
    display.ShowStatus("Change Dir");
    Flags.FtpError = false;
    Flags.WaitLogin = true;
    QString response;
    display.LogCommand("cwd " + directory);
    const bool answered = ftp.Execute("cwd " + directory, response);
    if (!PauseConnect()) return false;
    const auto gone = [this] {
        return !connectivity.Online() || Flags.FtpError || !ftp.IsConnected();
    };
    waiting.Until([this] { return !Flags.WaitCwd; }, {.Hopeless = gone});
    return PauseConnect() && InFolder(directory, answered, response);
}

// Nothing may land in another folder: whatever refuses this one ends the connect.
bool UploadTransaction::InFolder(const QString& directory, bool answered, const QString& response) {
    const bool stands = answered && ftp.IsConnected();
    const int code = ftp.ReplyCode();
    if (stands && !IsRefusal(code)) return true;
    if (stands && IsOneOf(noSuchFolder, code)) {
        Warn("Das Verzeichniss '" + directory + "' existiert nicht auf dem Server!",
             "The Path '" + directory + " 'dont exists on Server!");
    } else {
        Warn(response.trimmed(), response.trimmed());
        display.ShowStatus("Offline");
    }
    return false;
}

void UploadTransaction::AskWhenOffline() {
    failure = state.LangGerman ? QString("Kein Verbindungsaufbau zum Internet moeglich!")
                               : QString("No Connection to Internet possible!");
    if (Flags.QuietErrors || givenUp || waiting.Closing()) return;
    if (boxes.AskRetry(title, failure)) Flags.QuietErrors = true;
}

bool UploadTransaction::FinishConnect(bool connected, RunState then) {
    if (waiting.Closing()) {
        run.Enter(RunState::Stopped);
        return false;
    }
    if (!connected && !givenUp && !Flags.QuietErrors) {
        display.ShowStatus("Offline");  // nothing is under way any more
        run.Enter(RunState::Stopped, failure);
        emit Failed();
        return false;
    }
    if (connected) {
        Flags.ConnectionDown = false;
        Flags.QuietErrors = true;
        run.Enter(then);
        return true;
    }
    // What is left of a failed connect must not pass for one that the next step could use.
    CloseConnection();
    run.Enter(RunState::WaitingToRetry, failure);
    return false;
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
    if (end == Waiting::End::Limit) ftp.CountOpenReply();
    // Without the awaited reply nobody knows what the server holds: the steps that build on this
    // one must not run, whatever ended the wait.
    if (waitFlag) Flags.FtpError = true;
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
    run.ThisRun.SendStarted = 0;
    run.Enter(RunState::Sending);
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
        Flags.FtpError = ftp.ReplyCode() != notThere;
}

void UploadTransaction::DeletePublic() {
    DeleteFile(PublicNames::Picture);
}

void UploadTransaction::RenameFile(const QString& from, const QString& to, Missing missing) {
    if (!BeginStep("Rename File")) return;
    Flags.WaitRenameFrom = true;
    Flags.WaitRenameTo = true;
    if (!ftp.Rename({}, from, to)) {
        const bool isMissing = Flags.WaitRenameFrom && ftp.ReplyCode() == notThere;
        Flags.FtpError = missing == Missing::IsFault || !isMissing;
        return;
    }
    AwaitReply(Flags.WaitRenameFrom, renameSeconds);
    if (!Flags.FtpError) AwaitReply(Flags.WaitRenameTo, renameSeconds);
}

void UploadTransaction::RenamePublic() {
    RenameFile(PublicNames::Sending, PublicNames::Picture);
}

// The oldest picture goes, each of the others moves on by one, and the public one becomes the
// first.
void UploadTransaction::ShiftHistory() {
    const int pictures = state.Values.lastpictureanz;
    display.ShowStatus("make lastpictures (" + QString::number(pictures) + ")");
    if (MayGoOn()) DeleteFile(PublicNames::History(pictures));
    for (int i = pictures; i >= 1; --i) {
        const QString from = i == 1 ? PublicNames::Picture : PublicNames::History(i - 1);
        if (MayGoOn()) RenameFile(from, PublicNames::History(i), Missing::IsNoFault);
    }
}

// Puts the new picture in the place of the old one. A server that does not do so by a mere rename
// has the old one deleted first, from then on at every picture of the run.
void UploadTransaction::Replace(bool oldIsGone) {
    RenamePublic();
    if (oldIsGone || !RefusedToReplace()) return;
    DeletePublic();
    if (Flags.FtpError) return;
    RenamePublic();
    if (Flags.FtpError) return;
    run.ThisRun.DeletesFirst = true;
    display.ShowStatus(
        "The server does not rename over a file: \"delete Pic\" in the FTP settings saves a turn");
}

bool UploadTransaction::RefusedToReplace() const {
    const bool renaming = !Flags.WaitRenameFrom && Flags.WaitRenameTo;
    return renaming && ftp.IsConnected() && IsOneOf(noReplacing, ftp.ReplyCode());
}

// Many servers let only the owner read a new file, and no visitor sees it then. The command is no
// standard one: who refuses it is not asked again in this run.
void UploadTransaction::ChangeMode(const QString& name) {
    const QString& mode = state.Values.FileMode;
    std::optional<bool>& works = run.ThisRun.ChangesModes;
    if (mode.isEmpty() || works == false || !MayGoOn()) return;
    const int code = ftp.Ask(QString("SITE CHMOD %1 %2").arg(mode, name));
    const bool lineLost = code / 100 == 4 || (code == 0 && works == true);
    if (!lineLost) works = code / 100 == 2;
}

bool UploadTransaction::Publish(const QString& localPath) {
    Flags.FtpError = false;
    if (MayGoOn()) SendFile(localPath);
    bool shifted = false;
    if (MayGoOn() && state.Values.lastpictures && ++HistoryCounter > ticksPerShift) {
        HistoryCounter = 0;
        shifted = true;
        ShiftHistory();
    }
    // A shift has moved the public picture away already.
    const bool deletes = state.Values.Delete || run.ThisRun.DeletesFirst;
    if (MayGoOn() && deletes && !shifted) DeletePublic();
    // The first time the picture is public before the server is asked, which may never answer;
    // from then on no visitor is to come between the two.
    const bool before = run.ThisRun.ChangesModes == true;
    if (before) ChangeMode(PublicNames::Sending);
    if (!MayGoOn()) return false;
    Replace(deletes || shifted);
    if (Flags.FtpError || Flags.WaitRenameTo) return false;
    if (!before) ChangeMode(PublicNames::Picture);
    return true;
}
