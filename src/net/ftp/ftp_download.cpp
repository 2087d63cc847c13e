#include "net/ftp/ftp_download.h"

FtpDownload::FtpDownload(FtpCommands& ownCommands, FtpDataElements& ownElements,
                         FtpListing& ownListing, QObject* parent)
    : QObject(parent), commands(ownCommands), elements(ownElements), listing(ownListing) {
    connect(&elements, &FtpDataElements::DataArrival, this, &FtpDownload::Receive);
}

bool FtpDownload::GetFile(QString& folder, const QString& name, const QString& localPath,
                          bool ascii) {
    if (!commands.CheckConnected(QStringLiteral("GET"))) return false;
    commands.TimeOut.ResetElapsed();
    elements.Cancelled = false;
    const qint32 expectedBytes = listing.QueryRemoteSize(name);
    if (expectedBytes == 0) {
        commands.SetLastError(500, QStringLiteral("Die angegebene Datei existiert nicht."));
        return false;
    }
    if (!folder.isEmpty()) {
        folder.replace(u'/', u'\\');
        commands.SendCommand(QStringLiteral("CWD"), folder, 250);
    }
    const QString type = ascii ? QStringLiteral("TYPE A") : QStringLiteral("TYPE I");
    if (!commands.SendCommand(type, {}, 200)) return false;
    elements.Load(FtpDataElements::Role::Receiver, expectedBytes);
    if (!elements.Announce() || !OpenLocal(localPath)) {
        elements.Unload();
        return false;
    }
    return Transfer(name);
}

bool FtpDownload::OpenLocal(const QString& path) {
    receivedBytes = 0;
    receiveDone = writeFault = false;
    localFile.setFileName(path);
    if (localFile.open(QIODevice::WriteOnly)) return true;
    commands.SetLastError(
        500, QStringLiteral("Die Datei \"%1\" konnte nicht geschrieben werden.").arg(path));
    return false;
}

bool FtpDownload::Transfer(const QString& name) {
    commands.Control.SendLine(QStringLiteral("RETR ") + name);
    const auto done = [this] { return receiveDone || elements.Cancelled; };
    commands.Wait(done, [this] { return elements.Gone() || commands.Control.Refused(); });
    if (receiveDone) return !writeFault;
    elements.Unload();
    localFile.close();
    return false;
}

void FtpDownload::Receive(FtpDataElements::Role role, qint32 expected, const QByteArray& chunk) {
    if (role != FtpDataElements::Role::Receiver) return;
    receivedBytes += static_cast<qint32>(chunk.size());
    if (localFile.write(chunk) != chunk.size()) writeFault = true;
    emit ReceiveProgress(receivedBytes, expected);
    if (receivedBytes < expected || elements.Cancelled) return;
    elements.Unload();
    if (!localFile.flush()) writeFault = true;
    localFile.close();
    receiveDone = true;
}
