#include "camera/ezvidcap.h"

#include "base/waiting.h"
#include "camera/camera_adjustments.h"
#include "camera/capture_format.h"
#include "camera/capture_session.h"
#include "picture/bitmap/picture_surface.h"

#include <algorithm>
#include <utility>

namespace {
constexpr int grabLimit = 5000;
constexpr int quietLimit = 10000;
// A stream that was long in coming is not opened anew for each picture.
constexpr qint64 quietLimitSlowStart = 600'000;
constexpr int watchInterval = 5000;
constexpr int lookInterval = 1000;
// Longer between two looks, and the machine was suspended: what the system and the camera still
// hold is from before.
constexpr qint64 longestLook = 5000;
constexpr qint64 freshEnough = 2000;
// The longest that a grab that has failed is not tried again while a still may be on its way.
constexpr qint64 freshLate = 20'000;
constexpr int closeLimit = 1000;
}  // namespace

ezVidCap::ezVidCap(Waiting& ownWaiting, const CaptureDevices& ownDevices)
    : waiting(ownWaiting),
      devices(ownDevices),
      quiet(ownWaiting.OwnClock(), quietLimit),
      watch(ownWaiting.OwnClock(), watchInterval),
      look(ownWaiting.OwnClock(), lookInterval) {
    // FFmpeg's own words on standard error tell nobody anything: the control names each fault once.
    av_log_set_level(AV_LOG_QUIET);
    avformat_network_init();
    connect(&quiet, &Timer::Tick, this, &ezVidCap::CloseWhenQuiet);
    connect(&watch, &Timer::Tick, this, &ezVidCap::Watch);
    connect(&look, &Timer::Tick, this, &ezVidCap::LookAtArrivals);
}

ezVidCap::~ezVidCap() {
    CloseSession();
    if (lastSession) lastSession->WaitForEnd(closeLimit);
}

void ezVidCap::SetCameras(const QStringList& nameBarAddress) {
    entries = nameBarAddress;
    List();
}

void ezVidCap::List() {
    cameras = ListCameras(devices.List(), entries);
}

QStringList ezVidCap::DriverNames() {
    List();
    QStringList names;
    for (const Camera& camera : cameras) names << camera.Name;
    return names;
}

// -1 when it is not in the list.
qsizetype ezVidCap::SelectedIn(const QList<Camera>& list) const {
    const auto found = std::ranges::find_if(
        list, [this](const Camera& camera) { return camera.SameAs(selected); });
    return found == list.end() ? -1 : found - list.begin();
}

int ezVidCap::DriverIndex() const {
    return isSelected ? static_cast<int>(SelectedIn(cameras)) : -1;
}

void ezVidCap::SetDriverIndex(int index) {
    const bool exists = index >= 0 && index < cameras.size();
    if (exists && isSelected && cameras[index].SameAs(selected)) return;
    CloseSession();
    isSelected = exists;
    selected = exists ? cameras[index] : Camera();
    position = std::make_shared<CapturePosition>(BeforeFirstPicture);
    web = std::make_shared<WebAddress>();
    failed = false;
    Report(CaptureFault::None);
    watch.SetEnabled(false);
    ApplyPreview();
}

std::optional<CaptureDevice> ezVidCap::InstalledDevice() const {
    if (!InstalledSelected()) return std::nullopt;
    const QList<Camera> now = ListCameras(devices.List(), {});
    const qsizetype index = SelectedIn(now);
    return index < 0 ? std::nullopt : std::optional(now[index].Device);
}

void ezVidCap::SetEnabled(bool on) {
    if (on == enabled) return;
    enabled = on;
    if (!on) CloseSession();
    ApplyPreview();
}

void ezVidCap::SetCaptureFormat(const QString& wanted) {
    if (wanted == format) return;
    format = wanted;
    if (isSelected && selected.Kind == CaptureKind::Device) CloseSession();
    watch.SetEnabled(false);
    ApplyPreview();
}

void ezVidCap::SetPreviewRate(int framesPerSecond) {
    previewRate = std::clamp(framesPerSecond, 1, 60);
    ApplyPreview();
}

void ezVidCap::SetPreview(bool on) {
    preview = on;
    ApplyPreview();
}

void ezVidCap::SetPreviewSize(QSize size) {
    previewSize = size;
    ApplyPreview();
}

// Opens the camera when the preview needs it; without a preview it is closed in a while.
void ezVidCap::ApplyPreview() {
    const bool shown = preview && enabled && isSelected;
    if (session) session->SetPreview(shown ? previewRate : 0, previewSize);
    if (shown && !session && !watch.Enabled()) (void)OpenSession();
    watch.SetEnabled(shown);
    if (shown)
        quiet.SetEnabled(false);
    else if (session && grabbing == 0)
        quiet.SetEnabled(true);
}

// Looks after the preview now and then.
void ezVidCap::Watch() {
    if (grabbing == 0 && !session) (void)OpenSession();
}

void ezVidCap::CloseWhenQuiet() {
    if (grabbing > 0 || preview) return;
    frame = QImage();  // some megabytes, for the minutes until the next picture
    if (web->Asking > 0 || LateStill()) return;
    if (slowStart && Now() - grabbedAt < quietLimitSlowStart) return;
    CloseSession();
}

void ezVidCap::LookAtArrivals() {
    if (!session) return;
    if (Now() - looked > longestLook) {
        CloseSession();
        return;
    }
    if (const quint64 count = session->Arrivals(); count != arrivals) {
        arrivals = count;
        distance = looked - std::exchange(arrivedAt, looked);
    } else if (web->Asking == 0 && Now() - arrivedAt >= patience) {
        const CaptureFault fault = FaultOfSilence(false);
        CloseSession();
        if (grabbing > 0 || preview) Report(fault);
    }
    looked = Now();
}

