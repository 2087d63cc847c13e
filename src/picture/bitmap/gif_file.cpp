#include "picture/bitmap/gif_file.h"

#include "picture/bitmap/byte_reader.h"

#include <array>
#include <optional>

namespace {

using GifPalette = std::array<QRgb, 256>;

constexpr int mostCodes = 4096;
constexpr int mostCodeBits = 12;

// A place on the screen, and what its pixels are made of.
struct GifFrame {
    QRect Place;
    bool Interlaced = false;
    GifPalette Palette = {};  // transparent where the file has none
    QByteArray Pixels = {};
};

// The strings of pixels that codes stand for: each one is another string and a pixel behind it.
class CodeTable {
  public:
    explicit CodeTable(int pixelBits) : clear(1 << pixelBits) {
        for (int i = 0; i < clear; ++i)
            strings[static_cast<size_t>(i)] = {0, 1, static_cast<uchar>(i), static_cast<uchar>(i)};
        Clear();
    }

    [[nodiscard]] bool Clears(int code) const { return code == clear; }
    [[nodiscard]] bool Ends(int code) const { return code == clear + 1; }
    [[nodiscard]] int CodeBits() const { return codeBits; }

    void Clear() {
        used = clear + 2;
        codeBits = 1;
        while (1 << codeBits < used) ++codeBits;
        before = -1;
    }

    // Makes the string that this code completes and writes the one that it stands for behind
    // `done`, as far as there is room. Returns false for a code that cannot be.
    bool Write(int code, QByteArray& pixels, qsizetype& done) {
        if (code > used || (before < 0 && code >= clear)) return false;
        if (before >= 0 && used < mostCodes) Add(code);
        if (code >= used) return false;
        const qsizetype end = done + strings[static_cast<size_t>(code)].Length;
        qsizetype at = end;
        for (int part = code; at-- > done; part = strings[static_cast<size_t>(part)].Before)
            if (at < pixels.size())
                pixels.data()[at] = static_cast<char>(strings[static_cast<size_t>(part)].Last);
        done = end;
        before = code;
        return true;
    }

  private:
    struct String {
        quint16 Before;
        quint16 Length;
        uchar First;
        uchar Last;
    };

    void Add(int code) {
        const String& longer = strings[static_cast<size_t>(before)];
        const uchar pixel = code == used ? longer.First : strings[static_cast<size_t>(code)].First;
        strings[static_cast<size_t>(used++)] = {static_cast<quint16>(before),
                                                static_cast<quint16>(longer.Length + 1),
                                                longer.First, pixel};
        if (used == 1 << codeBits && codeBits < mostCodeBits) ++codeBits;
    }

