#include "net/publishing/ftp_trial.h"

#include <QRegularExpression>

namespace {

// Servers let a wrong password wait for up to ten seconds.
constexpr qint16 operationSeconds = 20;
constexpr int loginMilliseconds = 30'000;
constexpr int deadlineMilliseconds = 60'000;
constexpr int graceMilliseconds = 3000;
constexpr int loginRefused = 530;
constexpr int noSuchFile = 550;
constexpr qsizetype longestReply = 120;  // shown to people

// What servers say to a login without encryption. Codes differ, the words do not; but
// "authentication" is what many say to a wrong password.
bool SpeaksOfEncryption(const QString& text) {
    static const QRegularExpression words(R"(\b(TLS|SSL|AUTH)\b|encrypt)",
                                          QRegularExpression::CaseInsensitiveOption);
    return text.contains(words);
}

}  // namespace

FtpTrial::FtpTrial(Waiting& ownWaiting, StatusDisplay& ownLog, const TrialAccess& ownAccess)
    : waiting(ownWaiting),
      log(ownLog),
      access(ownAccess),
      client(ownWaiting, unseen),
      deadline(ownWaiting.OwnClock(), deadlineMilliseconds),
      grace(ownWaiting.OwnClock(), graceMilliseconds) {
    connect(&client, &FTP::CommandSentToServer, this, &FtpTrial::CommandSent);
    connect(&client, &FTP::ServerResponse, this, &FtpTrial::ReplyCame);
    connect(&client, &FTP::StrangerRefused, this,
            [this](const QString& address) { stranger = address; });
    connect(&deadline, &Timer::Tick, this, [this] { Stop(TrialResult::TooSlow); });
    connect(&grace, &Timer::Tick, this, [this] { client.Disconnect(); });
    client.SetRemoteHost(access.Server);
    client.SetRemotePort(access.Port);
    client.SetUserName(access.User);
    client.SetPassword(access.Password);
    client.SetTimeOut(operationSeconds);
    client.SetDataFromAnywhere(access.DataFromAnywhere);
}

TrialOutcome FtpTrial::Run() {
    deadline.SetEnabled(true);
    TrialOutcome outcome{Try(), {}, {}};
    deadline.SetEnabled(false);
    outcome.Reply = outcome.Is == TrialResult::DataFromElsewhere ? stranger : LastReply();
    CleanUp();
    client.Disconnect();
    if (stopped) outcome.Is = *stopped;
    if (waiting.Closing()) outcome.Is = TrialResult::Cancelled;
    outcome.LeftBehind = leftBehind;
    return outcome;
}

void FtpTrial::Stop(TrialResult result) {
    if (!stopped) stopped = result;
    client.Cancel();
    if (onServer.isEmpty())
        client.Disconnect();
    else
        grace.SetEnabled(true);
}

TrialResult FtpTrial::Try() {
    if (!scratch.open() || scratch.write("Stillpost\n") < 1 || !scratch.flush())
        return TrialResult::NoScratchFile;
    using Step = TrialResult (FtpTrial::*)();
    // The second file takes the place of the first, as the second picture does.
    QList<Step> steps{&FtpTrial::LogIn, &FtpTrial::ChangeFolder, &FtpTrial::Store,
                      &FtpTrial::Rename, &FtpTrial::Store};
    if (access.DeleteFirst) steps << &FtpTrial::Delete;
    steps << &FtpTrial::Rename << &FtpTrial::Delete;
    for (const Step step : steps) {
        const TrialResult result = (this->*step)();
        if (result != TrialResult::Fine || stopped) return result;
    }
    return TrialResult::Fine;
}

TrialResult FtpTrial::LogIn() {
    emit StepStarted(TrialStep::Connecting);
    // The control itself waits for the answer to a password as long as the connection stands.
    Timer patience(waiting.OwnClock(), loginMilliseconds);
    connect(&patience, &Timer::Tick, this, [this] { Stop(TrialResult::NoAnswer); });
    patience.SetEnabled(true);
    return client.Connect() ? TrialResult::Fine : LoginFault();
}

TrialResult FtpTrial::LoginFault() const {
    using Reached = Winsock::ConnectEnd;
    switch (client.ConnectResult()) {
        case Reached::HostNotFound:
            return TrialResult::HostNotFound;
        case Reached::Refused:
            return TrialResult::Refused;
        case Reached::Unreachable:
            return TrialResult::Unreachable;
        case Reached::None:
            return TrialResult::NoAnswer;
        case Reached::Established:
            break;
    }
    const int code = client.ReplyCode();
    if (!client.Greeted())
        return IsRefusal(code) ? TrialResult::ServerRefused : TrialResult::NotFtp;
    if (!IsRefusal(code)) return TrialResult::NoAnswer;
    if (SpeaksOfEncryption(reply)) return TrialResult::EncryptionNeeded;
    return code == loginRefused ? TrialResult::LoginRefused : TrialResult::ServerRefused;
}

