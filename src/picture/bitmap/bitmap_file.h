#pragma once

#include <QBuffer>
#include <QFile>
#include <QList>
#include <QString>

#include <array>

// Bitmap (BMP) files, read and written without a detour: what is 24 bits deep goes between file and
// memory as it is. Files of 1, 4, 8, 16, 24 and 32 bits are read, from every header since the first
// one, rows in either direction, run lengths too. Nothing in a file is believed before it is
// checked.

// What a routine here and in imaging.h returns: 0 for success, else the reason.
enum ImagingResult : int {
    ImagingDone = 0,
    ImagingCannotRead = 1,   // missing, unreadable, or shorter than it says
    ImagingNotABitmap = 2,   // another kind of file
    ImagingUnsupported = 3,  // a compression, depth or header that nobody writes
    ImagingDamaged = 4,      // sizes, offsets, palette or masks that cannot be true
    ImagingNoMemory = 5,     // not enough, or larger than any picture here
    ImagingWrongImage = 6,   // the image has another size or depth than the routine needs
    ImagingCannotEncode = 7,
    ImagingCannotWrite = 8,  // folder missing, disk full
};

// The 40 bytes that describe a bitmap. Height is negative when the rows run from the top down.
struct BITMAPINFOHEADER {
    quint32 Size = 40;
    qint32 Width = 0;
    qint32 Height = 0;
    quint16 Planes = 1;
    quint16 BitCount = 0;
    quint32 Compression = 0;
    quint32 ImageSize = 0;
    qint32 XPelsPerMeter = 0;
    qint32 YPelsPerMeter = 0;
    quint32 ColoursUsed = 0;
    quint32 ColoursImportant = 0;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40);

// Of a file that WriteBitmap writes.
[[nodiscard]] BITMAPINFOHEADER BitmapHeader(int width, int height);

struct BitmapColour {
    uchar Blue = 0;
    uchar Green = 0;
    uchar Red = 0;
};
using BitmapPalette = std::array<BitmapColour, 256>;

// Rows in memory: the first byte of the top row, and the way in bytes from a row to the one below.
struct BitmapRows {
    uchar* Top = nullptr;
    qptrdiff Step = 0;
};

// No side of a picture is longer, no picture larger: 300 MB of 24-bit colour.
constexpr int LongestBitmapSide = 65500;
constexpr qint64 MostBitmapPixels = 100'000'000;

// How many pixels a file of so many bytes may claim to have, so that a few bytes do not cost
// hundreds of megabytes. Only a single plain colour is ever packed about as tight; a small picture
// is always possible.
[[nodiscard]] constexpr qint64 MostPixelsIn(qint64 bytes) {
    constexpr qint64 small = 4'000'000;
    constexpr qint64 perByte = 5000;
    return small + bytes * perByte;
}

// Rows that are turned over or converted go through a piece of this many bytes at a time, which
// stays in the processor's cache.
constexpr qint64 BitmapPiece = 256 * 1024;

// Bytes from one row to the next in a file: rows are padded to 4 bytes.
[[nodiscard]] constexpr qint64 BitmapStride(qint64 width, int bits) {
    return (width * bits + 31) / 32 * 4;
}

// An open bitmap file whose header is known to be true.
class BitmapReader {
  public:
    // Reads and checks everything before the pixels, run lengths too. Returns an ImagingResult.
    [[nodiscard]] int Open(const QString& name);
    // The same from a file or buffer that is open, at its beginning, and outlives the reader.
    [[nodiscard]] int Open(QIODevice& device);

    [[nodiscard]] const BITMAPINFOHEADER& Header() const { return header; }
    [[nodiscard]] int Width() const { return header.Width; }
    [[nodiscard]] int Height() const { return qAbs(header.Height); }
    // Depth of the pixels once loaded: 1, 4, 8, or 24 for everything above.
    [[nodiscard]] int LoadedBits() const { return header.BitCount < 16 ? header.BitCount : 24; }
    // Whether the pixels say how much of them is seen. All of them may be opaque, or none.
    [[nodiscard]] bool HasAlpha() const { return channels.back().Mask != 0; }
    // Entries that the file does not have are black.
    [[nodiscard]] const BitmapPalette& Palette() const { return palette; }

    // Reads the pixels, `bits` deep: LoadedBits(), 24 to have palettes resolved, or, of 16 and 32
    // bits in the file, 32: blue, green, red and alpha. Each row in
    // memory needs BitmapStride(Width(), bits) bytes. Returns an ImagingResult.
    [[nodiscard]] int ReadPixels(const BitmapRows& rows, int bits);

  private:
    // The place of one colour in a pixel of 16 or 32 bits.
    struct Channel {
        quint32 Mask = 0;
        int Shift = 0;
        std::array<uchar, 256> Levels = {255};
    };

    int ReadHeader();
    int CheckHeader();
    int ReadPalette();
    int ReadMasks();
    int ReadRuns();
    [[nodiscard]] bool HasRuns() const;
    [[nodiscard]] static bool MakeChannel(quint32 mask, Channel& channel);
    void ConvertRow(const uchar* from, uchar* to, int bits) const;
    void ConvertPixels(const uchar* from, uchar* to, int bits) const;

    QFile file;
    QBuffer unpacked;             // what run lengths stood for
    QIODevice* source = nullptr;  // of the pixels
    BITMAPINFOHEADER header;
    quint32 headerSize = 0;  // as in the file
    qint64 pixelOffset = 0;
    BitmapPalette palette = {};
    std::array<Channel, 4> channels = {};  // blue, green, red, alpha
};

// Turns a row of `width` palette indexes, `bits` (1, 4 or 8) wide each, into 24-bit pixels.
void ResolveIndexes(const uchar* from, int bits, int width, const BitmapPalette& palette,
                    uchar* to);

// Writes pixels of 24 bits (blue, green, red) as a bitmap file with the rows from the bottom up, in
// place of a file of that name, and in the room of one that WholeFile::SetAside has left there.
// Returns an ImagingResult.
[[nodiscard]] int WriteBitmap(const QString& name, int width, int height, const BitmapRows& rows);

// Some rows of a picture, counted from the top.
struct BitmapPart {
    int First = 0;
    int Count = 0;
};

// The same where the file that was set aside last held these pixels already, but for those parts:
// no others are written.
[[nodiscard]] int RewriteBitmap(const QString& name, int width, int height, const BitmapRows& rows,
                                const QList<BitmapPart>& parts);