// Whether an answer has come that nobody waits for any more. It is the next picture, or a camera
// that takes longer to answer than a grab waits would be asked for ever.
bool ezVidCap::LateStill() const {
    return !kept.isNull() && web->Is == WebAddress::Kind::Still && Now() - keptAt <= freshLate;
}

// Has the picture that came between two grabs be the grabbed one, unless it is older than that.
bool ezVidCap::TakeKept(qint64 mostAge) {
    if (kept.isNull() || Now() - keptAt > mostAge) return false;
    Use(std::exchange(kept, QImage()));
    return true;
}

void ezVidCap::Use(QImage&& newest) {
    frame = std::move(newest);
    ++grabs;
}

qint64 ezVidCap::Now() const {
    return waiting.OwnClock().Milliseconds();
}

bool ezVidCap::Running() const {
    return enabled && isSelected && !failed;
}

bool ezVidCap::MayFreeze() const {
    return isSelected &&
           (selected.Kind == CaptureKind::Device || selected.Kind == CaptureKind::Network);
}

void ezVidCap::Release() {
    if (grabbing == 0 && !preview) CloseSession();
}

bool ezVidCap::GrabFrame() {
    if (!enabled || !isSelected) return false;
    LookAtArrivals();
    ++grabbing;
    const bool done = TakeKept(LateStill() ? freshLate : freshEnough) || Grab();
    --grabbing;
    failed = !done;
    grabbedAt = Now();
    if (done) Report(CaptureFault::None);
    quiet.SetEnabled(false);
    quiet.SetEnabled(session != nullptr && !preview);
    return done;
}

bool ezVidCap::Grab() {
    if (!session && !OpenSession()) return false;
    const quint64 before = grabs;
    const quint64 arrivedBefore = session->Arrivals();
    const auto asked = session;
    session->RequestFrame(Now() - arrivedAt > std::max(freshEnough, distance));
    const auto gone = [this, &asked] { return session != asked; };
    const Waiting::End end =
        waiting.Until([&] { return grabs != before || gone(); }, {.LimitMilliseconds = grabLimit});
    if (grabs != before) return true;
    if (TakeKept(std::max(freshEnough, distance))) return true;
    if (end == Waiting::End::Limit && !gone()) {
        const bool sends = session->Arrivals() > std::max<quint64>(arrivedBefore, 1);
        slowStart = slowStart || sends;
        Report(FaultOfSilence(sends));
    }
    return false;
}

bool ezVidCap::SaveDIB(const QString& path) {
    return SaveSurface(frame, path);
}

QImage ezVidCap::TakeFrame() {
    return std::exchange(frame, QImage());
}

CaptureFault ezVidCap::MakeRequest(CaptureRequest& request) {
    request.Kind = selected.Kind;
    request.Address = selected.Address;
    request.Web = web;
    if (selected.Kind != CaptureKind::Device) return CaptureFault::None;
    const std::optional<CaptureDevice> device = InstalledDevice();
    if (!device) return CaptureFault::NotConnected;
    request.Device = *device;
    request.Address = device->Address;
    request.Adjustments = CameraAdjustments::Of(adjustments, selected.Name);
    request.Format = ChooseCaptureFormat(devices.Formats(*device), format);
    return CaptureFault::None;
}

bool ezVidCap::OpenSession() {
    CaptureRequest request;
    const CaptureFault fault = MakeRequest(request);
    if (fault != CaptureFault::None) {
        Report(fault);
        return false;
    }
    CaptureEvents events;
    events.Grabbed = [this](QImage&& newest) {
        pictureSize = newest.size();
        keptAt = Now();
        if (grabbing > 0)
            Use(std::move(newest));
        else
            kept = std::move(newest);
    };
    events.Preview = [this](const QImage& image, QSize size) {
        pictureSize = size;
        Report(CaptureFault::None);
        emit PreviewFrame(image);
    };
    events.Failed = [this](CaptureFault why) {
        CloseSession();
        // A line that breaks while nobody wants a picture is opened again when somebody does.
        if (grabbing > 0 || preview || failed) Report(why);
    };
    session = lastSession = CaptureSession::Start(request, position, lastSession, *this, events);
    arrivals = 0;
    arrivedAt = looked = Now();
    distance = 0;
    slowStart = false;
    look.SetEnabled(true);
    session->SetPreview(preview ? previewRate : 0, previewSize);
    return true;
}

void ezVidCap::CloseSession() {
    if (session) session->Stop();
    session.reset();
    kept = QImage();
    quiet.SetEnabled(false);
    look.SetEnabled(false);
}

void ezVidCap::Report(CaptureFault fault) {
    const QString text = FaultSentence(fault, selected.Name);
    if (text == faultText) return;
    if (faultText.isEmpty()) faultSince = waiting.OwnClock().Now();
    faultCause = fault;
    faultText = text;
    emit FaultChanged(Reason());
}

// Of a camera that is open and delivers no picture. sends: other things come from it.
CaptureFault ezVidCap::FaultOfSilence(bool sends) const {
    if (sends) return CaptureFault::NoWholePicture;
    const bool answered =
        selected.Kind != CaptureKind::Network || (session->Arrivals() > 0 && web->Asking == 0);
    return answered ? CaptureFault::Silent : CaptureFault::NoAnswer;
}

QString ezVidCap::Reason() const {
    if (!enabled || !isSelected) return QStringLiteral("No Video Capture Device!");
    if (faultText.isEmpty()) return {};
    const bool today = faultSince.date() == waiting.OwnClock().Now().date();
    const auto form = today ? QStringLiteral("HH:mm") : QStringLiteral("yyyy-MM-dd HH:mm");
    return QStringLiteral("%1 since %2").arg(faultText, faultSince.toString(form));
}
