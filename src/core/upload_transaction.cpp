#include "core/upload_transaction.h"

#include "base/clock.h"
#include "base/message_boxes.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "core/access_of.h"
#include "core/kind_of.h"
#include "core/public_names.h"
#include "net/connectivity.h"
#include "net/picture_server.h"
#include "net/publishing/answer_texts.h"

#include <QFileInfo>

#include <algorithm>

namespace {

// The history moves on with every eleventh picture, not with every one.
constexpr int ticksPerShift = 10;

const QString title = "Stillpost";

int SecondsSinceMidnight(const QTime& time) {
    return time.msecsSinceStartOfDay() / 1000;
}

// Nobody has logged in, for a reason that has nothing to do with encryption.
bool IsLoginFault(ServerFault fault) {
    using enum ServerAnswer::Fault;
    const auto faults = {HostNotFound, Refused,       Unreachable,      NoAnswer,
                         NotThisWay,   ServerRefused, EncryptionNeeded, LoginRefused};
    return std::find(faults.begin(), faults.end(), fault) != faults.end();
}

}  // namespace

UploadTransaction::UploadTransaction(const Parts& ownParts, PictureServer& ownServer)
    : parts(ownParts) {
    Use(ownServer);
}

void UploadTransaction::Use(PictureServer& other) {
    if (server == &other) return;
    if (server) {
        server->Cancel();
        server->Close();
        server->disconnect(this);
    }
    server = &other;
    connect(server, &PictureServer::Received, this, &UploadTransaction::OnReply);
    connect(server, &PictureServer::SendProgress, this, &UploadTransaction::OnSendProgress);
    connect(server, &PictureServer::Remarked, this,
            [this](ServerRemark remark, const QString& detail) {
                parts.Display.ShowStatus(RemarkText(parts.Words, remark, detail));
            });
    connect(server, &PictureServer::Sent, this,
            [this](const QString& command) { parts.Display.LogCommand(command); });
}

void UploadTransaction::OnReply(const QString& chunk) {
    parts.Display.LogReply(chunk.trimmed());
    log.Add(parts.Wait.OwnClock().Now().time(), chunk);
    emit LogChanged();
}

void UploadTransaction::OnSendProgress(qint64 sent, qint64 total) {
    if (!parts.Display.InUse() || total < 1) return;
    const int percent = static_cast<int>(std::min<qint64>(sent * 100 / total, 100));
    constexpr int firstSight = 25;  // an empty bar would look as if nothing happened
    parts.Display.ShowUpload(percent == 0 ? firstSight : percent);
    parts.Display.ShowStatus("Send " + QString::number(sent) + " Bytes");
}

void UploadTransaction::Warn(const QString& text) {
    if (!Flags.QuietErrors && !givenUp && !parts.Wait.Closing()) parts.Boxes.Show(title, text);
}

