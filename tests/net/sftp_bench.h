#pragma once

#include "base/waiting.h"
#include "net/sftp/sftp_server.h"
#include "support/file_bytes.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QTemporaryDir>

// An SFTP server's client with everything around it, and a folder for its files.
struct SftpBench {
    explicit SftpBench(const SshProgram& program) : Server({Wait, Display}, program) {
        const auto note = [this](const QString& line) { Said << line; };
        QObject::connect(&Server, &PictureServer::Sent, &Server, note);
        QObject::connect(&Server, &PictureServer::Received, &Server, note);
    }

    // Writes a local file of that content and returns its path.
    [[nodiscard]] QString Local(const QByteArray& content) const {
        const QString name = Folder.filePath(QStringLiteral("local"));
        if (!WriteBytes(name, content)) qFatal("no local file");
        return name;
    }

    // Opens with these, the program folder added.
    [[nodiscard]] ServerAnswer Open(ServerAccess access) {
        access.Way = Protocol::Sftp;
        access.ProgramFolder = Folder.path();
        Server.SetAccess(access);
        return Server.Open();
    }
    [[nodiscard]] ServerAnswer Send(const QByteArray& content, const QString& name) {
        return Server.SendFile(Local(content), name);
    }

    QTemporaryDir Folder;
    TestClock Time{TestClock::Patient};
    Waiting Wait{Time};
    RecordingDisplay Display;
    QStringList Said;  // by either side, as a log has it
    SftpServer Server;
};
