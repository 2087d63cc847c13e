#pragma once

#include "net/web/http_server.h"
#include "net/web/s3_server.h"
#include "support/recording_display.h"
#include "support/scripted_web_server.h"
#include "support/test_clock.h"

#include "base/waiting.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

// The way to a server in this process.
inline ServerAccess To(const ScriptedWebServer& server, Protocol way = Protocol::Http) {
    const QString scheme = way == Protocol::Https ? QString("https") : QString("http");
    return {.Way = way,
            .Server = QString("%1://127.0.0.1:%2/dav").arg(scheme).arg(server.serverPort()),
            .User = "cam",
            .Password = "secret",
            .Folder = "my cam",
            .Region = "eu-1",
            .Bucket = "bucket",
            .CacheSeconds = 60};
}

// A web server or storage with everything around it.
struct WebBench {
    explicit WebBench(const ServerAccess& access, int quiet = 3) : Time(quiet) {
        Seconds.SetEnabled(true);
        if (access.Way == Protocol::S3)
            Server = std::make_unique<S3Server>(PictureServer::Surroundings{Wait, Log});
        else
            Server = std::make_unique<HttpServer>(PictureServer::Surroundings{Wait, Log});
        Server->SetAccess(access);
        QObject::connect(Server.get(), &PictureServer::Sent,
                         [this](const QString& text) { Talk << text; });
        QObject::connect(Server.get(), &PictureServer::Received,
                         [this](const QString& text) { Talk << text; });
        QObject::connect(Server.get(), &PictureServer::Remarked,
                         [this](ServerRemark remark) { Remarks << remark; });
    }

    TestClock Time;
    Timer Seconds{Time, 1000};  // the time does not outrun the servers
    Waiting Wait{Time};
    RecordingDisplay Log;
    std::unique_ptr<PictureServer> Server;
    QStringList Talk;
    QList<ServerRemark> Remarks;
    QTemporaryDir Folder;

    // A local file.
    [[nodiscard]] QString Local(const QByteArray& content) const {
        QFile file(Folder.filePath("1pw.jpg"));
        if (file.open(QIODevice::WriteOnly)) file.write(content);
        return file.fileName();
    }
    // One picture with history, as far as nothing goes wrong.
    [[nodiscard]] ServerAnswer Publish(const QByteArray& content) {
        ServerAnswer answer = Server->IsOpen() ? ServerAnswer() : Server->Open();
        const bool whole = Server->SendsWhole();
        if (answer.Fine())
            answer =
                Server->SendFile(Local(content), whole ? QString("pw.jpg") : QString("1pw.jpg"));
        if (answer.Fine() && !whole) answer = Server->RenameFile("1pw.jpg", "pw.jpg");
        if (answer.Fine()) answer = Server->KeepFile("pw.jpg", "pw1.jpg");
        if (answer.Fine()) answer = Server->DeleteFile("pw1.jpg");
        return answer;
    }
};
