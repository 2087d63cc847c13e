#include "net/ftp/ftp_server.h"

#include "base/clock.h"
#include "base/status_display.h"
#include "base/waiting.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>
#include <array>

namespace {

constexpr int loginRefused = 530;
// What a server answers about a file that it does not have.
constexpr int notThere = 550;
// About a folder that it does not have, or whose name it does not take.
constexpr std::array noSuchFolder{550, 553, 501};
// When it does not rename over a file.
constexpr std::array noReplacing{553, 550, 501, 450};
constexpr std::array noRoom{452, 552};
constexpr std::array notKnown{500, 501, 502, 504};  // the command
constexpr int aboutFile = 213;
// When it cannot come back to this computer.
constexpr std::array noDataConnection{425, 426};
constexpr qsizetype longestReply = 120;  // shown to people

template <std::size_t Count>
bool IsOneOf(const std::array<int, Count>& codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// What servers say to a login without encryption. Codes differ, the words do not; but
// "authentication" is what many say to a wrong password.
bool SpeaksOfEncryption(const QString& text) {
    static const QRegularExpression words(R"(\b(TLS|SSL|AUTH)\b|encrypt)",
                                          QRegularExpression::CaseInsensitiveOption);
    return text.contains(words);
}

FtpSecurity SecurityOf(Protocol way) {
    if (way == Protocol::Ftpsi) return FtpSecurity::Implicit;
    return way == Protocol::Ftps ? FtpSecurity::Explicit : FtpSecurity::None;
}

}  // namespace

void FtpServer::Waits::LowerBy(int replyCode) {
    switch (replyCode) {
        case 226:
            WaitSend = false;
            break;
        case 230:
            WaitLogin = false;
            break;
        case 250:
            WaitCwd = WaitRenameTo = WaitDelete = false;
            break;
        case 350:
            WaitRenameFrom = false;
            break;
        default:
            break;
    }
}

FtpServer::FtpServer(const Surroundings& surroundings, FTP& control, const FtpLimits& ownLimits)
    : PictureServer(surroundings), ftp(control), limits(ownLimits) {
    connect(&ftp, &FTP::CommandSentToServer, this, &FtpServer::CommandSent);
    connect(&ftp, &FTP::ServerResponse, this, &FtpServer::ReplyCame);
    connect(&ftp, &FTP::Replied, this, [this](int code) { waits.LowerBy(code); });
    connect(&ftp, &FTP::Error, this, [this] { ftpError = true; });
    connect(&ftp, &FTP::SendProgress, this, &PictureServer::SendProgress);
    connect(&ftp, &FTP::StrangerRefused, this, [this](const QString& address) {
        stranger = address;
        emit Remarked(ServerRemark::StrangerRefused, address);
    });
}

void FtpServer::SetAccess(const ServerAccess& wanted) {
    PictureServer::SetAccess(wanted);
    ftp.SetRemoteHost(wanted.Server);
    ftp.SetRemotePort(wanted.Port);
    ftp.SetUserName(wanted.User);
    ftp.SetPassword(wanted.Password);
    ftp.SetDataFromAnywhere(wanted.DataFromAnywhere);
    ftp.SetPassive(wanted.Passive);
    ftp.SetSecurity(SecurityOf(wanted.Way));
    ftp.SetTrusted(wanted.Trusted);
}

void FtpServer::CommandSent(const QString& line) {
    command = line.section(u' ', 0, 0);
    reply.clear();
    emit Sent(line);
}

void FtpServer::ReplyCame(const QString& chunk) {
    reply += chunk;
    emit Received(chunk);
}

// The line that ends it, not longer than people read.
QString FtpServer::LastReply() const {
    QString text = reply.trimmed().section(u'\n', -1).simplified();
    if (text.endsWith(u'.')) text.chop(1);
    return text.size() > longestReply ? text.first(longestReply) + u'…' : text;
}

// A second in which nothing is done but to notice that the login was given up.
bool FtpServer::Pause() {
    constexpr qint64 second = 1000;
    if (!limits.Pauses) return !Cancelled();
    const auto end = Wait().Until([this] { return Cancelled(); }, {.LimitMilliseconds = second});
    return end == Waiting::End::Limit;
}

bool FtpServer::Prepare() {
    if (limits.Pauses) Display().ShowStatus("Setup fast FTP");
    if (!Pause()) return false;
    ftp.Cancel();
    if (!Pause()) return false;
    ftp.Disconnect();
    if (!Pause()) return false;
    ftp.SetRemoteHost({});
    ftp.SetRemoteHost(Access().Server);
    ftp.SetUserName(Access().User);
    ftp.SetPassword(Access().Password);
    ftp.SetTimeOut(limits.TimeOut);
    Display().ShowStatus("Connecting...");
    return Pause();
}

ServerAnswer FtpServer::DoOpen() {
    if (!Prepare()) return {ServerFault::Cancelled, {}};
    const ServerAnswer answer = LogIn();
    return answer.Fine() ? ChangeDirectory() : answer;
}

ServerAnswer FtpServer::LogIn() {
    ftpError = false;
    waits.WaitLogin = true;
    reply.clear();
    Timer patience(Wait().OwnClock(), limits.SilentLogin * 1000);
    connect(&patience, &Timer::Tick, this, [this] { ftp.Disconnect(); });
    patience.SetEnabled(true);
    if (!ftp.Connect()) return LoginFault();
    (void)Await([this] { return !waits.WaitLogin; }, limits.Login,
                [this] { return !ftp.IsConnected(); });
    return {};
}

ServerAnswer FtpServer::LoginFault() const {
    if (const ServerAnswer fault = ftp.Fault(); !fault.Fine()) return fault;
    using Reached = Winsock::ConnectEnd;
    switch (ftp.ConnectResult()) {
        case Reached::HostNotFound:
            return {ServerFault::HostNotFound, {}};
        case Reached::Refused:
            return {ServerFault::Refused, {}};
        case Reached::Unreachable:
            return {ServerFault::Unreachable, {}};
        case Reached::None:
            return {ServerFault::NoAnswer, {}};
        case Reached::Established:
            break;
    }
    const bool refused = IsRefusal(ftp.ReplyCode());
    if (!refused)
        return {ftp.Greeted() ? ServerFault::NoAnswer : ServerFault::NotThisWay, LastReply()};
    if (!ftp.Greeted()) return {ServerFault::ServerRefused, LastReply()};
    if (SpeaksOfEncryption(reply)) return {ServerFault::EncryptionNeeded, LastReply()};
    const bool login = ftp.ReplyCode() == loginRefused;
    return {login ? ServerFault::LoginRefused : ServerFault::ServerRefused, LastReply()};
}

ServerAnswer FtpServer::ChangeDirectory() {
    const QString& folder = Access().Folder;
    const QString line = "cwd " + (folder.isEmpty() ? QString(".") : folder);
    Display().ShowStatus("Change Dir");
    ftpError = false;
    waits.WaitLogin = true;
    CommandSent(line);
    QString response;
    const bool answered = ftp.Execute(line, response);
    if (!Pause()) return {ServerFault::Cancelled, {}};
    Wait().Until([this] { return !waits.WaitCwd; },
                 {.Hopeless = [this] { return !Online() || ftpError || !ftp.IsConnected(); }});
    return Pause() ? InFolder(answered) : ServerAnswer{ServerFault::Cancelled, {}};
}

// Nothing may land in another folder: whatever refuses this one ends the login.
ServerAnswer FtpServer::InFolder(bool answered) const {
    if (!answered || !ftp.IsConnected()) return Lost();
    const int code = ftp.ReplyCode();
    if (!IsRefusal(code)) return {};
    const bool missing = IsOneOf(noSuchFolder, code);
    return {missing ? ServerFault::FolderMissing : ServerFault::FolderRefused, LastReply()};
}

bool FtpServer::AwaitReply(const bool& waitFlag, int seconds) {
    const auto hopeless = [this] {
        return ftpError || !ftp.IsConnected() || IsRefusal(ftp.ReplyCode());
    };
    const auto fault = Await([&waitFlag] { return !waitFlag; }, seconds, hopeless);
    if (fault == ServerFault::NoAnswer) ftp.CountOpenReply();
    // Without the awaited reply nobody knows what the server holds, whatever ended the wait.
    return !waitFlag && !ftpError;
}

ServerAnswer FtpServer::DoSend(const QString& localPath, const QString& name) {
    ftpError = false;
    stranger.clear();
    waits.WaitSend = true;
    if (ftp.PutFile({}, name, localPath, false) && AwaitReply(waits.WaitSend, limits.Send))
        return {};
    return SendFault();
}

ServerAnswer FtpServer::SendFault() const {
    const int code = ftp.ReplyCode();
    const QString said = LastReply();
    if (const ServerAnswer fault = ftp.Fault(); !fault.Fine()) return fault;
    if (!ftp.IsConnected()) return {ServerFault::ConnectionLost, said};
    if (!stranger.isEmpty()) return {ServerFault::DataFromElsewhere, stranger};
    if (IsOneOf(noRoom, code)) return {ServerFault::NoRoom, said};
    const bool storing = command == "STOR";
    // A server that cannot come back to this computer refuses the address, or keeps silent until
    // the time is up.
    const bool blocked = IsOneOf(noDataConnection, code) ||
                         (IsRefusal(code) ? command == "PORT" || command == "EPRT" : storing);
    if (blocked) return {ServerFault::DataBlocked, said};
    if (!IsRefusal(code)) return {ServerFault::NoAnswer, said};
    return {storing ? ServerFault::MayNotStore : ServerFault::ServerRefused, said};
}

ServerAnswer FtpServer::DoRename(const QString& from, const QString& to) {
    ftpError = false;
    waits.WaitRenameFrom = true;
    waits.WaitRenameTo = true;
    if (!ftp.Rename({}, from, to)) return RenameFault();
    const bool renamed = AwaitReply(waits.WaitRenameFrom, limits.Rename) &&
                         AwaitReply(waits.WaitRenameTo, limits.Rename);
    return renamed ? ServerAnswer() : RenameFault();
}

ServerAnswer FtpServer::RenameFault() const {
    const int code = ftp.ReplyCode();
    if (!IsRefusal(code) || !ftp.IsConnected()) return Lost();
    const bool first = waits.WaitRenameFrom;
    if (first && code == notThere) return {ServerFault::FileMissing, LastReply()};
    const bool replacing = !first && IsOneOf(noReplacing, code);
    return {replacing ? ServerFault::ReplaceRefused : ServerFault::RenameRefused, LastReply()};
}

ServerAnswer FtpServer::DoDelete(const QString& name) {
    ftpError = false;
    waits.WaitDelete = true;
    if (ftp.KillFile({}, name) && AwaitReply(waits.WaitDelete, limits.Delete)) return {};
    const int code = ftp.ReplyCode();
    if (!IsRefusal(code)) return Lost();
    return {code == notThere ? ServerFault::FileMissing : ServerFault::DeleteRefused, LastReply()};
}

// SIZE and MDTM (RFC 3659) tell of files alone, and most servers know at least one of them.
ServerAnswer FtpServer::DoLook(const QString& name, QByteArray& beginning) {
    constexpr qint64 mostBytes = 64 * 1024;  // what is larger is no page of the program
    (void)ftp.Ask("TYPE I");
    int code = ftp.Ask("SIZE " + name);
    const bool small = LastReply().section(u' ', 1).toLongLong() <= mostBytes;
    // Some refuse SIZE for a file that is there.
    if (code == notThere || IsOneOf(notKnown, code)) {
        const int changed = ftp.Ask("MDTM " + name);
        if (code != notThere || !IsOneOf(notKnown, changed)) code = changed;
    }
    if (code == notThere) return {ServerFault::FileMissing, LastReply()};
    if (code != aboutFile)
        return IsRefusal(code) ? ServerAnswer{ServerFault::ServerRefused, LastReply()} : Lost();
    if (small) beginning = Read(name);
    return {};
}

// Empty where it cannot be read.
QByteArray FtpServer::Read(const QString& name) {
    QTemporaryFile scratch;
    if (!scratch.open()) return {};
    scratch.close();
    QString here;
    ftpError = false;
    waits.WaitSend = true;  // for the reply at the end of a transfer, whichever way it goes
    const bool fetched = ftp.GetFile(here, name, scratch.fileName(), false);
    if (!fetched || !AwaitReply(waits.WaitSend, limits.Send)) return {};
    return scratch.open() ? scratch.read(LookedAtBytes) : QByteArray();
}

ServerAnswer FtpServer::Lost() const {
    return {ftp.IsConnected() ? ServerFault::NoAnswer : ServerFault::ConnectionLost, {}};
}

// Many servers let only the owner read a new file, and no visitor sees it then. The command is no
// standard one.
std::optional<bool> FtpServer::ChangeMode(const QString& name, const QString& mode) {
    const int code = ftp.Ask(QString("SITE CHMOD %1 %2").arg(mode, name));
    const bool lineLost = code / 100 == 4 || (code == 0 && modeChanges);
    if (lineLost) return std::nullopt;
    modeChanges = code / 100 == 2;
    return modeChanges;
}

// RFC 2389 and 4217.
bool FtpServer::OffersEncryption() {
    if (Access().Way != Protocol::Ftp) return false;
    const bool told = ftp.Ask("FEAT") / 100 == 2;
    return told && reply.contains("AUTH TLS", Qt::CaseInsensitive);
}

void FtpServer::Close() {
    ftp.Cancel();
    ftp.Disconnect();
}

void FtpServer::DoCancel() {
    Close();
}
