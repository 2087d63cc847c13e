#pragma once

#include "net/ftp/ftp_commands.h"

#include <optional>
#include <vector>

// The data connections: one element for each transfer, stacked on one another, that listens, or in
// passive mode connects. Normally
// there is at most one; an element that a failed transfer left behind stays below the next ones
// until Cancel takes it away. Bytes are received on the first element only.
class FtpDataElements : public QObject {
    Q_OBJECT

  public:
    enum class Role { Receiver, Sender, Lister };

    FtpDataElements(FtpCommands& commands, const FtpProperties& properties,
                    QObject* parent = nullptr);

    // The number of the highest element loaded; 0 when there is none.
    [[nodiscard]] int DataIndex() const { return static_cast<int>(loaded.size()); }

    // Loads an element that, unless the mode is passive, listens where the control connection comes
    // from. Unless the properties say otherwise, only the server's own address may connect
    // (RFC 2577): who else is faster at the port is closed, and the element goes on listening.
    // size: bytes that will be sent or are expected.
    void Load(Role role, qint32 size = 0);
    // Tells the server where to connect to, by PORT, or by EPRT where the control connection runs
    // over IPv6; in passive mode asks it for a port, by EPSV or PASV, and begins to connect there.
    // False when it refuses.
    [[nodiscard]] bool Announce();
    // Closes and unloads the highest element, if there is one. After a Cancel there is none. A
    // connection that has not come about is told of as the client's fault.
    void Unload();
    // Waits for the reason that the server gives when a connection that was asked of it, or was to
    // be encrypted, has failed. After Unload: some servers first wait for its end.
    void AwaitReason();

    // Closes and unloads all elements and marks the transfer that runs on them as cancelled.
    void Cancel();

    // State of the highest element; closed when there is none.
    [[nodiscard]] Winsock::ElementState State() const;
    // The data connection may still come.
    [[nodiscard]] bool Pending() const;
    // It cannot come any more, or has ended.
    [[nodiscard]] bool Gone() const { return !Pending() && State() != Winsock::StateConnected; }
    // It could not be opened, so that no answer of the server is worth a wait.
    [[nodiscard]] bool Failed() const;
    // Sends bytes on the highest element.
    void Send(const QByteArray& bytes);
    // Closes the highest element but leaves it loaded.
    void Close();

    bool Cancelled = false;

  signals:
    // An element of that role has sent everything; size as in Load.
    void SendComplete(FtpDataElements::Role role, qint32 size);
    void StrangerRefused(const QString& address);
    void DataArrival(FtpDataElements::Role role, qint32 size, const QByteArray& chunk);

  private:
    void Take(Winsock& element);
    [[nodiscard]] bool TellPort();
    [[nodiscard]] bool AskForPort();
    [[nodiscard]] std::optional<quint16> PassivePort();
    [[nodiscard]] bool Reached() const;
    void OnReply(int code);
    void FindFault();

    FtpCommands& commands;
    const FtpProperties& properties;
    std::vector<Winsock*> loaded;  // children of this object
    bool passive = false;          // the transfer that runs
    bool reached = false;          // its connection has been there
};
