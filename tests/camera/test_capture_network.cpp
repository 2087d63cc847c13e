// The capture control and cameras on the network, played by a server in this process.

#include "camera/test_capture_aids.h"
#include "camera/web_question.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace {

constexpr QSize size(320, 180);

// Sends pictures, or pieces of a stream of this type, on its own, at about a hundred a second,
// until the line is closed.
class Stream : public QObject {
  public:
    Stream(QTcpSocket& line, const std::function<QByteArray(int)>& picture,
           const QByteArray& type = {})
        : QObject(&line) {
        WebCamera::BeginStream(line, type);
        connect(&pace, &QTimer::timeout, this, [this, &line, picture, type] {
            const QByteArray piece = picture(Sent++);
            if (line.isOpen()) line.write(type.isEmpty() ? WebCamera::Part(piece) : piece);
        });
        pace.start(10);
    }
    int Sent = 0;

  private:
    QTimer pace;
};

}  // namespace

class CaptureNetworkTest : public QObject {
    Q_OBJECT

  private slots:
    void StillIsFetchedForEachGrab() {
        const WebCamera server([](QTcpSocket& socket, int request) {
            const QSize now = request < 2 ? size : QSize(161, 91);
            QByteArray jpeg = JpegPicture(now, request);
            // The last one was taken on its side.
            const QByteArray exif = "ffe1002245786966000049492a00080000000100120103000100000006";
            if (request == 4) jpeg.insert(2, QByteArray::fromHex(exif) + QByteArray(7, '\0'));
            WebCamera::Reply(socket, "200 OK", jpeg);
        });
        CaptureBench bench;
        bench.Select(server.Entry("still.jpg"));
        for (int i = 0; i < 4; ++i) QCOMPARE(bench.Grab(), i);
        QCOMPARE(server.Requests(), 4);
        QCOMPARE(bench.Control.Width(), 161);
        QVERIFY(bench.Control.GrabFrame());
        QCOMPARE(bench.Control.Width(), 91);
    }

