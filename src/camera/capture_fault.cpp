#include "camera/capture_fault.h"

extern "C" {
#include <libavutil/error.h>
}

#include <cerrno>

namespace {

CaptureFault FaultOfSystemError(int code, CaptureKind kind) {
    switch (code) {
        case ENOENT:
        case ENODEV:
        case ENXIO:
        case ENOTDIR:
            if (kind == CaptureKind::Device) return CaptureFault::NotConnected;
            return kind == CaptureKind::File ? CaptureFault::FileMissing : CaptureFault::BadAddress;
        case EBUSY:
            return CaptureFault::Busy;
        case EACCES:
        case EPERM:
            return CaptureFault::Denied;
        case EINVAL:
            return kind == CaptureKind::Device ? CaptureFault::BadFormat : CaptureFault::BadAddress;
        default:
            break;
    }
    // The network reports a host without an address and a line that broke alike as a failed read.
    return kind == CaptureKind::Network ? CaptureFault::Unreachable : CaptureFault::Lost;
}

}  // namespace

CaptureFault FaultOfError(int error, CaptureKind kind) {
    switch (error) {
        case AVERROR_HTTP_UNAUTHORIZED:
        case AVERROR_HTTP_FORBIDDEN:
            return CaptureFault::WrongPassword;
        case AVERROR_HTTP_NOT_FOUND:
        case AVERROR_HTTP_BAD_REQUEST:
        case AVERROR_HTTP_OTHER_4XX:
            return CaptureFault::AddressMissing;
        case AVERROR_HTTP_SERVER_ERROR:
            return CaptureFault::Unreachable;
        case AVERROR_PROTOCOL_NOT_FOUND:
        case AVERROR_DEMUXER_NOT_FOUND:
            return CaptureFault::BadAddress;
        case AVERROR_INVALIDDATA:
        case AVERROR_EOF:
        case AVERROR_STREAM_NOT_FOUND:
        case AVERROR_DECODER_NOT_FOUND:
            return CaptureFault::NotAPicture;
        default:
            return FaultOfSystemError(AVUNERROR(error), kind);
    }
}

QString FaultSentence(CaptureFault fault, const QString& camera) {
    const char* rest = "";
    switch (fault) {
        case CaptureFault::None:
            return {};
        case CaptureFault::NotConnected:
            rest = "is not connected";
            break;
        case CaptureFault::Busy:
            rest = "is in use by another program";
            break;
        case CaptureFault::Denied:
            rest = "may not be opened by this user";
            break;
        case CaptureFault::BadFormat:
            rest = "does not offer the picture format asked for";
            break;
        case CaptureFault::FileMissing:
            rest = "names a file that does not exist";
            break;
        case CaptureFault::Unreachable:
            rest = "cannot be reached";
            break;
        case CaptureFault::WrongPassword:
            rest = "asks for another name and password";
            break;
        case CaptureFault::AddressMissing:
            rest = "has no picture at its address";
            break;
        case CaptureFault::BadAddress:
            rest = "has an address that cannot be opened";
            break;
        case CaptureFault::NotAPicture:
            rest = "sends nothing that is a picture";
            break;
        case CaptureFault::Silent:
            rest = "delivers no picture";
            break;
        case CaptureFault::Lost:
            rest = "has stopped delivering";
            break;
    }
    return QStringLiteral("Camera '%1' %2").arg(camera, QString::fromLatin1(rest));
}
