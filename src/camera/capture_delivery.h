#pragma once

#include "camera/capture_exposure.h"
#include "camera/capture_scaler.h"
#include "camera/capture_work.h"

#include <chrono>

// The capture thread's loop while a source is open: takes pictures off, and converts those that
// somebody wants to have.
class CaptureDelivery {
  public:
    CaptureDelivery(CaptureWork& work, CaptureSource& source);

    // Runs until the work is stopped (None) or the source fails.
    [[nodiscard]] CaptureFault Run();

  private:
    [[nodiscard]] bool ServeLive(const CaptureWork::Demand& demand);
    [[nodiscard]] bool ServeOnDemand(const CaptureWork::Demand& demand);
    void WatchExposure();
    void Deliver(const CaptureWork::Demand& demand, bool grab, bool preview);
    [[nodiscard]] qint64 RestTime(const CaptureWork::Demand& demand) const;
    [[nodiscard]] qint64 Elapsed() const;

    CaptureWork& work;
    CaptureSource& source;
    FrameScaler scaler;
    ExposureSettled exposure;
    Dib dib;
    const std::chrono::steady_clock::time_point start;
    qint64 nextPreview = 0;  // milliseconds since start
    qint64 nextStep = 0;     // of a source that is not live, while it is watched
    bool settled;
    bool newForGrab = false;
    bool newForPreview = false;
};
