#pragma once

#include "camera/capture_ffmpeg.h"

#include <QtGlobal>

#include <chrono>
#include <deque>
#include <functional>

// Packets of a stream that were not decoded yet: nobody may want their pictures before the next one
// that stands for itself makes them needless. Somebody who does must not wait for long, however
// slow the machine is: what would take more than two seconds, by what the last packets took, is
// decoded as it comes.
class PacketBacklog {
  public:
    using Time = std::chrono::steady_clock::time_point;
    // Whether there is a newer picture than before.
    using Decoding = std::function<bool(const AVPacket& packet)>;

    explicit PacketBacklog(
        Decoding decoding,
        std::function<Time()> clock = [] { return std::chrono::steady_clock::now(); });

    // Takes the packet's content over. Decodes of the oldest ones what is too much, for a
    // quarter of a second at most, and only where the packet was waited for: reading goes on.
    void Add(AVPacket& packet);
    // The oldest one; there is one. Returns what the decoding does.
    bool DecodeOldest();
    // What is there is not needed any more.
    void Clear();
    [[nodiscard]] bool Empty() const { return packets.empty(); }

  private:
    [[nodiscard]] bool TakesTooLong() const;

    Decoding decode;
    std::function<Time()> now;
    std::deque<PacketPtr> packets;
    qsizetype bytes = 0;
    Time ended;                              // when Add did last
    std::chrono::duration<double> usual{0};  // that a packet takes
};
