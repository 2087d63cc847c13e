#pragma once

#include "net/certificates.h"
#include "net/ftp/ftp.h"
#include "support/file_bytes.h"
#include "support/recording_display.h"
#include "support/scripted_ftp_server.h"
#include "support/test_clock.h"

#include <QSettings>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QTest>

// An FTP client with everything around it, and a folder for its files and its last error.
struct FtpBench {
    // quiet: see TestClock.
    explicit FtpBench(quint16 port, int quiet = 3) : Clock(quiet) {
        QObject::connect(&Client, &FTP::Replied, &Client, [this](int code) { Codes << code; });
        QObject::connect(&Client, &FTP::CommandSentToServer, &Client, [this] { Codes.clear(); });
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, Folder.path());
        Client.SetRemoteHost(QStringLiteral("127.0.0.1"));
        Client.SetRemotePort(port);
        Client.SetUserName(QStringLiteral("cam"));
        Client.SetPassword(QStringLiteral("secret"));
        Client.SetProgramFolder(Folder.path());
    }

    // Encrypts, and takes that certificate of the server.
    void Trust(const char* pem) {
        Client.SetSecurity(FtpSecurity::Explicit);
        Client.SetTrusted(Certificates::Fingerprint(QSslCertificate(pem)));
    }

    // Writes a local file of that content and returns its path.
    QString Local(const QByteArray& content) const {
        const QString name = Folder.filePath(QStringLiteral("local"));
        if (!WriteBytes(name, content)) qFatal("no local file");
        return name;
    }

    // What GetFile and DirListing write to, and its content.
    [[nodiscard]] QString Fetched() const { return Folder.filePath(QStringLiteral("fetched")); }
    [[nodiscard]] QByteArray FetchedBytes() const {
        QFile file(Fetched());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    bool Get(const QString& name) {
        QString folder;
        return Client.GetFile(folder, name, Fetched(), false);
    }

    // Waits for a reply since the last command announced, such as the server's last word on a
    // transfer; in this process for about five real seconds.
    bool AwaitReply(int code) {
        return Clock.RunUntil([this, code] { return Codes.contains(code); }, Patience);
    }

    // Sends the file and waits for the server's last word on it; 0 when it is not sent.
    int Put(const QByteArray& content) {
        if (!Client.PutFile({}, QStringLiteral("a"), Local(content), false)) return 0;
        const auto said = [this] { return Client.ReplyCode() >= 200 || !Client.IsConnected(); };
        return Clock.RunUntil(said, Patience) ? Client.ReplyCode() : 0;
    }

    QTemporaryDir Folder;
    TestClock Clock;
    static constexpr qint64 Patience = 1700;
    QList<int> Codes;  // of the replies since the last command announced
    Waiting Waits{Clock};
    RecordingDisplay Display;
    FTP Client{Waits, Display};
    QSignalSpy Errors{&Client, &FTP::Error};
    QSignalSpy Sent{&Client, &FTP::CommandSentToServer};
};

// The client with a server in this process.
struct ScriptedFtpBench : FtpBench {
    ScriptedFtpBench() : FtpBench(0) { Client.SetRemotePort(Server.Port()); }
    ScriptedFtpServer Server{Clock};
};

// Bytes that no transfer in text mode or of a wrong block would leave alone.
inline QByteArray Content(qsizetype size) {
    QByteArray bytes(size, '\0');
    quint32 state = 12345;
    for (char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}
