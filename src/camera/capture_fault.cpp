#include "camera/capture_fault.h"

extern "C" {
#include <libavutil/error.h>
}

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

struct Sentence {
    CaptureFault Fault;
    const char* Rest;
};

// Of every fault.
constexpr std::array sentences{
    Sentence{CaptureFault::NotConnected, "is not connected"},
    Sentence{CaptureFault::Busy, "is in use by another program"},
    Sentence{CaptureFault::Denied, "may not be opened by this user"},
    Sentence{CaptureFault::BadFormat, "does not offer the picture format asked for"},
    Sentence{CaptureFault::FileMissing, "names a file that does not exist"},
    Sentence{CaptureFault::Unreachable, "cannot be reached"},
    Sentence{CaptureFault::NoAnswer, "does not answer"},
    Sentence{CaptureFault::WrongPassword, "asks for another name and password"},
    Sentence{CaptureFault::Forbidden, "refuses access"},
    Sentence{CaptureFault::AddressMissing, "has no picture at its address"},
    Sentence{CaptureFault::BadAddress, "has an address that cannot be opened"},
    Sentence{CaptureFault::NotAPicture, "sends nothing that is a picture"},
    Sentence{CaptureFault::NoWholePicture, "sends, but no whole picture yet"},
    Sentence{CaptureFault::Silent, "delivers no picture"},
    Sentence{CaptureFault::Lost, "has stopped delivering"},
};

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
        case ETIMEDOUT:
            return kind == CaptureKind::Network ? CaptureFault::NoAnswer : CaptureFault::Lost;
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
            return CaptureFault::WrongPassword;
        case AVERROR_HTTP_FORBIDDEN:
            return CaptureFault::Forbidden;
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
    if (fault == CaptureFault::None) return {};
    const char* const rest = std::ranges::find(sentences, fault, &Sentence::Fault)->Rest;
    return QStringLiteral("Camera '%1' %2").arg(camera, QString::fromLatin1(rest));
}