    std::array<String, mostCodes> strings = {};
    int clear;
    int used = 0;
    int codeBits = 0;
    int before = -1;  // the code written last
};

// Nothing unless there are as many pixels as the picture has.
std::optional<QByteArray> Unpack(QByteArrayView coded, int pixelBits, qsizetype count) {
    if (pixelBits < 1 || pixelBits > 8) return std::nullopt;
    QByteArray pixels(count, Qt::Uninitialized);
    CodeTable table(pixelBits);
    qsizetype done = 0;
    quint32 bits = 0;
    int held = 0;
    for (const char byte : coded) {
        bits |= static_cast<quint32>(static_cast<uchar>(byte)) << held;
        for (held += 8; held >= table.CodeBits();) {
            const int width = table.CodeBits();
            const auto code = static_cast<int>(bits & ((1U << width) - 1));
            bits >>= width;
            held -= width;
            if (table.Clears(code))
                table.Clear();
            else if (table.Ends(code) || !table.Write(code, pixels, done))
                return std::nullopt;
            if (done >= count) return pixels;
        }
    }
    return std::nullopt;
}

void TakePalette(ByteReader& in, int flags, GifPalette& palette) {
    if (!(flags & 0x80)) return;
    palette.fill(qRgb(0, 0, 0));
    for (int i = 0; i < 2 << (flags & 7); ++i) {
        const int red = in.Byte();
        const int green = in.Byte();
        palette[static_cast<size_t>(i)] = qRgb(red, green, in.Byte());
    }
}

// Pieces of up to 255 bytes, the last one empty.
QByteArray TakeBlocks(ByteReader& in) {
    QByteArray all;
    while (const int size = in.Byte()) all += in.Take(size);
    return all;
}

// Rows of an interlaced picture come in four rounds: every eighth, those between them, and so on.
QList<int> RowOrder(int height, bool interlaced) {
    QList<int> order;
    order.reserve(height);
    constexpr std::array<std::array<int, 2>, 4> rounds{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    for (const auto& [first, step] : rounds)
        for (int y = first; interlaced && y < height; y += step) order << y;
    for (int y = 0; !interlaced && y < height; ++y) order << y;
    return order;
}

void Draw(QImage& screen, const GifFrame& frame) {
    const auto* from = reinterpret_cast<const uchar*>(frame.Pixels.constData());
    for (const int y : RowOrder(frame.Place.height(), frame.Interlaced)) {
        auto* const row = reinterpret_cast<QRgb*>(screen.scanLine(frame.Place.top() + y));
        for (int x = 0; x < frame.Place.width(); ++x)
            row[frame.Place.left() + x] = frame.Palette[*from++];
    }
}

FilePicture TakeFrame(ByteReader& in, QSize screen, GifFrame frame, int transparent,
                      qsizetype fileBytes) {
    const int left = in.Word();
    const int top = in.Word();
    const int width = in.Word();
    const int height = in.Word();
    frame.Place = {left, top, width, height};
    const int flags = in.Byte();
    frame.Interlaced = flags & 0x40;
    TakePalette(in, flags, frame.Palette);
    const bool coloured = qAlpha(frame.Palette.front()) != 0;
    if (transparent >= 0) frame.Palette[static_cast<size_t>(transparent)] = 0;
    const int pixelBits = in.Byte();
    const QByteArray coded = TakeBlocks(in);
    if (in.Failed() || !coloured || frame.Place.isEmpty())
        return {.Fault = PictureFault::Unreadable};
    screen = screen.expandedTo({left + width, top + height});
    if (const PictureFault fault = SizeFault(screen, fileBytes); fault != PictureFault::None)
        return {.Fault = fault};
    const auto pixels = Unpack(coded, pixelBits, qsizetype{width} * height);
    if (!pixels) return {.Fault = PictureFault::Unreadable};
    frame.Pixels = *pixels;
    FilePicture picture{.Image = QImage(screen, QImage::Format_ARGB32),
                        .Fault = PictureFault::None};
    if (picture.Image.isNull()) return {.Fault = PictureFault::TooLarge};
    picture.Image.fill(Qt::transparent);
    Draw(picture.Image, frame);
    return picture;
}

}  // namespace

FilePicture ReadGif(QByteArrayView bytes) {
    constexpr int signatureSize = 6;
    enum Block { Extension = 0x21, Frame = 0x2C };
    ByteReader in(bytes);
    in.Take(signatureSize);
    const int width = in.Word();
    const QSize screen(width, in.Word());
    GifFrame frame;
    const int flags = in.Byte();
    in.Take(2);
    TakePalette(in, flags, frame.Palette);
    int transparent = -1;
    int block = in.Byte();
    for (; block == Extension; block = in.Byte()) {
        constexpr int control = 0xF9;
        const bool controls = in.Byte() == control;
        const QByteArray data = TakeBlocks(in);
        if (controls && data.size() >= 4)
            transparent = (data.front() & 1) != 0 ? static_cast<uchar>(data[3]) : -1;
    }
    if (block != Frame) return {.Fault = PictureFault::Unreadable};
    return TakeFrame(in, screen, std::move(frame), transparent, bytes.size());
}
