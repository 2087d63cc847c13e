#include "camera/capture_session.h"

#include "base/detached_thread.h"
#include "camera/capture_work.h"

#include <system_error>

CaptureSession::CaptureSession(const CaptureRequest& request,
                               std::shared_ptr<CapturePosition> position,
                               const std::shared_ptr<CaptureWork>& previous, QObject& context,
                               CaptureEvents events)
    : work(std::make_shared<CaptureWork>(request, std::move(position), previous, context,
                                         std::move(events))) {
    try {
        StartDetached([own = work] { own->Run(); });
    } catch (const std::system_error&) {
        work->Fail(CaptureFault::Silent);
    }
}

CaptureSession::~CaptureSession() {
    work->Stop();
}

void CaptureSession::RequestFrame() {
    work->RequestFrame();
}

void CaptureSession::TakeFrame(Dib& frame) {
    work->TakeFrame(frame);
}

void CaptureSession::SetPreview(int rate, QSize size) {
    work->SetPreview(rate, size);
}

bool CaptureSession::WaitForEnd(CaptureWork& work, int milliseconds) {
    return work.WaitForEnd(milliseconds);
}
