#include "camera/web_content.h"

#include "camera/capture_input.h"
#include "fuzzer.h"
#include "picture/bitmap/jpeg_file.h"

namespace {

WebContent Read(const QByteArray& type, const QByteArray& bytes, bool cut) {
    WebContent content;
    content.Type = type;
    const auto take = [&](const QByteArray& piece) {
        if (!content.Decided()) content.Take(piece, false);
    };
    if (cut)
        InPieces(bytes, take);
    else
        take(bytes);
    return content;
}

// A stream of pictures, one part of a multipart answer each.
QByteArray Stream(const QByteArray& bytes) {
    QByteArray stream;
    for (const QByteArray& each : Parts(bytes, 3))
        stream += "--b\r\nContent-Type: image/jpeg\r\nContent-Length: " +
                  QByteArray::number(each.size()) + "\r\n\r\n" + each + "\r\n";
    return stream + "--b--\r\n";
}

}  // namespace

// The type, then the content of a camera's answer: a picture for each question, or a stream.
const Fuzzer cameraAnswer("camera_answer", [](const QByteArray& bytes) {
    const QByteArrayList parts = Parts(bytes, 2);
    if (parts[1].isEmpty()) return;
    const WebContent whole = Read(parts[0], parts[1], false);
    const WebContent cut = Read(parts[0], parts[1], true);
    MUST(whole.Is == cut.Is && whole.Complete == cut.Complete);
    if (whole.Is == WebContent::Kind::Picture) MUST(whole.Bytes == cut.Bytes);
    MUST(parts[1].startsWith(whole.Bytes));
    if (!parts[1].contains("\xFF\xD8")) return;

    const std::atomic<bool> stop = false;
    std::atomic<quint64> arrivals = 0;
    CaptureRequest request;
    request.Kind = CaptureKind::Network;
    request.Address =
        "data:video/x-mjpeg;base64," + QString::fromLatin1(Stream(parts[1]).toBase64());
    CaptureInput input(request, stop, arrivals);
    if (input.Open() != 0) return;
    const PacketPtr packet(av_packet_alloc());
    const FramePtr frame(av_frame_alloc());
    for (int i = 0; i < 4 && input.Read(*packet) == 0; ++i) {
        input.Decode(packet.get());
        const QByteArray picture(reinterpret_cast<const char*>(packet->data), packet->size);
        // Half a picture never counts.
        if (input.Receive(*frame)) MUST(picture.contains("\xFF\xD9") && frame->width > 0);
    }
});
