#pragma once

#include <QString>

// The ways to a server, named as the settings name them.
enum class Protocol {
    Ftp,
    Ftps,   // AUTH TLS on the usual port (RFC 4217)
    Ftpsi,  // TLS from the first byte
    Sftp,
    Http,  // PUT, and MOVE where there is WebDAV
    Https,
    S3,  // object storage
    Unknown,
};

// By the value of the setting; Unknown for a word that names none.
[[nodiscard]] Protocol ProtocolOf(const QString& setting);
[[nodiscard]] QString SettingOf(Protocol way);
// Whether what is sent is encrypted whatever the server's address says.
[[nodiscard]] bool IsEncrypted(Protocol way);
[[nodiscard]] bool SpeaksFtp(Protocol way);

// Where the pictures go, and how to get in.
struct ServerAccess {
    Protocol Way = Protocol::Ftp;
    QString Server = {};  // a name or address; for http, https and s3 maybe "http://name:9000"
    int Port = 21;        // 0: the usual one of the way
    QString User = {};
    QString Password = {};
    QString Folder = {};       // on the server, empty for the one it starts in; local: a full path
    bool DeleteFirst = false;  // the old picture is deleted before the new one gets its name
    bool Local = false;        // a folder of this computer
    bool DataFromAnywhere = false;  // see FTP
    bool Passive = false;           // see FTP
    QString KeyFile = {};           // sftp: the private key; empty: the user's own keys and agent
    // What the operator has accepted though nobody vouches for it, SHA-256: of a certificate
    // hexadecimal; of an sftp server's host key as OpenSSH writes it ("SHA256:…").
    QString Trusted = {};
    QString Region = {};         // s3
    QString Bucket = {};         // s3
    int CacheSeconds = 0;        // https, s3: how long a visitor may show the picture unasked
    QString ProgramFolder = {};  // where the host keys of sftp servers are kept

    bool operator==(const ServerAccess&) const = default;
};
