#include "picture/bitmap/jpeg_header.h"

#include "picture/bitmap/byte_reader.h"

#include <algorithm>

namespace {

enum Marker {
    NoMarker = 0x00,
    Temporary = 0x01,
    FirstFrame = 0xC0,
    ProgressiveFrame = 0xC2,
    Huffman = 0xC4,
    Reserved = 0xC8,
    Arithmetic = 0xCC,
    LastFrame = 0xCF,
    FirstAlone = 0xD0,  // restarts, begin and end
    LastAlone = 0xD9,
    Scan = 0xDA,
    Exif = 0xE1,
    Fill = 0xFF,
};

bool BeginsFrame(int marker) {
    return marker >= FirstFrame && marker <= LastFrame && marker != Huffman && marker != Reserved &&
           marker != Arithmetic;
}

bool StandsAlone(int marker) {
    return marker == NoMarker || marker == Temporary ||
           (marker >= FirstAlone && marker <= LastAlone);
}

// The bytes of a TIFF file, whose first directory has the orientation among its entries.
int ExifOrientation(QByteArrayView tiff) {
    constexpr int orientationTag = 0x0112;
    constexpr int shortType = 3;
    constexpr int mostOrientation = 8;
    const bool big = tiff.startsWith("MM");
    if (!big && !tiff.startsWith("II")) return 1;
    ByteReader in(tiff);
    in.Take(4);
    in.Seek(in.Long(big));
    for (int left = in.Word(big); left > 0 && !in.Failed(); --left) {
        const int tag = in.Word(big);
        const int type = in.Word(big);
        in.Take(4);  // how many
        const int value = in.Word(big);
        in.Take(2);
        if (tag == orientationTag && type == shortType && value >= 1 && value <= mostOrientation)
            return value;
    }
    return 1;
}

}  // namespace

JpegHeader ReadJpegHeader(QByteArrayView bytes) {
    constexpr QByteArrayView exif("Exif\0\0", 6);
    JpegHeader header;
    bool progressive = false;
    int colours = 0;
    ByteReader in(bytes);
    while (!in.Failed()) {
        if (in.Byte() != Fill) continue;
        int marker = in.Byte();
        while (marker == Fill) marker = in.Byte();
        if (StandsAlone(marker)) continue;
        // A length counts its own two bytes; libjpeg goes on behind one that is too small for them.
        const QByteArrayView segment = in.Take(std::max(0, in.Word(true) - 2));
        if (segment.isEmpty()) continue;
        if (marker == Exif && segment.startsWith(exif) && header.Orientation == 1)
            header.Orientation = ExifOrientation(segment.sliced(exif.size()));
        if (BeginsFrame(marker)) {
            constexpr int coloursAt = 5;
            progressive = marker == ProgressiveFrame;
            colours = segment.size() > coloursAt ? static_cast<uchar>(segment[coloursAt]) : 0;
        }
        if (marker == Scan) {
            header.Buffered = progressive || static_cast<uchar>(segment.front()) < colours;
            header.Pixels = in.At();
            break;
        }
    }
    return header;
}
