#pragma once

#include "net/ftp/ftp_commands.h"
#include "net/ftp/ftp_download.h"
#include "net/ftp/ftp_listing.h"
#include "net/ftp/ftp_upload.h"

// The FTP client: active or passive mode over IPv4 and IPv6, in the clear or encrypted, one
// operation at a time. Each
// operation waits through the event loop until it is done and returns whether it succeeded; the
// reason of a failure is stored as last error (for the user, across runs) and announced by Error.
// The host must not start an operation, nor delete the client, from a handler of its signals. Texts
// with control characters are refused before anything is sent.
class FTP : public QObject {
    Q_OBJECT

  public:
    FTP(Waiting& waiting, StatusDisplay& display, QObject* parent = nullptr);
    ~FTP() override;

    // Where the scratch file of a size lookup is written.
    void SetProgramFolder(const QString& folder) { listing.SetProgramFolder(folder); }

    [[nodiscard]] bool Connect();  // see LogIn
    bool Disconnect();             // says QUIT and closes; always true

    [[nodiscard]] QString RemoteHost() const { return properties.RemoteHost; }
    void SetRemoteHost(const QString& host);
    [[nodiscard]] qint32 RemotePort() const { return properties.RemotePort; }
    void SetRemotePort(qint32 port);
    [[nodiscard]] QString UserName() const { return properties.UserName; }
    void SetUserName(const QString& name);
    [[nodiscard]] QString Password() const { return properties.Password; }
    void SetPassword(const QString& password);
    // Whether others than the server's own address may take a data connection, and with it the
    // picture: for servers behind several addresses.
    [[nodiscard]] bool DataFromAnywhere() const { return properties.DataFromAnywhere; }
    void SetDataFromAnywhere(bool anywhere);
    // Whether both kinds of connections are encrypted, and whom to trust: see Certificates::Judge.
    // Takes effect with the next Connect. A connection is never less than what was set.
    [[nodiscard]] FtpSecurity Security() const { return properties.Security; }
    void SetSecurity(FtpSecurity security);
    void SetTrusted(const QString& fingerprint);
    // Whether the client opens the data connections (EPSV, or PASV where the server does not know
    // that), and not the server: for a computer that nobody can reach.
    [[nodiscard]] bool Passive() const { return properties.Passive; }
    void SetPassive(bool passive);
    // Where the connections that the client opens get their sockets from; see Winsock.
    void SetSockets(const Winsock::SocketMaker& maker) { properties.Sockets = maker; }
    // Seconds: the limit on the waits of one operation.
    [[nodiscard]] qint16 TimeOut() const { return properties.TimeOut; }
    void SetTimeOut(qint16 seconds);
    // These two are the host's own; see GetLastErrorCode.
    [[nodiscard]] qint32 LastErrorCode() const { return properties.LastErrorCode; }
    void SetLastErrorCode(qint32 code);
    [[nodiscard]] QString LastErrorDesc() const { return properties.LastErrorDesc; }
    void SetLastErrorDesc(const QString& text);

    // The last error recorded, as text; empty when there never was one.
    [[nodiscard]] QString GetLastErrorCode() const;
    [[nodiscard]] QString GetLastErrorString() const;

    // See FtpDownload, FtpUpload and FtpListing.
    [[nodiscard]] bool GetFile(QString& folder, const QString& name, const QString& localPath,
                               bool ascii);
    [[nodiscard]] bool PutFile(const QString& folder, const QString& name, const QString& localPath,
                               bool ascii);
    [[nodiscard]] bool DirListing(const QString& localPath);
    [[nodiscard]] qint32 GetRemoteFileSize(const QString& folder, const QString& name);

    // Deletes a remote file. A folder that cannot be changed to does not stop it.
    [[nodiscard]] bool KillFile(const QString& folder, const QString& name);
    // Renames a remote file in the folder (empty: the current one).
    [[nodiscard]] bool Rename(const QString& folder, const QString& oldName,
                              const QString& newName);

    // Sends a raw command line; `response` is the server's whole reply, or a text starting with 500
    // when there was none. True when a reply came, whatever it says. Records no last error. Without
    // a connection element, within the time left of the operation before.
    [[nodiscard]] bool Execute(const QString& commandLine, QString& response);

    // Sends a command beside the ones that publish a picture, and returns the code of the reply, 0
    // when none came: nothing is refused by it, no last error is recorded. It has a limit of its
    // own. A server that has not answered by then is disconnected, because its late answer would
    // pass for the reply to the next command; the next picture logs in again.
    [[nodiscard]] int Ask(const QString& commandLine) { return commands.Ask(commandLine); }

    // Ends a running transfer: closes all data connections. Works from any handler.
    void Cancel();

    // The code of the last whole reply to the last command, however the network cut or joined what
    // the server sent; 0 before the first one.
    [[nodiscard]] int ReplyCode() const { return commands.Control.ReplyCode(); }
    // For a host that waits for a reply itself, such as the server's last word on a transfer: when
    // its time is up, a reply that has begun but not ended counts as what its code says.
    void CountOpenReply() { commands.Control.CountOpenReply(); }
    // How far the last Connect came: to the server, and to its greeting.
    [[nodiscard]] Winsock::ConnectEnd ConnectResult() const {
        return commands.Control.ConnectResult();
    }
    [[nodiscard]] bool Greeted() const { return commands.Control.WelcomeReceived; }
    // Whether the login still stands; false as soon as the server has closed the connection.
    [[nodiscard]] bool IsConnected() const { return commands.Control.LoggedIn; }

    // Why the last Connect or transfer failed, where that was the encryption or the way of the
    // data; a server may tell it after the transfer.
    [[nodiscard]] ServerAnswer Fault() const { return commands.Fault; }

  signals:
    void ReceiveProgress(qint32 received, qint32 expected);
    void SendProgress(qint32 sent, qint32 total);
    void ServerResponse(const QString& chunk);
    void Replied(int code);  // for each reply in the chunks, when it has ended
    void CommandSentToServer(const QString& command);
    // Somebody at that address wanted the data connection and was turned away.
    void StrangerRefused(const QString& address);
    void Error();
    void PropertyChanged(const QString& name);

  private:
    // Every change is told under the property's name.
    template <class Value>
    void Change(Value FtpProperties::*property, const Value& value, const char* name) {
        properties.*property = value;
        emit PropertyChanged(QString::fromLatin1(name));
    }

    FtpProperties properties;
    FtpCommands commands;
    FtpDataElements elements;
    FtpUpload upload;
    FtpListing listing;
    FtpDownload download;
};