bool UploadTransaction::ConnectFtp(RunState then) {
    if (ConnectInProgress() || Flags.ConnectionDown) return false;
    Flags.ConnectionDown = true;
    parts.Run.Enter(RunState::Connecting);
    failure = {};
    givenUp = false;

    const int startTime = SecondsSinceMidnight(parts.Wait.OwnClock().Now().time());
    if (parts.State.Values.Anwahl) parts.Net.DialConfigured();
    HistoryCounter = 0;
    const bool online = parts.Net.IstNetzVerbindung();
    if (!online) AskWhenOffline();
    bool connected = online && !givenUp && Open();
    // A time of day never reaches this number: the server counts as slow only by its time-outs.
    if (startTime > 1'000'000) {
        failure.Why = parts.State.LangGerman
                          ? QString(
                                "Der angegebene FTP-Server ist extrem langsam oder temp. nicht "
                                "ansprechbar!")
                          : QString("Your FTP-Server is to slow or temp. not avaiable!");
        Warn(failure.Why);
        parts.Display.ShowStatus("Offline");
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
    parts.Boxes.Withdraw();
    server->Cancel();
}

void UploadTransaction::GiveUpStep() {
    Flags.FtpError = true;
    server->Cancel();
}

bool UploadTransaction::IsConnected() const {
    return server->IsOpen();
}

bool UploadTransaction::Open() {
    const QString programFolder = QFileInfo(parts.State.SettingsFile).path();
    server->SetAccess(AccessOf(parts.State.Values, programFolder));
    const bool known = server->Access().Way != Protocol::Unknown;
    const ServerAnswer answer =
        known ? server->Open()
              : ServerAnswer{ServerFault::UnknownProtocol, parts.State.Values.Protocol};
    if (answer.Fine()) return true;
    Explain(answer);
    Warn(ConnectMessage(answer));
    if (answer.Is == ServerFault::FolderMissing) parts.Display.ShowStatus("Offline");
    return false;
}

void UploadTransaction::Explain(const ServerAnswer& answer) {
    const bool online = parts.Net.Online();
    failure = {AnswerText(parts.Words, server->Access(), answer),
               online ? KindOf(answer.Is) : TroubleKind::Line};
}

QString UploadTransaction::ConnectMessage(const ServerAnswer& answer) const {
    const bool german = parts.State.LangGerman;
    const QString& folder = server->Access().Folder;
    if (!SpeaksFtp(server->Access().Way)) return failure.Why;
    if (answer.Is == ServerFault::FolderMissing)
        return german ? "Das Verzeichniss '" + folder + "' existiert nicht auf dem Server!"
                      : "The Path '" + folder + " 'dont exists on Server!";
    if (!IsLoginFault(answer.Is)) return failure.Why;
    return german ? QString(
                        "Der angebebene Server existiert nicht oder der Username bzw. Passwort "
                        "ist falsch!\n"
                        "Eventuell wurde der Connect durch eine Firewall verhindert.")
                  : QString(
                        "The Server dont exists or Username or Password is wrong!\n"
                        "Maybe the Connect was blocked by a Firewall!");
}

void UploadTransaction::AskWhenOffline() {
    failure = {parts.State.LangGerman ? QString("Kein Verbindungsaufbau zum Internet moeglich!")
                                      : QString("No Connection to Internet possible!"),
               TroubleKind::Line};
    if (Flags.QuietErrors || givenUp || parts.Wait.Closing()) return;
    if (parts.Boxes.AskRetry(title, failure.Why)) Flags.QuietErrors = true;
}

bool UploadTransaction::FinishConnect(bool connected, RunState then) {
    RunStatus& run = parts.Run;
    if (parts.Wait.Closing()) {
        run.Enter(RunState::Stopped);
        return false;
    }
    if (!connected && !givenUp && !Flags.QuietErrors) {
        parts.Display.ShowStatus("Offline");  // nothing is under way any more
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
    return !Flags.FtpError && !Flags.ConnectionDown && !parts.Wait.Closing() && parts.Net.Online();
}

ServerAnswer UploadTransaction::Step(const QString& status,
                                     const std::function<ServerAnswer()>& operation) {
    if (Flags.ConnectionDown) return {ServerFault::ConnectionLost, {}};
    parts.Display.ShowStatus(status);
    Flags.FtpError = false;
    ServerAnswer answer = operation();
    Flags.FtpError = !answer.Fine();
    if (Flags.FtpError) Explain(answer);
    return answer;
}

void UploadTransaction::CloseConnection() {
    parts.Display.ShowStatus("Close Connection");
    Flags.FtpError = false;
    Flags.ConnectionDown = true;
    server->Close();
}

void UploadTransaction::SendFile(const QString& localPath, const QString& name) {
    if (Flags.ConnectionDown) return;
    parts.Run.ThisRun.SendStarted = 0;
    parts.Run.Enter(RunState::Sending);
    (void)Step("Send File", [&] { return server->SendFile(localPath, name); });
}

ServerFault UploadTransaction::DeleteFile(const QString& name) {
    const ServerAnswer answer = Step("Delete File", [&] { return server->DeleteFile(name); });
    // What is not there need not be deleted: the first pictures of an empty folder.
    if (answer.Is == ServerFault::FileMissing) Flags.FtpError = false;
    return answer.Is;
}

void UploadTransaction::DeletePublic() {
    (void)DeleteFile(PublicNames::Picture);
}

void UploadTransaction::RenameFile(const QString& from, const QString& to, Missing missing) {
    const ServerAnswer answer = Step("Rename File", [&] { return server->RenameFile(from, to); });
    refusedToReplace = answer.Is == ServerFault::ReplaceRefused;
    const bool none = answer.Is == ServerFault::FileMissing || answer.Is == ServerFault::NoCopies;
    if (none && missing == Missing::IsNoFault) Flags.FtpError = false;
}

void UploadTransaction::RenamePublic() {
    RenameFile(PublicNames::Sending, PublicNames::Picture);
}

bool UploadTransaction::HistoryIsDue() {
    if (!parts.State.Values.lastpictures || ++HistoryCounter <= ticksPerShift) return false;
    HistoryCounter = 0;
    return true;
}

void UploadTransaction::KeepOutOfHistory() {
    HistoryCounter = std::min(HistoryCounter, ticksPerShift - 1);
}

// The oldest picture goes, each of the others moves on by one, and the public one becomes the
// first.
void UploadTransaction::ShiftHistory() {
    const int pictures = parts.State.Values.lastpictureanz;
    parts.Display.ShowStatus("make lastpictures (" + QString::number(pictures) + ")");
    if (MayGoOn() && !server->Replaces()) DeleteOldest(PublicNames::History(pictures));
    for (int i = pictures; i > 1; --i) {
        if (MayGoOn())
            RenameFile(PublicNames::History(i - 1), PublicNames::History(i), Missing::IsNoFault);
    }
    if (MayGoOn()) KeepPublic();
}

// A server that deletes nothing may rename over the oldest picture all the same.
void UploadTransaction::DeleteOldest(const QString& name) {
    bool& deletes = parts.Run.ThisRun.Deletes;
    if (!deletes || !RefusesToDelete(DeleteFile(name))) return;
    deletes = Flags.FtpError = false;
    parts.Display.ShowStatus(RemarkText(parts.Words, ServerRemark::DeletesNothing));
}

void UploadTransaction::KeepPublic() {
    const ServerAnswer answer = Step("Rename File", [this] {
        return server->KeepFile(PublicNames::Picture, PublicNames::History(1));
    });
    // A server that cannot keep pictures takes the new one all the same.
    if (answer.Is == ServerFault::FileMissing || answer.Is == ServerFault::NoCopies)
        Flags.FtpError = false;
}

// Puts the new picture in the place of the old one. A server that does not do so by a mere rename
// has the old one deleted first, from then on at every picture of the run.
void UploadTransaction::Replace(bool oldIsGone) {
    RenamePublic();
    if (oldIsGone || !refusedToReplace) return;
    DeletePublic();
    if (Flags.FtpError) return;
    RenamePublic();
    if (Flags.FtpError) return;
    parts.Run.ThisRun.DeletesFirst = true;
    parts.Display.ShowStatus(RemarkText(parts.Words, ServerRemark::DeletesFirst));
}

// Many servers let only the owner read a new file, and no visitor sees it then. Who does not change
// that is not asked again in this run.
void UploadTransaction::ChangeMode(const QString& name) {
    const QString& mode = parts.State.Values.FileMode;
    std::optional<bool>& works = parts.Run.ThisRun.ChangesModes;
    if (mode.isEmpty() || works == false || !MayGoOn()) return;
    if (const auto changed = server->ChangeMode(name, mode)) works = changed;
}

bool UploadTransaction::Publish(const QString& localPath) {
    Flags.FtpError = false;
    failure = {};
    const bool whole = server->SendsWhole();
    if (MayGoOn() && !whole) SendFile(localPath, PublicNames::Sending);
    const bool shifted = MayGoOn() && HistoryIsDue();
    if (shifted) ShiftHistory();
    if (whole) {
        if (MayGoOn()) SendFile(localPath, PublicNames::Picture);
        return MayGoOn();
    }
    // A shift has moved the public picture away already, where it did not keep a copy.
    const bool deletes =
        (parts.State.Values.Delete || parts.Run.ThisRun.DeletesFirst) && !server->Replaces();
    if (MayGoOn() && deletes && !shifted) DeletePublic();
    // The first time the picture is public before the server is asked, which may never answer;
    // from then on no visitor is to come between the two.
    const bool before = parts.Run.ThisRun.ChangesModes == true;
    if (before) ChangeMode(PublicNames::Sending);
    if (!MayGoOn()) return false;
    Replace(deletes && !shifted);
    if (Flags.FtpError) return false;
    if (!before) ChangeMode(PublicNames::Picture);
    return true;
}

bool UploadTransaction::PublishBeside(const QString& localPath, const QString& name) {
    const QString first = server->SendsWhole() ? name : u'1' + name;
    Flags.FtpError = false;
    failure = {};
    if (MayGoOn()) SendFile(localPath, first);
    parts.Run.ThisRun.SendStarted.reset();
    if (first != name && MayGoOn()) {
        RenameFile(first, name);
        if (refusedToReplace) (void)DeleteFile(name);
        if (refusedToReplace && MayGoOn()) RenameFile(first, name);
    }
    if (!MayGoOn()) return false;
    if (first != name) ChangeMode(name);
    return true;
}
