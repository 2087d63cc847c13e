#pragma once

#include "net/ftp/ftp_data_elements.h"
#include "net/ftp/ftp_listing.h"

// Fetches a remote file. Its size is asked first: the transfer is complete when that many bytes
// have come.
class FtpDownload : public QObject {
    Q_OBJECT

  public:
    FtpDownload(FtpCommands& commands, FtpDataElements& elements, FtpListing& listing,
                QObject* parent = nullptr);

    // Fetches `name` from the remote folder (empty: the current one) to localPath, replacing it,
    // in text mode when ascii. Slashes in `folder` become backslashes for the caller, too. There
    // is no time limit; a refusal or a lost connection ends the wait. An empty remote file counts
    // as missing, and the size is looked up before the folder is changed. The server's own word
    // on the transfer (226) comes after the return.
    [[nodiscard]] bool GetFile(QString& folder, const QString& name, const QString& localPath,
                               bool ascii);

  signals:
    void ReceiveProgress(qint32 received, qint32 expected);  // bytes

  private:
    bool OpenLocal(const QString& path);
    bool Transfer(const QString& name);
    void Receive(FtpDataElements::Role role, qint32 expected, const QByteArray& chunk);

    FtpCommands& commands;
    FtpDataElements& elements;
    FtpListing& listing;
    QFile localFile;
    qint32 receivedBytes = 0;
    bool receiveDone = false;
    bool writeFault = false;
};
