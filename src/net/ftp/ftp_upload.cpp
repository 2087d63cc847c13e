#include "net/ftp/ftp_upload.h"

#include <limits>

FtpUpload::FtpUpload(FtpCommands& ownCommands, FtpDataElements& ownElements, QObject* parent)
    : QObject(parent), commands(ownCommands), elements(ownElements) {
    connect(&elements, &FtpDataElements::SendComplete, this, &FtpUpload::SendNext);
}

bool FtpUpload::PutFile(const QString& folder, const QString& name, const QString& localPath,
                        bool ascii) {
    commands.TimeOut.ResetElapsed();
    elements.Cancelled = false;
    if (!commands.CheckConnected(QStringLiteral("PUT")) || !OpenLocal(localPath)) return false;
    bool sent = false;
    if (Prepare(folder, ascii)) {
        // A refusal shows in the waits that follow.
        commands.SendCommand(QStringLiteral("STOR"), name, 150,
                             [this] { return elements.Failed(); });
        sent = Transfer();
        commands.TimeOut.Stop();
        elements.Unload();
        if (!sent) elements.AwaitReason();
    }
    localFile.close();
    return sent;
}

bool FtpUpload::OpenLocal(const QString& path) {
    localFile.close();
    localFile.setFileName(path);
    const bool opened = localFile.open(QIODevice::ReadOnly) && !localFile.isSequential();
    if (opened && localFile.size() <= std::numeric_limits<qint32>::max()) return true;
    localFile.close();
    commands.SetLastError(
        500, QStringLiteral("Die Datei \"%1\" konnte nicht gelesen werden.").arg(path));
    return false;
}

bool FtpUpload::Prepare(const QString& folder, bool ascii) {
    if (!folder.isEmpty() && !commands.SendCommand(QStringLiteral("CWD"), folder, 250))
        return false;
    const QString type = ascii ? QStringLiteral("TYPE A") : QStringLiteral("TYPE I");
    if (!commands.SendCommand(type, {}, 200)) return false;
    totalBytes = static_cast<qint32>(localFile.size());
    plan = BlockPlan::For(totalBytes);
    position = 1;
    blockNumber = 1;
    finalPartSent = sendDone = readFault = false;
    elements.Load(FtpDataElements::Role::Sender, totalBytes);
    return elements.Announce();
}

bool FtpUpload::Transfer() {
    if (!AwaitConnection()) return false;
    ++blockNumber;
    if (!SendBlock(plan.BlockSize)) return false;
    emit SendProgress(plan.BlockSize, totalBytes);

    commands.TimeOut.ResetElapsed();
    commands.TimeOut.Continue();
    const auto done = [this] {
        return sendDone || elements.Cancelled || readFault || plan.BlockSize < 1;
    };
    const Waiting::End end = commands.Wait(done, [this] { return Hopeless(); });
    const bool failed = elements.Cancelled || readFault || commands.TimeOut.TimedOut();
    return end == Waiting::End::Done && !failed;
}

bool FtpUpload::AwaitConnection() {
    commands.TimeOut.ResetElapsed();
    commands.TimeOut.Continue();
    const auto connected = [this] {
        return elements.State() == Winsock::StateConnected || elements.Cancelled;
    };
    commands.Wait(connected, [this] { return Hopeless(); });
    return elements.State() == Winsock::StateConnected && !commands.TimeOut.TimedOut();
}

void FtpUpload::SendNext(FtpDataElements::Role role, qint32 size) {
    if (role != FtpDataElements::Role::Sender || readFault) return;
    if (blockNumber <= plan.FullBlocks) {
        ++blockNumber;
        finalPartSent = false;
        if (SendBlock(plan.BlockSize)) emit SendProgress(position, totalBytes);
    } else if (size != plan.BlockSize && !finalPartSent) {
        finalPartSent = true;
        if (SendBlock(plan.Remainder)) emit SendProgress(totalBytes, totalBytes);
    } else {
        elements.Close();
        sendDone = true;
    }
}

// Sends the next `bytes` of the file; the position moves on by a whole block. A file that has
// become shorter meanwhile ends the transfer.
bool FtpUpload::SendBlock(qint32 bytes) {
    const QByteArray block = localFile.read(bytes);
    readFault = block.size() < bytes;
    position += plan.BlockSize;
    if (!readFault) elements.Send(block);
    return !readFault;
}

bool FtpUpload::Hopeless() const {
    return elements.Gone() || commands.Control.Refused();
}
