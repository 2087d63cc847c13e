// Logging in: the part of the transaction that runs before there is a connection.

#include "base/clock.h"
#include "base/message_boxes.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "net/ftp.h"

namespace {

constexpr int ftpTimeOutSeconds = 30;
constexpr int loginSeconds = 30;
constexpr int noSuchFolder = 550;

const QString title = "Stillpost";

int SecondsSinceMidnight(const QTime& time) {
    return time.msecsSinceStartOfDay() / 1000;
}

}  // namespace

void UploadTransaction::Warn(const QString& german, const QString& english) {
    if (Flags.QuietErrors || waiting.Closing()) return;
    boxes.Show(title, state.LangGerman ? german : english);
}

bool UploadTransaction::ConnectFtp() {
    if (connecting || Flags.ConnectionDown) return false;
    Flags.ConnectionDown = true;
    connecting = true;
    emit ButtonsEnabled(false, false);

    const int startTime = SecondsSinceMidnight(waiting.OwnClock().Now().time());
    if (state.Values.Anwahl) connectivity.DialConfigured();
    historyCounter = 0;
    bool connected = false;
    if (connectivity.IstNetzVerbindung())
        ConnectOnline(connected);
    else
        AskWhenOffline();
    // A time of day never reaches this number: the server counts as slow only by its time-outs.
    if (startTime > 1'000'000) {
        Warn("Der angegebene FTP-Server ist extrem langsam oder temp. nicht ansprechbar!",
             "Your FTP-Server is to slow or temp. not avaiable!");
        display.ShowStatus("Offline");
        connected = false;
    }
    return FinishConnect(connected);
}

void UploadTransaction::ConnectOnline(bool& connected) {
    lines.Reset();
    display.ShowStatus("Setup fast FTP");
    if (!waiting.Seconds(1)) return;
    ftp.Cancel();
    if (!waiting.Seconds(1)) return;
    ftp.Disconnect();
    if (!waiting.Seconds(1)) return;
    ftp.SetRemoteHost({});
    ftp.SetRemoteHost(state.Values.Server);
    ftp.SetUserName(state.Values.User);
    ftp.SetPassword(state.Values.PW);
    ftp.SetTimeOut(ftpTimeOutSeconds);
    display.ShowStatus("Connecting...");
    if (!waiting.Seconds(1)) return;
    connected = LogIn() && ChangeDirectory();
}

bool UploadTransaction::LogIn() {
    Flags.FtpError = false;
    Flags.WaitLogin = true;
    if (!ftp.Connect()) {
        Warn(
            "Der angebebene Server existiert nicht oder der Username bzw. Passwort ist falsch!\n"
            "Eventuell wurde der Connect durch eine Firewall verhindert.",
            "The Server dont exists or Username or Password is wrong!\n"
            "Maybe the Connect was blocked by a Firewall!");
        return false;
    }
    const auto gone = [this] { return !ftp.IsConnected() || !connectivity.Online(); };
    waiting.Until([this] { return !Flags.WaitLogin; },
                  {.LimitMilliseconds = loginSeconds * 1000LL, .Hopeless = gone});
    return true;
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
    if (!waiting.Seconds(1)) return false;
    const auto gone = [this] {
        return !connectivity.Online() || Flags.FtpError || !ftp.IsConnected();
    };
    waiting.Until([this] { return !Flags.WaitCwd; }, {.Hopeless = gone});
    if (!waiting.Seconds(1)) return false;
    if (!answered || !ftp.IsConnected()) {
        Warn(response, response);
        display.ShowStatus("Offline");
        return false;
    }
    if (ftp.ReplyCode() != noSuchFolder) return true;
    Warn("Das Verzeichniss '" + directory + "' existiert nicht auf dem Server!",
         "The Path '" + directory + " 'dont exists on Server!");
    return false;
}

void UploadTransaction::AskWhenOffline() {
    if (Flags.QuietErrors || waiting.Closing()) return;
    const bool retry = boxes.AskRetry(
        title, state.LangGerman ? QString("Kein Verbindungsaufbau zum Internet moeglich!")
                                : QString("No Connection to Internet possible!"));
    if (retry) Flags.QuietErrors = true;
}

bool UploadTransaction::FinishConnect(bool connected) {
    connecting = false;
    if (waiting.Closing()) return false;
    if (!connected && !Flags.QuietErrors) {
        display.ShowStatus("Offline");  // nothing is under way any more
        emit Failed();                  // first, so that nothing counts as running
        emit ButtonsEnabled(true, false);
        return false;
    }
    // What is left of a failed connect must not pass for one that the next step could use.
    if (!connected) ftp.Disconnect();
    emit ButtonsEnabled(false, true);
    Flags.ConnectionDown = false;
    Flags.QuietErrors = true;
    return connected;
}
