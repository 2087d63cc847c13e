#pragma once

#include "base/clock.h"
#include "camera/camera_list.h"
#include "picture/capture_control.h"

#include <QDateTime>
#include <QImage>
#include <QSize>

#include <atomic>

class CaptureSession;
struct CaptureRequest;
class WebAddress;
class Waiting;

// The capture control: lists the cameras, holds the one selected, grabs its newest frame, saves it
// and shows a preview. A camera is opened when the first picture is wanted of it, closed when none
// was wanted for ten seconds or it failed, and looked up anew by name and connection each time it
// is opened, so that one that was unplugged works again once it is back.
class ezVidCap : public QObject, public CaptureControl {
    Q_OBJECT

  public:
    // Both outlive the control.
    ezVidCap(Waiting& waiting, const CaptureDevices& devices);
    // Waits up to a second for a camera to be closed.
    ~ezVidCap() override;

    // The operator's own entries, each NAME|ADDRESS; the selected camera stays selected.
    void SetCameras(const QStringList& nameBarAddress);
    // Lists the cameras as they are now: installed ones first, then the entries.
    QStringList DriverNames();

    // The selected camera's place in the list; -1 when none is selected or it is not listed now.
    [[nodiscard]] int DriverIndex() const;
    // Selects a camera of the list; nothing is opened yet. Any other number selects none.
    void SetDriverIndex(int index);
    // While off, no camera is opened and grabs fail.
    void SetEnabled(bool on);
    // Whether the selected camera is an installed one, plugged in or not.
    [[nodiscard]] bool InstalledSelected() const {
        return isSelected && selected.Kind == CaptureKind::Device;
    }
    // The selected camera as it is plugged in now; nothing while it is not, or when it is no
    // installed one.
    [[nodiscard]] std::optional<CaptureDevice> InstalledDevice() const;
    // What was adjusted in cameras, see CameraAdjustments; counts from the next opening on.
    void SetAdjustments(const QStringList& lines) { adjustments = lines; }
    // WIDTHxHEIGHT or WIDTHxHEIGHT@FPS for installed cameras; empty for the largest picture up to
    // 1920x1080 that comes five times a second.
    void SetCaptureFormat(const QString& format);

    // Closes the camera now, not when nobody has wanted a picture for a while.
    void Release();

    // How long an open camera may send nothing at all before it is closed. 15 seconds at first.
    void SetPatience(int seconds) { patience = seconds * 1000LL; }

    // Waits for a frame newer than the last grabbed, for five seconds at most. False when none
    // came; Fault() then tells why. Where pictures come seconds apart, the last one will do when no
    // other comes meanwhile. A camera that sends something stays open: the picture that all
    // others of a stream are made from comes in its own time. No frame is older than two seconds,
    // or than the time from the one before, those counted in which the machine was suspended; only
    // a still that was too late for one grab is the picture of the next for twenty seconds.
    [[nodiscard]] bool GrabFrame() override;
    // Writes the grabbed frame as a bitmap file of 24 bits. False when there is none, or it cannot
    // be written: an older file of that name stays.
    [[nodiscard]] bool SaveDIB(const QString& path) override;
    [[nodiscard]] QImage TakeFrame() override;
    [[nodiscard]] const QImage& Frame() const { return frame; }

    // Whether a camera is selected and has not failed at the last grab.
    [[nodiscard]] bool Running() const override;
    // A sentence for the operator; empty while all is well.
    [[nodiscard]] QString Fault() const { return faultText; }
    // The same, and since when; also that there is no camera.
    [[nodiscard]] QString Reason() const override;
    // The same for a window that has its own words for it.
    [[nodiscard]] CaptureFault FaultCause() const { return faultCause; }
    // Cameras and streams: a video file may well show a still.
    [[nodiscard]] bool MayFreeze() const override;

    // The size of the last picture, pixels; 0 before the first.
    [[nodiscard]] int Width() const { return pictureSize.width(); }
    [[nodiscard]] int Height() const { return pictureSize.height(); }

    // 1 to 60 pictures a second.
    void SetPreviewRate(int framesPerSecond) override;
    void SetPreview(bool on) override;
    // Preview pictures are made no larger than an area of this size needs, pixels, whether they
    // are fitted into it or fill it; empty leaves them as large as they come.
    void SetPreviewSize(QSize size);

  signals:
    void PreviewFrame(const QImage& image);
    // The fault is another one than before, as Reason() has it; empty when the camera works again.
    void FaultChanged(const QString& text);

  private:
    [[nodiscard]] bool Grab();
    [[nodiscard]] CaptureFault MakeRequest(CaptureRequest& request);
    [[nodiscard]] bool OpenSession();
    void CloseSession();
    void ApplyPreview();
    void Watch();
    void CloseWhenQuiet();
    void LookAtArrivals();
    [[nodiscard]] bool LateStill() const;
    [[nodiscard]] bool TakeKept(qint64 mostAge);
    void Use(QImage&& newest);
    void Report(CaptureFault fault);
    [[nodiscard]] CaptureFault FaultOfSilence(bool sends) const;
    [[nodiscard]] qint64 Now() const;
    void List();
    [[nodiscard]] qsizetype SelectedIn(const QList<Camera>& list) const;

    Waiting& waiting;
    const CaptureDevices& devices;
    QStringList entries;
    QStringList adjustments;
    QList<Camera> cameras;
    Camera selected;
    bool isSelected = false;
    bool enabled = true;
    bool failed = false;  // at the last grab
    QString format;

    std::shared_ptr<CaptureSession> session;      // null while no camera is open
    std::shared_ptr<CaptureSession> lastSession;  // may still be closing its camera
    std::shared_ptr<std::atomic<qint64>> position;
    std::shared_ptr<WebAddress> web;  // of a network camera that is selected
    quint64 grabs = 0;
    int grabbing = 0;  // grabs that wait now

    QImage frame;
    QSize pictureSize{0, 0};
    QString faultText;
    CaptureFault faultCause = CaptureFault::None;
    QDateTime faultSince;  // of this fault, or of the one that it came after
    bool preview = false;
    int previewRate = 10;
    QSize previewSize;
    Timer quiet;  // closes a camera that nobody wants a picture of
    Timer watch;  // opens the camera again for the preview

    // Of the camera that is open; times are the clock's milliseconds.
    Timer look;  // notices that it is silent
    qint64 patience = 15'000;
    quint64 arrivals = 0;    // as many as were counted when LookAtArrivals looked last
    qint64 arrivedAt = 0;    // when they may have come at the earliest
    qint64 distance = 0;     // of that from the arrival before
    qint64 looked = 0;       // when it looked last
    qint64 grabbedAt = 0;    // the last grab, whether it succeeded or not
    bool slowStart = false;  // a grab has waited in vain for its first picture
    QImage kept;             // came while no grab was waiting for it
    qint64 keptAt = 0;
};
