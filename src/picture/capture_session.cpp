#include "picture/capture_session.h"

#include "picture/capture_work.h"

#include <system_error>
#include <thread>

CaptureSession::CaptureSession(const CaptureRequest& request,
                               std::shared_ptr<CapturePosition> position,
                               const std::shared_ptr<CaptureWork>& previous, QObject& context,
                               CaptureEvents events)
    : work(std::make_shared<CaptureWork>(request, std::move(position), previous, context,
                                         std::move(events))) {
    try {
        std::thread([own = work] { own->Run(); }).detach();
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
