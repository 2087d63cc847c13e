#pragma once

#include "camera/device_packets.h"

// One video stream of anything that FFmpeg opens: packets as they come, and frames decoded from
// them. Hands out whole frames only: after damage, nothing until the next picture that stands for
// itself. Errors are FFmpeg's negative codes.
class CaptureInput {
  public:
    // stop: set to make every routine here return soon; arrivals: counted up while bytes come in.
    // Both must outlive the object.
    CaptureInput(CaptureRequest request, const std::atomic<bool>& stop,
                 std::atomic<quint64>& arrivals);
    ~CaptureInput() { Close(); }
    Q_DISABLE_COPY_MOVE(CaptureInput)

    // Opens the address anew. Returns 0 or an error.
    [[nodiscard]] int Open();
    void Close();
    [[nodiscard]] bool IsOpen() const { return codec != nullptr; }

    // The next packet of the stream. AVERROR(EAGAIN) when a device has none yet, AVERROR_EOF at the
    // end of a file.
    [[nodiscard]] int Read(AVPacket& packet);

    // Begins anew with a picture that stands for itself, whatever came before it.
    void SkipToKey();
    // Gives the decoder a packet; null at the end of the stream. Damage is dealt with here.
    void Decode(const AVPacket* packet);
    // The next whole frame. False when the decoder has none.
    [[nodiscard]] bool Receive(AVFrame& frame);

    // Goes to the last key picture at or before the time stamp, or stays where it is.
    void Seek(qint64 stamp);

    [[nodiscard]] const AVStream& Stream() const { return *format->streams[streamIndex]; }
    // Whether every picture stands for itself, so that those not wanted need no decoding.
    [[nodiscard]] bool IntraOnly() const { return intraOnly; }
    // Whether the address is one picture.
    [[nodiscard]] bool IsStill() const;
    // Whether it is a video that ends.
    [[nodiscard]] bool IsVideoFile() const;
    [[nodiscard]] bool Stopping() const { return stop; }
    [[nodiscard]] const CaptureRequest& Request() const { return request; }

  private:
    [[nodiscard]] static int AskedToStop(void* self);
    [[nodiscard]] int OpenFormat();
    [[nodiscard]] int OpenDevice();
    [[nodiscard]] int FindStream();
    [[nodiscard]] int OpenCodec();
    [[nodiscard]] QByteArray Address() const;

    CaptureRequest request;
    const std::atomic<bool>& stop;
    std::atomic<quint64>& arrivals;
    const AVFormatContext* opened = nullptr;  // which bytes come into
    qint64 bytes = 0;                         // so many until now
    FormatPtr format;
    std::optional<DevicePackets> packets;  // of a camera that FFmpeg does not open itself
    CodecPtr codec;
    int streamIndex = 0;
    bool intraOnly = false;
    bool needKey = true;
};
