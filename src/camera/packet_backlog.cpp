#include "camera/packet_backlog.h"

#include <utility>

namespace {
constexpr qsizetype mostBytes = 16'000'000;  // four seconds of the fastest streams
constexpr std::chrono::seconds longestWait(2);
constexpr std::chrono::milliseconds longestTurn(250);
constexpr std::chrono::milliseconds atOnce(1);
constexpr double ofUsual = 1.0 / 16;  // how much the last packet counts
}  // namespace

PacketBacklog::PacketBacklog(Decoding decoding, std::function<Time()> clock)
    : decode(std::move(decoding)), now(std::move(clock)) {}

void PacketBacklog::Add(AVPacket& packet) {
    bytes += packet.size;
    packets.emplace_back(av_packet_alloc());
    av_packet_move_ref(packets.back().get(), &packet);
    const Time start = now();
    // What comes at once has waited: reading goes first.
    const bool time = start - ended > atOnce;
    while (packets.size() > 1 &&
           (bytes > mostBytes || (time && TakesTooLong() && now() - start < longestTurn)))
        DecodeOldest();
    ended = now();
}

bool PacketBacklog::TakesTooLong() const {
    return usual * static_cast<double>(packets.size()) > longestWait;
}

bool PacketBacklog::DecodeOldest() {
    const PacketPtr oldest = std::move(packets.front());
    packets.pop_front();
    bytes -= oldest->size;
    const Time start = now();
    const bool fresh = decode(*oldest);
    usual += (now() - start - usual) * ofUsual;
    return fresh;
}

void PacketBacklog::Clear() {
    packets.clear();
    bytes = 0;
}
