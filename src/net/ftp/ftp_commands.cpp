#include "net/ftp/ftp_commands.h"

#include "net/ftp/ftp_text.h"
#include "net/ftp/last_error_store.h"

#include <algorithm>

namespace {
constexpr int generalError = 500;
constexpr qint64 askMilliseconds = 15'000;
constexpr qint64 lastWordMilliseconds = 5000;

QString NotPossible(const QString& operation, const QString& reason) {
    return QStringLiteral("Die Operation \"%1\" konnte nicht ausgeführt werden, %2.")
        .arg(operation, reason);
}

// Both announce a transfer (RFC 959, 4.2): 125 comes from servers that have opened the data
// connection before they answer.
constexpr int alreadyOpen = 125;
constexpr int aboutToOpen = 150;

bool Meets(int replyCode, int expected) {
    return replyCode == expected || (replyCode == alreadyOpen && expected == aboutToOpen);
}

QString NoConnection(const QString& operation) {
    return NotPossible(operation, QStringLiteral("keine aktive Verbindung vorhanden"));
}
}  // namespace

FtpCommands::FtpCommands(Waiting& ownWaiting, StatusDisplay& display,
                         const FtpProperties& ownProperties, QObject* parent)
    : QObject(parent),
      Control(ownWaiting.OwnClock()),
      TimeOut(ownWaiting.OwnClock(), display),
      waiting(ownWaiting),
      properties(ownProperties) {}

bool FtpCommands::SendCommand(const QString& command, const QString& argument, int expected,
                              const std::function<bool()>& hopeless) {
    AwaitLastLine();
    TimeOut.Begin(properties.TimeOut);
    Control.ForgetReply();
    const QString line = command + u' ' + argument;
    emit CommandSentToServer(line);
    Control.SendLine(argument.isEmpty() ? command : line);
    const Waiting::End end = AwaitReply(hopeless);
    TimeOut.Stop();

    if (TimeOut.TimedOut()) {
        SetLastError(
            generalError,
            QStringLiteral("Zeitlimit beim Ausführen von \"%1\" überschritten").arg(command));
        return false;
    }
    if (end == Waiting::End::Hopeless) {
        SetLastError(generalError, NoConnection(command));
        if (Control.Stands()) Control.Close();
    }
    if (end != Waiting::End::Done) return false;
    // Another reply may have come behind it.
    const int code = Control.Lines.Codes.first();
    if (expected != AnyCode && !Meets(code, expected)) {
        SetLastError(code, QStringLiteral("Der Befehl \"%1\" ist fehlgeschlagen.").arg(command));
        return false;
    }
    return true;
}

int FtpCommands::Ask(const QString& line) {
    AwaitLastLine();
    if (!Control.Stands() || HasControlCharacters(line)) return 0;
    Control.ForgetReply();
    emit CommandSentToServer(line);
    Control.SendLine(line);
    // A reply that only announces another is none yet.
    const auto replied = [this] { return Control.ReplyCode() >= 200; };
    const Waiting::End end = waiting.Until(
        replied,
        {.LimitMilliseconds = askMilliseconds, .Hopeless = [this] { return Control.Gone(); }});
    if (end != Waiting::End::Done) Control.CountOpenReply();
    if (replied()) return Control.ReplyCode();
    if (end == Waiting::End::Limit) Control.Close();
    return 0;
}

Waiting::End FtpCommands::AwaitReply(const std::function<bool()>& hopeless) {
    const auto replied = [this] { return Control.ReplyCode() != 0; };
    const Waiting::End end = Wait(replied, hopeless);
    if (replied() || end == Waiting::End::Closing) return end;
    Control.CountOpenReply();
    if (!replied()) return end;
    TimeOut.ClearTimedOut();
    return Waiting::End::Done;
}

void FtpCommands::AwaitLastWord() {
    waiting.Until(
        [this] { return Control.ReplyCode() >= 200; },
        {.LimitMilliseconds = lastWordMilliseconds, .Hopeless = [this] { return Control.Gone(); }});
}

void FtpCommands::AwaitLastLine() {
    if (!Control.Lines.Unfinished()) return;
    TimeOut.Begin(properties.TimeOut);
    Wait([this] { return !Control.Lines.Unfinished(); });
    TimeOut.Stop();
    TimeOut.ClearTimedOut();
    Control.CountOpenReply();
}

bool FtpCommands::CheckConnected(const QString& operation) {
    if (Control.Connected) return true;
    SetLastError(generalError, NoConnection(operation));
    return false;
}

bool FtpCommands::CheckTexts(const QString& operation, const QStringList& texts) {
    if (std::none_of(texts.begin(), texts.end(), HasControlCharacters)) return true;
    SetLastError(generalError,
                 NotPossible(operation, QStringLiteral("Steuerzeichen sind nicht erlaubt")));
    return false;
}

void FtpCommands::ClearLastError() {
    LastErrorStore::Write(0, {});
}

void FtpCommands::SetLastError(int code, const QString& text) {
    LastErrorStore::Write(code, text);
    emit Error();
}

Waiting::End FtpCommands::Wait(const std::function<bool()>& done,
                               const std::function<bool()>& hopeless) {
    return waiting.Until([&] { return done() || TimeOut.TimedOut(); },
                         {.Hopeless = [&] { return Control.Gone() || (hopeless && hopeless()); }});
}
