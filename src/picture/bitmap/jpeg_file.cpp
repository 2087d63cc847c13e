#include "picture/bitmap/jpeg_file.h"

#include "picture/bitmap/jpeg_header.h"
#include "picture/bitmap/upright.h"

#include <turbojpeg.h>
#include <QRegularExpression>

#include <memory>

namespace {

// The largest sensors; while such a picture is decoded smaller, it takes little memory unless it
// comes in several scans.
constexpr qint64 mostPixels = 250'000'000;
constexpr qint64 mostBufferedPixels = 50'000'000;

// Each 64 of them take a bit at least.
constexpr qint64 mostPixelsPerByte = 8 * 64;

constexpr int whole = 8;  // the decoder makes pictures smaller by eighths

struct CloseDecoder {
    void operator()(void* decoder) const { tjDestroy(decoder); }
};
using Decoder = std::unique_ptr<void, CloseDecoder>;

struct Jpeg {
    QByteArray Bytes;
    QSize Size = {};
    bool FourColours = false;
    JpegHeader Header = {};
};

bool TakeHeader(const Decoder& decoder, Jpeg& jpeg) {
    int sampling = 0;
    int colours = 0;
    const auto* const data = reinterpret_cast<const uchar*>(jpeg.Bytes.constData());
    if (!decoder ||
        tjDecompressHeader3(decoder.get(), data, static_cast<unsigned long>(jpeg.Bytes.size()),
                            &jpeg.Size.rwidth(), &jpeg.Size.rheight(), &sampling, &colours) != 0)
        return false;
    jpeg.FourColours = colours == TJCS_CMYK || colours == TJCS_YCCK;
    jpeg.Header = ReadJpegHeader(jpeg.Bytes);
    return !jpeg.Size.isEmpty();
}

qint64 Pixels(QSize size) {
    return qint64{size.width()} * size.height();
}

QSize Scaled(QSize size, int eighths) {
    const tjscalingfactor part{eighths, whole};
    return {TJSCALED(size.width(), part), TJSCALED(size.height(), part)};
}

// As small as a picture with too many pixels has to be, and while it is at it, as small as it may.
QSize DecodedSize(QSize size, QSize enough) {
    if (Pixels(size) <= MostPicturePixels || enough.isEmpty()) return size;
    const auto covers = [&enough](QSize scaled) {
        return scaled.width() >= enough.width() && scaled.height() >= enough.height();
    };
    int eighths = whole;
    while (eighths > 1 &&
           (Pixels(Scaled(size, eighths)) > MostPicturePixels || covers(Scaled(size, eighths - 1))))
        --eighths;
    return Scaled(size, eighths);
}

// Of the eighths those that the decoder has a fast way for.
QSize SmallSize(QSize size, QSize box) {
    if (box.isEmpty()) return DecodedSize(size, size);
    const QSize fitted = size.scaled(box, Qt::KeepAspectRatio);
    for (const int eighths : {1, 2, 4}) {
        const QSize small = Scaled(size, eighths);
        if (small.expandedTo(fitted) == small) return small;
    }
    return DecodedSize(size, fitted);
}

bool Decode(const Decoder& decoder, const QByteArray& bytes, QImage& image, int format) {
    // A picture that is cut off is only a warning to the decoder, which makes up the rest.
    return tjDecompress2(decoder.get(), reinterpret_cast<const uchar*>(bytes.constData()),
                         static_cast<unsigned long>(bytes.size()), image.bits(), image.width(),
                         static_cast<int>(image.bytesPerLine()), image.height(), format,
                         TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS) == 0;
}

// Some cameras leave bytes between the last pixel and the end. Only what the decoder has complained
// of is taken away; nothing when it was something else.
QByteArray WithoutStrayBytes(const Decoder& decoder, const Jpeg& jpeg) {
    static const QRegularExpression complaint("(\\d+) extraneous bytes before marker 0xd9");
    const auto found = complaint.match(QString::fromLatin1(tjGetErrorStr2(decoder.get())));
    const qsizetype end = jpeg.Bytes.indexOf("\xFF\xD9", jpeg.Header.Pixels);
    const qsizetype count = found.captured(1).toLongLong();
    if (!found.hasMatch() || end < jpeg.Header.Pixels + count) return {};
    return QByteArray(jpeg.Bytes).remove(end - count, count);
}

// Printing inks, as everybody stores them: the more light, the higher.
QImage FromInks(const QImage& inks) {
    QImage image(inks.size(), QImage::Format_BGR888);
    for (int y = 0; y < image.height(); ++y) {
        const uchar* from = inks.constScanLine(y);
        uchar* to = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x, from += 4)
            for (const int ink : {2, 1, 0}) *to++ = static_cast<uchar>(from[ink] * from[3] / 255);
    }
    return image;
}

// choose: the size to decode to, from that of the file and what is enough.
FilePicture Read(const QByteArray& bytes, QSize enough, QSize (*choose)(QSize, QSize)) {
    const Decoder decoder(tjInitDecompress());
    Jpeg jpeg{bytes};
    if (!TakeHeader(decoder, jpeg)) return {.Fault = PictureFault::Unreadable};
    const bool onItsSide = OnItsSide(jpeg.Header.Orientation);
    const QSize size = choose(jpeg.Size, onItsSide ? enough.transposed() : enough);
    const qint64 most = jpeg.Header.Buffered ? mostBufferedPixels : mostPixels;
    if (Pixels(jpeg.Size) > most) return {.Fault = PictureFault::TooLarge};
    if (const PictureFault fault = SizeFault(size, bytes.size()); fault != PictureFault::None)
        return {.Fault = fault};
    if (Pixels(jpeg.Size) > bytes.size() * mostPixelsPerByte)
        return {.Fault = PictureFault::Unreadable};
    // The four colours of printing have four bytes, too.
    QImage image(size, jpeg.FourColours ? QImage::Format_RGB32 : QImage::Format_BGR888);
    if (image.isNull()) return {.Fault = PictureFault::TooLarge};
    const int format = jpeg.FourColours ? TJPF_CMYK : TJPF_BGR;
    if (!Decode(decoder, bytes, image, format)) {
        const QByteArray rest = WithoutStrayBytes(decoder, jpeg);
        if (rest.isEmpty() || !Decode(decoder, rest, image, format))
            return {.Fault = PictureFault::Unreadable};
    }
    if (jpeg.FourColours) image = FromInks(image);
    return {.Image = Upright(image, jpeg.Header.Orientation),
            .Fault = PictureFault::None,
            .Jpeg = !jpeg.FourColours,
            .Size = onItsSide ? jpeg.Size.transposed() : jpeg.Size};
}

}  // namespace

FilePicture ReadJpeg(const QByteArray& bytes, QSize enough) {
    return Read(bytes, enough, &DecodedSize);
}

FilePicture ReadSmallJpeg(const QByteArray& bytes, QSize box) {
    return Read(bytes, box, &SmallSize);
}
