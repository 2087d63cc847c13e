#pragma once

#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "platform/capture_devices.h"
#include "platform/system_clock.h"

#include <QImage>
#include <QTcpServer>

#include <functional>

class QTcpSocket;

// The number in a test picture, read from its dots; -1 when there is none to be read.
[[nodiscard]] int ReadNumber(const QImage& picture);

// Whether the rows of the picture are those of the test picture of this number, but for what a
// lossy format changes (tolerance: mean difference of a row's bytes).
[[nodiscard]] bool IsWhole(const QImage& picture, int number, double tolerance);

// How a file stores what is seen otherwise.
struct Storage {
    int Orientation = 1;  // see Upright
    QSize Size = {};      // before it is turned; empty: with square pixels
};

// Test pictures 0 to count - 1 as a video file, from 720 rows on in the colour model of high
// definition. codec: name of an FFmpeg encoder; group: pictures from one key picture to the next;
// rate: pictures a second. False when FFmpeg has no such encoder or cannot write the file.
[[nodiscard]] bool WriteVideo(const QString& path, const char* codec, QSize size, int count,
                              int group = 5, int rate = 25, const Storage& storage = {});

// Test picture of this number as JPEG, which has the orientation in its EXIF data.
[[nodiscard]] QByteArray JpegPicture(QSize size, int number, int orientation = 1);

// The machine's time, which a test puts forward, as if a busy program had seen the seconds pass.
class JumpingClock : public SystemClock {
    Q_OBJECT

  public:
    [[nodiscard]] qint64 Milliseconds() const override {
        return SystemClock::Milliseconds() + offset;
    }
    void Jump(qint64 milliseconds) {
        for (; milliseconds > 0; milliseconds -= 1000) {
            offset += std::min<qint64>(milliseconds, 1000);
            FireDue();
        }
    }

    // The machine is suspended for so long, and wakes up.
    void Suspend(qint64 milliseconds) { offset += milliseconds; }

  private:
    qint64 offset = 0;
};

// Cameras that a test plugs in and pulls out; any of FFmpeg's inputs serves as one.
class PluggedDevices : public CaptureDevices {
    Q_OBJECT

  public:
    QList<CaptureDevice> Plugged;

    [[nodiscard]] QList<CaptureDevice> List() const override { return Plugged; }
    [[nodiscard]] QList<CaptureFormat> Formats(const CaptureDevice&) const override { return {}; }
};

// The capture control with what holds it up.
struct CaptureBench {
    JumpingClock Time;
    Waiting Wait{Time};
    PluggedDevices Devices;
    ezVidCap Control{Wait, Devices};

    // Selects this entry; there is another one behind it.
    void Select(const QString& entry);
    // The number in the next picture; -1 when none came, -2 when it is not whole.
    int Grab(double tolerance = 12);
};

// A web camera in this process: answers each request by a routine of the test.
class WebCamera : public QTcpServer {
    Q_OBJECT

  public:
    // request: how many came before.
    using Answer = std::function<void(QTcpSocket& socket, int request)>;

    explicit WebCamera(Answer answer);
    [[nodiscard]] QString Entry(const QString& path) const;
    [[nodiscard]] int Requests() const { return requests; }
    // The last request, from its first line to the empty one.
    [[nodiscard]] const QByteArray& Asked() const { return asked; }

    // Sends a whole answer and closes.
    static void Reply(QTcpSocket& socket, const QByteArray& status, const QByteArray& body);
    // Begins a stream of this type, or of pictures.
    static void BeginStream(QTcpSocket& socket, const QByteArray& type = {});
    // A picture as a part of a stream of pictures; nothing for none.
    [[nodiscard]] static QByteArray Part(const QByteArray& jpeg);

  private:
    int requests = 0;
    QByteArray asked;
};
