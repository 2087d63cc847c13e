#pragma once

#include "net/ftp/ftp_commands.h"

#include <vector>

// The data connections: one listening element for each transfer, stacked on one another. Normally
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

    // Loads an element that listens where the control connection comes from. Unless the properties
    // say otherwise, only the server's own address may connect (RFC 2577): who else is faster at
    // the port is closed, and the element goes on listening. size: bytes that will be sent or are
    // expected.
    void Load(Role role, qint32 size = 0);
    // Tells the server where to connect to, by PORT, or by EPRT where the control connection runs
    // over IPv6. False when it refuses.
    [[nodiscard]] bool Announce();
    // Closes and unloads the highest element, if there is one. After a Cancel there is none.
    void Unload();

    // Closes and unloads all elements and marks the transfer that runs on them as cancelled.
    void Cancel();

    // State of the highest element; closed when there is none.
    [[nodiscard]] Winsock::ElementState State() const;
    // The data connection cannot come any more, or has ended.
    [[nodiscard]] bool Gone() const;
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

    FtpCommands& commands;
    const FtpProperties& properties;
    std::vector<Winsock*> loaded;  // children of this object
};
