#pragma once

#include "camera/capture_session.h"
#include "camera/exposure_settled.h"
#include "camera/frame_scaler.h"

#include <chrono>

// The capture thread's loop while a source is open: takes pictures off, and converts those that
// somebody wants to have.
class CaptureDelivery {
  public:
    CaptureDelivery(CaptureSession& session, CaptureSource& source);

    // Runs until the session is stopped (None) or the source fails.
    [[nodiscard]] CaptureFault Run();

  private:
    [[nodiscard]] bool ServeLive();
    [[nodiscard]] bool ServeOnDemand();
    void WatchExposure();
    void Deliver(const CaptureSession::Demand& demand, bool grab, bool preview);
    [[nodiscard]] qint64 RestTime(const CaptureSession::Demand& demand) const;
    [[nodiscard]] qint64 Elapsed() const;

    CaptureSession& session;
    CaptureSource& source;
    FrameScaler scaler;
    ExposureSettled exposure;
    const std::chrono::steady_clock::time_point start;
    qint64 nextPreview = 0;  // milliseconds since start
    qint64 nextStep = 0;     // of a source that is not live, while it is watched
    bool settled;
    qint64 lastPicture = 0;  // when it came
    bool slow = false;       // it came long after the one before
    quint64 arrival = 0;     // which one it was
    bool newForGrab = false;
    bool newForPreview = false;
};