TrialResult FtpTrial::ChangeFolder() {
    emit StepStarted(TrialStep::ChangingFolder);
    const QString line = "cwd " + (access.Folder.isEmpty() ? QString(".") : access.Folder);
    CommandSent(line);
    QString response;
    if (!client.Execute(line, response)) return Lost();
    return IsRefusal(client.ReplyCode()) ? TrialResult::FolderMissing : TrialResult::Fine;
}

TrialResult FtpTrial::Store() {
    emit StepStarted(TrialStep::Storing);
    if (!client.PutFile({}, names.First, scratch.fileName(), false))
        return StoreFault(client.ReplyCode());
    const auto last = [this] { return client.ReplyCode() >= 200; };
    waiting.Until(last, {.LimitMilliseconds = operationSeconds * 1000LL,
                         .Hopeless = [this] { return stopped || !client.IsConnected(); }});
    if (!last()) client.CountOpenReply();
    if (client.ReplyCode() / 100 == 2) {
        stored = names.First;
        return TrialResult::Fine;
    }
    return IsRefusal(client.ReplyCode()) ? StoreFault(client.ReplyCode()) : Lost();
}

TrialResult FtpTrial::StoreFault(int code) const {
    constexpr int noRoom = 452;
    constexpr int overQuota = 552;
    constexpr int cannotOpen = 425;
    constexpr int transferAborted = 426;
    if (!client.IsConnected()) return TrialResult::ConnectionLost;
    if (!stranger.isEmpty()) return TrialResult::DataFromElsewhere;
    if (code == noRoom || code == overQuota) return TrialResult::NoRoom;
    const bool storing = command == "STOR";
    // A server that cannot come back to this computer says 425 or 426, refuses the address, or
    // keeps silent until the time is up.
    const bool blocked = code == cannotOpen || code == transferAborted ||
                         (IsRefusal(code) ? command == "PORT" || command == "EPRT" : storing);
    if (blocked) return TrialResult::DataBlocked;
    if (!IsRefusal(code)) return TrialResult::NoAnswer;
    return storing ? TrialResult::MayNotStore : TrialResult::ServerRefused;
}

TrialResult FtpTrial::Rename() {
    emit StepStarted(TrialStep::Renaming);
    const bool over = onServer.contains(names.Second);
    if (client.Rename({}, names.First, names.Second)) {
        onServer = {names.Second};
        stored = names.Second;
        return TrialResult::Fine;
    }
    if (!IsRefusal(client.ReplyCode())) {
        onServer << names.Second;  // who knows how far it came
        return Lost();
    }
    return over ? TrialResult::ReplaceRefused : TrialResult::RenameRefused;
}

TrialResult FtpTrial::Delete() {
    emit StepStarted(TrialStep::Deleting);
    if (client.KillFile({}, names.Second)) {
        onServer.removeAll(names.Second);
        return TrialResult::Fine;
    }
    return IsRefusal(client.ReplyCode()) ? TrialResult::DeleteRefused : Lost();
}

TrialResult FtpTrial::Lost() const {
    return client.IsConnected() ? TrialResult::NoAnswer : TrialResult::ConnectionLost;
}

void FtpTrial::CleanUp() {
    onServer.removeDuplicates();
    for (const QString& name : std::as_const(onServer)) {
        // The same code tells of a file that is not there and of one that may not be deleted.
        const bool gone =
            client.IsConnected() &&
            (client.KillFile({}, name) || (client.ReplyCode() == noSuchFile && name != stored));
        if (!gone && leftBehind.isEmpty()) leftBehind = name;
    }
    grace.SetEnabled(false);
}

// The line that ends it, not longer than people read.
QString FtpTrial::LastReply() const {
    QString text = reply.trimmed().section(u'\n', -1).simplified();
    if (text.endsWith(u'.')) text.chop(1);
    return text.size() > longestReply ? text.first(longestReply) + u'…' : text;
}

void FtpTrial::CommandSent(const QString& line) {
    log.LogCommand(line);
    command = line.section(u' ', 0, 0);
    if (command == "STOR") onServer << names.First;
    reply.clear();
}

void FtpTrial::ReplyCame(const QString& chunk) {
    log.LogReply(chunk.trimmed());
    reply += chunk;
}
