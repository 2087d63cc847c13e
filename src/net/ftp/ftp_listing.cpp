#include "net/ftp/ftp_listing.h"

#include "base/profile_file.h"
#include "net/ftp/listing.h"

#include <QDir>

#include <algorithm>

FtpListing::FtpListing(FtpCommands& ownCommands, FtpDataElements& ownElements, QObject* parent)
    : QObject(parent), commands(ownCommands), elements(ownElements) {
    connect(&elements, &FtpDataElements::DataArrival, this,
            [this](FtpDataElements::Role role, qint32, const QByteArray& chunk) {
                if (role == FtpDataElements::Role::Lister) localFile.write(chunk);
            });
}

bool FtpListing::OpenLocal(const QString& path) {
    localFile.close();
    localFile.setFileName(path);
    if (localFile.open(QIODevice::ReadWrite | QIODevice::Truncate)) return true;
    commands.SetLastError(
        500, QStringLiteral("Die Datei \"%1\" konnte nicht geschrieben werden.").arg(path));
    return false;
}

bool FtpListing::DirListing(const QString& localPath) {
    commands.TimeOut.ResetElapsed();
    commands.SendCommand(QStringLiteral("TYPE"), QStringLiteral("A"), 200);
    if (!OpenLocal(localPath)) return false;
    elements.Cancelled = false;
    elements.Load(FtpDataElements::Role::Lister);
    if (!elements.Announce()) return false;

    SendList();
    const auto ended = [this] {
        return elements.State() == Winsock::StatePeerClosing || elements.Cancelled;
    };
    const Waiting::End end =
        commands.Wait(ended, [this] { return elements.Gone() || commands.Control.Refused(); });
    localFile.close();
    elements.Unload();
    return end == Waiting::End::Done && !elements.Cancelled;
}

qint32 FtpListing::QueryRemoteSize(const QString& name) {
    commands.SendCommand(QStringLiteral("TYPE"), QStringLiteral("I"), 200);
    FtpControlConnection& control = commands.Control;
    control.ReplyText.clear();
    control.SendLine(QStringLiteral("SIZE ") + name);
    const Waiting::End end = commands.Wait([&control] { return !control.ReplyText.isEmpty(); });
    commands.AwaitLastLine();
    if (end != Waiting::End::Done || control.ReplyText.startsWith(QStringLiteral("550"))) return 0;
    if (control.ReplyText.startsWith(QStringLiteral("213")))
        return std::max(0, ValLong(control.ReplyText.mid(3)));
    return SizeByListing(name);
}

qint32 FtpListing::SizeByListing(const QString& name) {
    commands.SendCommand(QStringLiteral("TYPE"), QStringLiteral("A"), 200);
    if (!OpenLocal(QDir(programFolder).filePath(QStringLiteral("dirxca.dat")))) return 0;
    elements.Cancelled = false;
    elements.Load(FtpDataElements::Role::Lister);
    const bool fetched = elements.Announce() && FetchListing();
    elements.Unload();
    localFile.seek(0);
    const qint32 size = fetched ? SizeInListing(localFile.readAll(), name) : 0;
    localFile.close();
    localFile.remove();
    return size;
}

void FtpListing::SendList() {
    commands.SendCommand(QStringLiteral("LIST"), {}, 150, [this] { return elements.Failed(); });
}

bool FtpListing::FetchListing() {
    SendList();
    // Some servers answer first and connect then.
    commands.TimeOut.Continue();
    const auto connected = [this] { return !elements.Pending(); };
    const auto refused = [this] { return commands.Control.Refused(); };
    const Waiting::End end = commands.Wait(connected, refused);
    commands.TimeOut.Stop();
    if (end != Waiting::End::Done || commands.TimeOut.TimedOut()) return false;
    const auto ended = [this] { return elements.State() != Winsock::StateConnected; };
    if (commands.Wait(ended, refused) != Waiting::End::Done || elements.Cancelled) return false;
    AwaitEndOfTransfer();
    return true;
}

// The server's last word on the listing must not be taken for the reply to the next command.
void FtpListing::AwaitEndOfTransfer() {
    commands.TimeOut.ResetElapsed();
    commands.TimeOut.Continue();
    const auto last = [this] {
        const QList<int>& codes = commands.Control.Lines.Codes;
        return std::any_of(codes.begin(), codes.end(), [](int code) { return code >= 200; });
    };
    commands.Wait(last);
    commands.TimeOut.Stop();
    commands.Control.CountOpenReply();
}

qint32 FtpListing::GetRemoteFileSize(const QString& folder, const QString& name) {
    if (!folder.isEmpty()) commands.SendCommand(QStringLiteral("CWD"), folder, 250);
    const qint32 size = QueryRemoteSize(name);
    if (!folder.isEmpty()) commands.SendCommand(QStringLiteral("CDUP"), folder, 250);
    return size;
}
