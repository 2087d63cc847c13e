#pragma once

#include "camera/capture_fault.h"
#include "camera/capture_ffmpeg.h"
#include "camera/web_address.h"
#include "platform/capture_devices.h"

#include <QImage>
#include <QString>

#include <atomic>
#include <limits>
#include <memory>
#include <optional>

// What to open.
struct CaptureRequest {
    CaptureKind Kind = CaptureKind::Device;
    QString Address;                  // what is opened, or test:WIDTHxHEIGHT
    std::shared_ptr<WebAddress> Web;  // of a network camera
    // Of an installed camera.
    CaptureDevice Device;
    std::optional<CaptureFormat> Format;
    QList<CameraControlValue> Adjustments;
};

// How far a source has come: the time stamp of a video file's last picture, the number of the last
// test picture. Outlives the source, which goes on from there when it is opened again.
using CapturePosition = std::atomic<qint64>;
constexpr qint64 BeforeFirstPicture = std::numeric_limits<qint64>::min();

// Where pictures come from, once it is open. Lives on the capture thread; every routine may block
// until the stop flag that it was opened with is set, and a little longer.
class CaptureSource {
  public:
    enum class Step {
        Nothing,  // nothing has come
        Data,     // something has, which makes no new picture
        Picture,  // there is a newer picture than before
        Failed,   // nothing more will come; Fault() tells why
    };

    virtual ~CaptureSource() = default;

    // Whether pictures come by themselves and have to be taken off all the time, so that none is
    // old. Of other sources each picture is asked for.
    [[nodiscard]] virtual bool Live() const = 0;
    // Whether it is a camera of this machine: Advance returns at once when nothing has come, and
    // the first pictures are badly exposed.
    [[nodiscard]] virtual bool IsDevice() const { return false; }
    // Whether it counts by itself what arrives, and ends by itself when nothing does; of other
    // sources that are not live each question counts as an arrival.
    [[nodiscard]] virtual bool CountsArrivals() const { return false; }
    // Milliseconds from one picture to the next when a source that is not live is watched.
    [[nodiscard]] virtual int Pace() const { return 0; }

    [[nodiscard]] virtual Step Advance() = 0;
    // The picture that Advance reached, decoded only now where that is possible; null when it
    // turns out not to be whole. Valid until the next call of Advance. keyWillDo: of a stream whose
    // pictures are made from each other it may be the last that stands for itself, where that one
    // is a few seconds old at most and was not delivered before.
    [[nodiscard]] virtual const AVFrame* Picture(bool keyWillDo) = 0;
    // Gives that picture away where it needs no conversion: upright, with square pixels,
    // Format_BGR888. Picture is null from then on until the next call of Advance. A null image
    // where it has to be converted.
    [[nodiscard]] virtual QImage TakePicture() { return {}; }

    [[nodiscard]] CaptureFault Fault() const { return fault; }

  protected:
    Step Fail(CaptureFault why) {
        fault = why;
        return Step::Failed;
    }

  private:
    CaptureFault fault = CaptureFault::None;
};

// Opens what the request names. stop: set to make opening and reading end soon; arrivals: counted
// up while bytes come in. Both must outlive the source, as must position. Returns null and sets
// fault when it cannot be opened.
[[nodiscard]] std::unique_ptr<CaptureSource> OpenCaptureSource(const CaptureRequest& request,
                                                               CapturePosition& position,
                                                               const std::atomic<bool>& stop,
                                                               std::atomic<quint64>& arrivals,
                                                               CaptureFault& fault);