    void StillArrivesHowever_data() {
        const Rows<QByteArray, int> row;  // the answer's head, requests for three pictures
        row("without a length", "200 OK\r\n\r\n", 3);
        row("in pieces with lengths", "200 OK\r\nTransfer-Encoding: chunked\r\n\r\n", 3);
        row("as another type", "200 OK\r\nContent-Type: text/html\r\n\r\n", 3);
        row("elsewhere", "302 Found\r\nContent-Length: 0\r\nLocation: /there\r\n\r\n", 6);
        const QByteArray asks = "401 No\r\nContent-Length: 0\r\nConnection: close\r\n";
        row("for a password", asks + "WWW-Authenticate: Basic realm=\"a\"\r\n\r\n", 5);
        row("for a digest",
            asks + "WWW-Authenticate: Digest realm=\"a\", nonce=\"b\", qop=\"auth\"\r\n\r\n", 5);
        row("unchanged", "200 OK\r\nETag: \"a\"\r\nLast-Modified: today\r\n\r\n", 3);
    }
    void StillArrivesHowever() {
        const auto [head, requests] = Row<QByteArray, int>();
        QByteArray first;
        const QByteArray jpeg = JpegPicture(size, 3);
        const WebCamera server([&, &head = head](QTcpSocket& socket, int) {
            const QByteArray& asked = server.Asked();
            if (first.isEmpty()) first = asked.left(asked.indexOf('\r'));
            const QByteArray login = " bWU6cC8j";  // me:p/#
            const bool digest = asked.contains("username=\"me\", realm=\"a\", nonce=\"b\", uri=\"");
            const bool in = asked.contains("Basic" + login) || digest;
            const bool there = asked.startsWith("GET /there ");
            const bool known = asked.contains("If-None-Match: \"a\"\r\nIf-Modified-Since: today");
            QByteArray answer = head;
            if (head.contains("chunked"))
                answer += QByteArray::number(jpeg.size(), 16) + "\r\n" + jpeg + "\r\n0\r\n\r\n";
            else if (known)
                answer = "304 Not Modified\r\n\r\n";
            else if (in || there)
                answer = "200 OK\r\n\r\n" + jpeg;
            else if (head.startsWith("200"))
                answer += jpeg;
            socket.write("HTTP/1.1 " + answer);
            socket.disconnectFromHost();
        });
        CaptureBench bench;
        bench.Select(server.Entry("a%20d%2F.jpg?b=%20d").replace("//", "//me:p%2F%23@"));
        for (int i = 0; i < 2; ++i) QCOMPARE(bench.Grab(), 3);
        QCOMPARE(first, "GET /a%20d%2F.jpg?b=%20d HTTP/1.1");
        // Nobody wants anything for a while: the camera is opened anew then.
        bench.Time.Jump(20'000);
        QCOMPARE(bench.Grab(), 3);
        QCOMPARE(server.Requests(), requests);
    }

    void AnswerEnds_data() {
        const Rows<int, int, WebAnswer::Kind, CaptureFault>
            row;  // whole pictures that come, milliseconds that it may take, what of it
        using Kind = WebAnswer::Kind;
        row("when it takes too long", 0, 0, Kind::Failed, CaptureFault::NoAnswer);
        row("when nothing more comes", 1, 30'000, Kind::Picture, CaptureFault::None);
        row("where the next picture begins", 2, 30'000, Kind::Picture, CaptureFault::None);
    }
    // The server tells no length, and keeps the line.
    void AnswerEnds() {
        const auto [count, limit, kind, fault] = Row<int, int, WebAnswer::Kind, CaptureFault>();
        const QByteArray jpeg = JpegPicture(size, 1);
        const WebCamera server([&, count = count](QTcpSocket& socket, int) {
            if (count > 0) socket.write("HTTP/1.1 200 OK\r\n\r\n" + jpeg.repeated(count));
        });
        const std::atomic<bool> stop = false;
        std::atomic<quint64> arrivals = 0;
        using std::chrono::milliseconds;
        const WebTerms terms{.Limit = milliseconds(limit), .Quiet = milliseconds(0)};
        WebQuestion question(server.Entry("").mid(4), stop, arrivals, terms);
        const WebAnswer answer = question.Ask({});
        QCOMPARE(answer.Is, kind);
        QCOMPARE(answer.Fault, fault);
        QCOMPARE(answer.Picture.Bytes, count > 0 ? jpeg : QByteArray());
    }

    void LateStillIsTheNextPicture_data() {
        const Rows<int, int, int> row;  // seconds to the answer, to the next grab, requests
        row("soon", 1, 4, 1);
        row("while nobody waits", 20, 10, 1);
        row("too old", 1, 30, 2);
    }
    void LateStillIsTheNextPicture() {
        const auto [wait, pause, requests] = Row<int, int, int>();
        CaptureBench bench;
        QPointer<QTcpSocket> line;
        const WebCamera server([&](QTcpSocket& socket, int request) {
            line = &socket;
            if (request == 0)
                bench.Time.Jump(5000);
            else
                WebCamera::Reply(socket, "200 OK", JpegPicture(size, request));
        });
        bench.Select(server.Entry("still.jpg"));
        QCOMPARE(bench.Grab(), -1);
        QCOMPARE(bench.Control.Fault(), QString("Camera 'web' does not answer"));
        bench.Time.Jump(wait * 1000);
        WebCamera::Reply(*line, "200 OK", JpegPicture(size, 0));
        QTRY_COMPARE(bench.Control.Width(), size.width());
        bench.Time.Jump(pause * 1000);
        QCOMPARE(bench.Grab(), requests - 1);
        QCOMPARE(server.Requests(), requests);
    }

    void WrongAnswersAreNamed_data() {
        const Rows<QByteArray, QByteArray, QString> row;
        const QByteArray jpeg = JpegPicture(size, 1);
        row("password", "401 Unauthorized", {}, "asks for another name and password");
        row("forbidden", "403 Forbidden", {}, "refuses access");
        row("missing", "404 Not Found", "no", "has no picture at its address");
        row("server fault", "503 Busy", {}, "cannot be reached");
        row("page", "200 OK", "<html>Log in</html>", "sends nothing that is a picture");
        row("half a picture", "200 OK", jpeg.left(jpeg.size() / 2),
            "sends nothing that is a picture");
    }
    void WrongAnswersAreNamed() {
        const auto [status, body, end] = Row<QByteArray, QByteArray, QString>();
        bool good = false;
        const WebCamera server([&](QTcpSocket& socket, int) {
            if (good)
                WebCamera::Reply(socket, "200 OK", JpegPicture(size, 9));
            else
                WebCamera::Reply(socket, status, body);
        });
        CaptureBench bench;
        bench.Select(server.Entry("still.jpg"));
        QCOMPARE(bench.Grab(), -1);
        QCOMPARE(bench.Control.Fault(), "Camera 'web' " + end);
        good = true;
        QCOMPARE(bench.Grab(), 9);
        QCOMPARE(bench.Control.Fault(), QString());
    }

    void StreamGivesTheNewestPicture() {
        QPointer<Stream> stream;
        const WebCamera server([&](QTcpSocket& socket, int) {
            stream = new Stream(socket, [](int number) { return JpegPicture(size, number); });
        });
        CaptureBench bench;
        bench.Select(server.Entry("video.mjpg"));
        int last = -1;
        for (int i = 0; i < 5; ++i) {
            // Pictures that nobody wants go by meanwhile.
            const int goal = last + 20;
            QVERIFY(i == 0 || QTest::qWaitFor([&] { return stream && stream->Sent > goal; }));
            const int number = bench.Grab();
            // Not the next of a queue; on a busy machine a few are still on their way.
            QVERIFY2(number > (i == 0 ? -1 : goal - 10), qPrintable(QString::number(number)));
            last = number;
        }
        QCOMPARE(server.Requests(), 2);  // the first found out that it is a stream
    }

    // Every second picture is cut, or a part has nothing in it.
    void StreamHidesCutPictures() {
        const WebCamera server([](QTcpSocket& socket, int) {
            new Stream(socket, [](int number) {
                const QByteArray jpeg = JpegPicture(size, number);
                if (number % 4 == 1) return jpeg.left(jpeg.size() * 3 / 4);
                if (number % 4 == 3) return jpeg.left(jpeg.size() - 4) + QByteArray(200, '\0');
                return jpeg;
            });
        });
        CaptureBench bench;
        bench.Select(server.Entry("video.mjpg"));
        for (int i = 0; i < 12; ++i) {
            const int number = bench.Grab();
            QVERIFY2(number >= 0 && number % 2 == 0, qPrintable(QString::number(number)));
        }
    }

    void EveryOrientationStandsUpright() {
        int orientation = 0;
        const WebCamera server([&](QTcpSocket& socket, int) {
            new Stream(socket, [&](int) { return JpegPicture(size, orientation, orientation); });
        });
        CaptureBench bench;
        bench.Select(server.Entry("video.mjpg"));
        while (++orientation <= 8) QTRY_COMPARE(bench.Grab(), orientation);
    }

    void StreamThatEndedIsOpenedAgain() {
        QPointer<QTcpSocket> line;
        const WebCamera server([&](QTcpSocket& socket, int request) {
            line = &socket;
            new Stream(socket, [request](int) { return JpegPicture(size, request); });
        });
        CaptureBench bench;
        bench.Select(server.Entry("video.mjpg"));
        const QSignalSpy faults(&bench.Control, &ezVidCap::FaultChanged);
        QCOMPARE(bench.Grab(), 1);
        line->abort();
        // The line broke while nobody wanted a picture: nothing to complain of. The end may be
        // noticed only by the grab, which then fails.
        QTRY_COMPARE(bench.Grab(), 2);
        QVERIFY(faults.count() <= 2);
        QCOMPARE(bench.Control.Fault(), QString());
    }

    void SilentStreamEndsTheGrab() {
        CaptureBench bench;
        bool silent = true;
        const WebCamera server([&](QTcpSocket& socket, int) {
            new Stream(socket, [&](int number) {
                if (!silent) return JpegPicture(size, 7);
                // Its first picture, then nothing more.
                if (number == 20) bench.Time.Jump(16'000);
                return number == 0 ? JpegPicture(size, 6) : QByteArray();
            });
        });
        bench.Select(server.Entry("video.mjpg"));
        // FFmpeg hands the first part on when the second begins, so that it may never come.
        int number = bench.Grab();
        if (number == 6) number = bench.Grab();
        QCOMPARE(number, -1);
        QCOMPARE(bench.Control.Fault(), QStringLiteral("Camera 'web' delivers no picture"));
        silent = false;
        QCOMPARE(bench.Grab(), 7);
        QCOMPARE(server.Requests(), 3);
    }

    void PictureOfASlowStreamIsDelivered_data() {
        const Rows<int, int>
            row;  // milliseconds before the picture in the grab, and before the next
        row("that comes during the grab", 0, 0);
        row("that came too late for a grab", 9000, 0);
        row("that came a while before", 30'000, 3000);
    }
    void PictureOfASlowStreamIsDelivered() {
        const auto [wait, pause] = Row<int, int>();
        QPointer<QTcpSocket> line;
        const WebCamera server([&](QTcpSocket& socket, int) {
            line = &socket;
            WebCamera::BeginStream(socket);
            socket.write(WebCamera::Part(JpegPicture(size, 0)));
        });
        CaptureBench bench;
        bench.Control.SetPatience(60);
        bench.Select(server.Entry("video.mjpg"));
        QCOMPARE(bench.Grab(), 0);
        for (int number = 1; number < 4; ++number) {
            const QSize next(size.width() + number, size.height());
            QTimer::singleShot(0, &bench.Control, [&, number, wait = wait] {
                bench.Time.Jump(wait);
                line->write(WebCamera::Part(JpegPicture(next, number)));
            });
            if (wait > 0) QCOMPARE(bench.Grab(), -1);
            if (wait > 0) QTRY_COMPARE(bench.Control.Width(), next.width());
            bench.Time.Jump(pause);
            if (pause > 0) QTimer::singleShot(0, &bench.Control, [&] { bench.Time.Jump(5000); });
            QCOMPARE(bench.Grab(), number);
        }
        QCOMPARE(server.Requests(), 2);
    }

    void DistantKeyPictureIsWaitedFor_data() {
        const Rows<int> row;  // where the stream begins, pictures behind a key picture
        row("from a key picture on", 0);
        row("from between two", 8);
    }
    // Five pictures a second, and a key picture every six seconds.
    void DistantKeyPictureIsWaitedFor() {
        const int first = std::get<0>(Row<int>());
        constexpr int group = 30;
        constexpr int count = 5 * group;
        const QTemporaryDir folder;
        const QString path = folder.filePath("video.ts");
        if (!WriteVideo(path, "libx264", size, count, group, 5)) QSKIP("no such encoder here");
        const QByteArray bytes = ReadBytes(path);
        CaptureBench bench;
        QPointer<Stream> stream;
        const WebCamera server([&](QTcpSocket& socket, int) {
            const auto piece = [&, first](int number) {
                // The grab's time is up before the key picture comes.
                if (first > 0 && number == 15) bench.Time.Jump(5000);
                const qsizetype at = (first + number) * bytes.size() / count;
                return bytes.mid(at, (first + number + 1) * bytes.size() / count - at);
            };
            stream = new Stream(socket, piece, "video/mp2t");
        });
        bench.Select(server.Entry("video.ts"));
        if (first > 0) {
            QCOMPARE(bench.Grab(14), -1);
            QCOMPARE(bench.Control.Fault(),
                     QString("Camera 'web' sends, but no whole picture yet"));
        }
        const int number = bench.Grab(14);
        QCOMPARE(number, first > 0 ? group : 0);
        // Twenty-five pictures more have come behind the next key picture: that one will do.
        QTRY_VERIFY(stream->Sent + first > number + group + 25);
        QCOMPARE(bench.Grab(14), number + group);
        QCOMPARE(server.Requests(), 2);
    }

    // The server takes the request and never answers.
    void ClosingNeverHangs() {
        QElapsedTimer time;
        std::function<void()> requested;
        const WebCamera server([&](QTcpSocket&, int) { requested(); });
        {
            CaptureBench bench;
            requested = [&] { bench.Time.Jump(5000); };
            bench.Select(server.Entry("video.mjpg"));
            QVERIFY(!bench.Control.GrabFrame());
            const QString reason = bench.Control.Reason();
            QVERIFY2(reason.startsWith("Camera 'web' does not answer since "), qPrintable(reason));
            QTimer::singleShot(0, &bench.Wait, &Waiting::Close);
            QVERIFY(!bench.Control.GrabFrame());
            QCOMPARE(server.Requests(), 1);
            time.start();
        }
        QVERIFY2(time.elapsed() < 500, qPrintable(QString::number(time.elapsed())));
    }
};

QTEST_MAIN(CaptureNetworkTest)
#include "test_capture_network.moc"
