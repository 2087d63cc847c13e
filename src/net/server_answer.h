#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

// How a step on a server ended.
struct ServerAnswer {
    Q_GADGET

  public:
    // What the operator can do about each is a sentence of its own, under its name
    // (net/publishing/answer_texts.h).
    enum class Fault {
        None,
        Cancelled,
        TooSlow,  // a trial that was not done within a minute
        HostNotFound,
        Refused,           // nobody listens at that port
        Unreachable,       // the network does not lead there
        NoAnswer,          // a firewall, or a server that takes too long
        UnknownProtocol,   // the settings name none that there is; Reply: the word
        NotThisWay,        // whoever listens there speaks another protocol
        ServerRefused,     // it greets with a refusal, or refuses what every server can do
        EncryptionNeeded,  // no login without encryption
        LoginRefused,
        FolderMissing,
        FolderRefused,      // it may be there, but nobody is let into it now
        DataBlocked,        // no data connection from the server back to this computer (active FTP)
        PassiveBlocked,     // none from this computer to the server (passive FTP)
        DataFromElsewhere,  // it came from another address than the server's
        MayNotStore,
        NoRoom,
        RenameRefused,
        ReplaceRefused,  // renamed, but not over a file that is there
        DeleteRefused,
        FileMissing,  // what was to be renamed or deleted is not there
        ConnectionLost,
        LocalFolderMissing,
        LocalNotWritable,
        NoLocalFile,  // the file to be sent cannot be read
        // Encryption
        NoEncryption,          // the server offers none
        EncryptionBroken,      // it began and failed
        CertificateUnknown,    // nobody vouches for it; Reply: its fingerprint, SHA-256
        CertificateExpired,    // or not valid yet
        CertificateWrongName,  // it is another server's
        CertificateChanged,    // another one than was accepted; Reply: its fingerprint
        SessionNotResumed,     // the server wants the data connection to go on with the TLS session
        // SFTP
        NoSsh,           // OpenSSH is not installed
        SshFailed,       // it ends without having reached the server; Reply: its words
        HostKeyUnknown,  // Reply: its fingerprint
        HostKeyChanged,  // Reply: its fingerprint
        HostKeyNotKept,  // Reply: the file of this computer that cannot be written
        KeyNotUsable,    // the key file is missing, is no key, or others may read it
        KeyNeedsPassphrase,
        // HTTP and object storage
        Forbidden,       // 403
        PutNotAllowed,   // 405, 501: the server takes no pictures at this address
        TooLarge,        // 413
        Locked,          // 423
        NoCopies,        // the server cannot keep earlier pictures: it knows neither COPY nor MOVE
        RedirectedAway,  // to another host; Reply: its address
        BucketMissing,
        WrongRegion,       // Reply: the right one, as far as the server says
        ClockWrong,        // the clocks of server and computer differ too much
        SignatureRefused,  // the secret key is not the one of this access key
    };
    Q_ENUM(Fault)

    // What the operator should know of a server though the pictures go on; a sentence in the same
    // way (RemarkText).
    enum class Remark {
        NoRename,         // pictures go straight to their name
        DeletesFirst,     // it does not rename over a file
        DeletesNothing,   // what the history has no room for any more stays
        StrangerRefused,  // somebody else wanted the data connection: the address
    };
    Q_ENUM(Remark)

    Fault Is = Fault::None;
    QString Reply = {};  // the server's own words on it; may be empty

    [[nodiscard]] bool Fine() const { return Is == Fault::None; }
    bool operator==(const ServerAnswer&) const = default;
};

using ServerFault = ServerAnswer::Fault;
using ServerRemark = ServerAnswer::Remark;

// How a server ends a deletion that it does not do for anybody, or not for us.
[[nodiscard]] bool RefusesToDelete(ServerFault fault);

[[nodiscard]] QString NameOf(ServerFault fault);
[[nodiscard]] QString NameOf(ServerRemark remark);

Q_DECLARE_METATYPE(ServerAnswer)
