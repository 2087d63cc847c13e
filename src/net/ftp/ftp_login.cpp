#include "net/ftp/ftp_login.h"

#include <algorithm>

namespace {

constexpr int commandOkay = 200;
constexpr int serviceReady = 220;
constexpr int loginAccepted = 230;
constexpr int authAccepted = 234;
constexpr int goingAway = 421;
constexpr int notEncrypted = 500;
constexpr int loginRefused = 530;
constexpr int nameAccepted = 331;

bool FailConnect(FtpCommands& commands) {
    commands.TimeOut.Stop();
    commands.SetLastError(1510,
                          QStringLiteral("Verbindungsanfrage hat das Zeitlimit überschritten"));
    commands.Control.Close();
    return false;
}

bool FailEncryption(FtpCommands& commands, const ServerAnswer& fault) {
    commands.TimeOut.Stop();
    commands.Fault = fault;
    commands.SetLastError(
        notEncrypted,
        QStringLiteral("Die Verbindung konnte nicht verschlüsselt werden: ") + fault.Reply);
    commands.Control.Close();
    return false;
}

bool Comes(FtpCommands& commands, const bool& flag) {
    const Waiting::End end = commands.Wait([&flag] { return flag; });
    return end == Waiting::End::Done && !commands.TimeOut.TimedOut();
}

bool ReachServer(FtpCommands& commands, const FtpProperties& properties) {
    FtpControlConnection& control = commands.Control;
    commands.TimeOut.ResetElapsed();
    commands.TimeOut.Begin(properties.TimeOut);
    control.Open(properties);
    if (Comes(commands, control.Connected) && Comes(commands, control.WelcomeReceived)) return true;
    ServerAnswer fault = control.TlsAnswer();
    if (fault.Fine()) return FailConnect(commands);
    // Who shows no certificate does not speak TLS, or not at once.
    if (control.ForOneMore().SamePeer.isNull()) fault.Is = ServerFault::NotThisWay;
    return FailEncryption(commands, fault);
}

// A command without which nothing may be sent has failed.
bool FailWithout(FtpCommands& commands) {
    FtpControlConnection& control = commands.Control;
    if (control.Refused() && control.ReplyCode() != goingAway)
        commands.Fault = {ServerFault::NoEncryption, control.ReplyText.trimmed()};
    control.Close();
    return false;
}

// What comes in the clear behind the reply would pass for something that was said encrypted.
bool StartEncryption(FtpCommands& commands, const FtpProperties& properties) {
    FtpControlConnection& control = commands.Control;
    if (!commands.SendCommand(QStringLiteral("AUTH"), QStringLiteral("TLS"), authAccepted))
        return FailWithout(commands);
    if (control.Lines.Codes.size() > 1 || control.Lines.Unfinished())
        return FailEncryption(commands, {ServerFault::EncryptionBroken, control.ReplyText});
    control.StartTls();
    commands.TimeOut.Begin(properties.TimeOut);
    if (!Comes(commands, control.Connected)) return FailEncryption(commands, control.TlsAnswer());
    commands.TimeOut.Stop();
    return true;
}

bool ProtectData(FtpCommands& commands) {
    return (commands.SendCommand(QStringLiteral("PBSZ"), QStringLiteral("0"), commandOkay) &&
            commands.SendCommand(QStringLiteral("PROT"), QStringLiteral("P"), commandOkay)) ||
           FailWithout(commands);
}

// Any text may have the digits 230 in it (a greeting, a user name): only a reply that can accept a
// login counts.
bool Accepted(const FtpControlConnection& control) {
    if (control.Lines.Codes.contains(loginAccepted)) return true;
    const int code = control.ReplyCode();
    return code / 100 == 2 && code != serviceReady &&
           control.ReplyText.contains(QStringLiteral("230"));
}

// The last code that refuses something; 0 when nothing was refused since the name was sent.
int Refusal(const FtpControlConnection& control, qsizetype from = 0) {
    const QList<int>& codes = control.Lines.Codes;
    const auto found = std::find_if(codes.rbegin(), codes.rend() - from, IsRefusal);
    return found == codes.rend() - from ? 0 : *found;
}

Waiting::End SendPassword(FtpCommands& commands, const QString& password) {
    FtpControlConnection& control = commands.Control;
    const qsizetype before = control.Lines.Codes.size();
    control.SendLine(QStringLiteral("PASS ") + password);
    const auto done = [&control] {
        return Accepted(control) || control.ReplyCode() == loginRefused;
    };
    // Nothing accepts the login any more once the server has answered with a failure.
    const auto refused = [&control, before] { return Refusal(control, before) != 0; };
    for (;;) {
        const auto begun = [&] { return done() || control.Lines.Unfinished(); };
        const Waiting::End end = commands.Wait(begun, refused);
        if (end != Waiting::End::Done || !control.Lines.Unfinished()) return end;
        commands.AwaitLastLine();
    }
}

}  // namespace

bool LogIn(FtpCommands& commands, const FtpProperties& properties) {
    FtpControlConnection& control = commands.Control;
    commands.ClearLastError();
    commands.Fault = {};
    if (!ReachServer(commands, properties)) return false;
    if (properties.Security == FtpSecurity::Explicit && !StartEncryption(commands, properties))
        return false;

    // A refused name is recorded, but the password may still settle the login.
    commands.SendCommand(QStringLiteral("USER"), properties.UserName, nameAccepted);
    const Waiting::End end = SendPassword(commands, properties.Password);
    if (Accepted(control)) {
        if (control.Encrypts && !ProtectData(commands)) return false;
        control.LoggedIn = control.Stands();
        return true;
    }
    commands.TimeOut.Stop();
    const int refusal = Refusal(control);
    if (end != Waiting::End::Done && refusal == 0) return FailConnect(commands);
    commands.SetLastError(refusal != 0 ? refusal : control.ReplyCode(),
                          control.ReplyText + u' ' + properties.UserName);
    control.Close();
    return false;
}
