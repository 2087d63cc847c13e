#include "base/status_display.h"
#include "base/waiting.h"
#include "fuzzer.h"
#include "memory_socket.h"
#include "net/ftp/ftp_server.h"
#include "support/test_clock.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QTemporaryDir>

namespace {

// A file of three blocks, in a folder that nobody else has.
struct Picture {
    // There anew, after an input that has cut it.
    void Write() const {
        QFile file(Path);
        if (file.size() == Bytes.size()) return;
        MUST(file.open(QIODevice::WriteOnly) && file.write(Bytes) == Bytes.size());
    }
    QTemporaryDir Folder;
    QString Path = Folder.filePath("1pw.jpg");
    QByteArray Bytes = QByteArray(2 * 8196 + 100, 'p');
};

// Says a part of the input when it is connected to, and one to each command; the first part is what
// it sends as a listing. When there is no more, it hangs up.
class Server {
  public:
    Server(const QByteArray& script, QString ownPicture)
        : picture(std::move(ownPicture)),
          parts(Parts(script, 60)),
          listing(parts.takeFirst()),
          cuts(listing.startsWith("cut")) {
        while (!parts.isEmpty() && parts.last().isEmpty()) parts.removeLast();
    }

    QTcpSocket* NewSocket(QObject* parent) {
        if (!control) {
            control =
                new MemorySocket(parent, [this](const QByteArray& bytes) { HearCommand(bytes); });
            QObject::connect(control, &QTcpSocket::connected, control, [this] { Answer(); });
            return control;
        }
        Taken.clear();
        data = new MemorySocket(parent, [this](const QByteArray& bytes) {
            if (cuts) QFile::resize(picture, 8200);
            Taken += bytes;
        });
        return data;
    }

    QByteArray Taken;  // over the last data connection

  private:
    void HearCommand(const QByteArray& line) {
        MUST(line.endsWith("\r\n") && line.size() < 100);
        for (const char each : line.chopped(2)) MUST(each >= ' ');
        if (line.startsWith("LIST") && data) {
            const auto say = [this] {
                data->Hear(listing);
                if (data) data->Hang();
            };
            QMetaObject::invokeMethod(data, say, Qt::QueuedConnection);
        }
        QMetaObject::invokeMethod(
            control, [this] { Answer(); }, Qt::QueuedConnection);
    }

    void Answer() {
        if (parts.isEmpty()) return control->Hang();
        const auto say = [this](const QByteArray& piece) {
            const auto hear = [this, piece] { control->Hear(piece); };
            QMetaObject::invokeMethod(control, hear, Qt::QueuedConnection);
        };
        const QByteArray reply = parts.takeFirst() + "\r\n";
        // Each piece costs as much as the whole; some replies in pieces will do.
        if (qChecksum(reply) % 4 != 0) return say(reply);
        InPieces(reply, say);
    }

    QString picture;
    QByteArrayList parts;
    QByteArray listing;
    bool cuts;  // the picture becomes shorter while it is sent
    QPointer<MemorySocket> control;
    QPointer<MemorySocket> data;
};

}  // namespace

const Fuzzer ftpControl("ftp_control", [](const QByteArray& bytes) {
    static const Picture picture;
    picture.Write();
    Server server(bytes, picture.Path);
    TestClock clock(0);
    Waiting waiting(clock);
    StatusDisplay display;
    FTP ftp(waiting, display);
    ftp.SetSockets([&](QObject* parent) { return server.NewSocket(parent); });
    ftp.SetProgramFolder(picture.Folder.path());
    FtpServer pictures({waiting, display}, ftp, FtpLimits::OfTrial());
    pictures.SetAccess({.Server = "127.0.0.1",
                        .User = "user",
                        .Password = "secret",
                        .Folder = "web",
                        .Passive = true});
    const qint64 start = clock.Milliseconds();
    if (pictures.Open().Fine()) {
        MUST(ftp.GetRemoteFileSize({}, "pw.jpg") >= 0);
        // Half a picture never counts as sent.
        if (pictures.SendFile(picture.Path, "1pw.jpg").Fine()) MUST(server.Taken == picture.Bytes);
        static_cast<void>(pictures.RenameFile("1pw.jpg", "pw.jpg"));
        static_cast<void>(pictures.DeleteFile("pw2.jpg"));
        static_cast<void>(pictures.ChangeMode("pw.jpg", "644"));
        pictures.Close();
    }
    constexpr qint64 hour = 3'600'000;
    MUST(clock.Milliseconds() - start < hour);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
});
