#pragma once

#include "net/ftp/ftp_data_elements.h"

#include <QFile>

// Fetches directory listings, and finds the size of a remote file: by SIZE, or in a listing where
// the server does not know that command.
class FtpListing : public QObject {
    Q_OBJECT

  public:
    FtpListing(FtpCommands& commands, FtpDataElements& elements, QObject* parent = nullptr);

    // Where "dirxca.dat" lives while a size is looked up in a listing.
    void SetProgramFolder(const QString& folder) { programFolder = folder; }

    // Writes the listing of the current remote folder to localPath, replacing it. False when the
    // server refuses PORT (the data element stays loaded until Cancel) or LIST, a connection
    // breaks, or localPath cannot be written.
    [[nodiscard]] bool DirListing(const QString& localPath);

    // Size in bytes of the file in the current remote folder; 0 when unknown.
    [[nodiscard]] qint32 QueryRemoteSize(const QString& name);
    // The same in a folder (empty: the current one), climbing one level afterwards.
    [[nodiscard]] qint32 GetRemoteFileSize(const QString& folder, const QString& name);

  private:
    bool OpenLocal(const QString& path);
    qint32 SizeByListing(const QString& name);
    void SendList();
    bool FetchListing();
    void AwaitEndOfTransfer();

    FtpCommands& commands;
    FtpDataElements& elements;
    QString programFolder;
    QFile localFile;
};
