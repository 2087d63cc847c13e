#pragma once

#include "net/ftp/block_plan.h"
#include "net/ftp/ftp_data_elements.h"

#include <QFile>

// Sends a local file to the server, block by block: each block follows when the system has taken
// the one before it.
class FtpUpload : public QObject {
    Q_OBJECT

  public:
    FtpUpload(FtpCommands& commands, FtpDataElements& elements, QObject* parent = nullptr);

    // Sends the file localPath under `name` into the remote folder (empty: the current one), in
    // text mode when ascii. True when all of it was handed to the connection; the server's own
    // word on the transfer (226) comes after that. A local file that cannot be read is refused,
    // with a last error, before the server's file is touched. When the server refuses PORT, the
    // data element stays loaded until Cancel.
    [[nodiscard]] bool PutFile(const QString& folder, const QString& name, const QString& localPath,
                               bool ascii);

  signals:
    // bytes; after a whole block other than the first `sent` is one too many, as it is the
    // position of the next byte.
    void SendProgress(qint32 sent, qint32 total);

  private:
    bool OpenLocal(const QString& path);
    bool Prepare(const QString& folder, bool ascii);
    bool Transfer();
    bool AwaitConnection();
    void SendNext(FtpDataElements::Role role, qint32 size);
    bool SendBlock(qint32 bytes);
    [[nodiscard]] bool Hopeless() const;

    FtpCommands& commands;
    FtpDataElements& elements;
    QFile localFile;
    BlockPlan plan;
    qint32 totalBytes = 0;
    qint32 position = 1;  // of the next block in the local file, counted from 1
    qint32 blockNumber = 1;
    bool finalPartSent = false;
    bool sendDone = false;
    bool readFault = false;
};
