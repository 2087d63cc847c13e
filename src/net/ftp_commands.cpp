#include "net/ftp_commands.h"

#include "net/ftp_text.h"
#include "net/last_error_store.h"

#include <algorithm>

namespace {
constexpr int generalError = 500;
constexpr qint64 askMilliseconds = 15'000;

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
      TimeOut(ownWaiting.OwnClock(), display),
      waiting(ownWaiting),
      properties(ownProperties) {}

bool FtpCommands::SendCommand(const QString& command, const QString& argument, int expected) {
    TimeOut.Begin(properties.TimeOut);
    Control.ForgetReply();
    const QString line = command + u' ' + argument;
    emit CommandSentToServer(line);
    Control.SendLine(argument.isEmpty() ? command : line);
    const Waiting::End end = Wait([this] { return Control.ReplyCode != 0; });
    TimeOut.Stop();

    if (TimeOut.TimedOut()) {
        SetLastError(
            generalError,
            QStringLiteral("Zeitlimit beim Ausführen von \"%1\" überschritten").arg(command));
        return false;
    }
    if (end == Waiting::End::Hopeless) SetLastError(generalError, NoConnection(command));
    if (end != Waiting::End::Done) return false;
    if (expected != AnyCode && !Meets(Control.ReplyCode, expected)) {
        SetLastError(Control.ReplyCode,
                     QStringLiteral("Der Befehl \"%1\" ist fehlgeschlagen.").arg(command));
        return false;
    }
    return true;
}

int FtpCommands::Ask(const QString& line) {
    if (!Control.Stands() || HasControlCharacters(line)) return 0;
    Control.ForgetReply();
    emit CommandSentToServer(line);
    Control.SendLine(line);
    int code = 0;
    // A reply of several lines is waited for to its end, as one that only announces another.
    const auto replied = [this, &code] {
        code = Control.Lines.Codes.isEmpty() ? 0 : Control.Lines.Codes.last();
        return code >= 200 && !Control.Lines.Unfinished();
    };
    const Waiting::End end = waiting.Until(
        replied,
        {.LimitMilliseconds = askMilliseconds, .Hopeless = [this] { return Control.Gone(); }});
    if (end == Waiting::End::Limit) Control.Close();
    return end == Waiting::End::Done ? code : 0;
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
