#include "encoders.h"

#include <turbojpeg.h>
#include <QBuffer>
#include <QDataStream>
#include <QPainter>
#include <QRandomGenerator>

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

namespace {

QByteArray Saved(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.save(&buffer, format)) throw std::runtime_error("a picture could not be written");
    return bytes;
}

}  // namespace

QByteArray Encoders::Jpeg(const QImage& image) {
    const QImage source = image.convertToFormat(QImage::Format_RGB888);
    const std::unique_ptr<void, int (*)(tjhandle)> encoder(tjInitCompress(), tjDestroy);
    unsigned char* data = nullptr;
    unsigned long size = 0;
    const int result = tjCompress2(encoder.get(), source.constBits(), source.width(),
                                   static_cast<int>(source.bytesPerLine()), source.height(),
                                   TJPF_RGB, &data, &size, TJSAMP_444, 95, TJFLAG_ACCURATEDCT);
    const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(data, tjFree);
    if (result != 0) throw std::runtime_error("a JPEG could not be encoded");
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

QByteArray Encoders::Bitmap(const QImage& image) {
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::magenta);
    QPainter(&flat).drawImage(0, 0, image);
    return Saved(flat, "BMP");
}

QByteArray Encoders::Png(const QImage& image) {
    return Saved(image, "PNG");
}

QByteArray Encoders::Icon(const QList<QImage>& images) {
    constexpr quint32 HeaderBytes = 6;
    constexpr quint32 EntryBytes = 16;
    QByteArray icon;
    QDataStream out(&icon, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << quint16(images.size());
    QByteArray pictures;
    const quint32 start = HeaderBytes + EntryBytes * static_cast<quint32>(images.size());
    for (const QImage& image : images) {
        const QByteArray picture = Png(image);
        // The sides are written as one byte each; 256 is 0.
        out << quint8(image.width()) << quint8(image.height()) << quint8(0) << quint8(0);
        out << quint16(1) << quint16(32) << quint32(picture.size());
        out << quint32(start + static_cast<quint32>(pictures.size()));
        pictures += picture;
    }
    return icon + pictures;
}

QByteArray Encoders::ClickSound() {
    constexpr int Rate = 22050;
    constexpr int Samples = Rate * 60 / 1000;
    QByteArray wave;
    QDataStream out(&wave, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto tag = [&out](const char* name) { out.writeRawData(name, 4); };
    tag("RIFF");
    out << quint32(36 + 2 * Samples);
    tag("WAVE");
    tag("fmt ");
    out << quint32(16) << quint16(1) << quint16(1) << quint32(Rate) << quint32(2 * Rate);
    out << quint16(2) << quint16(16);
    tag("data");
    out << quint32(2 * Samples);
    // A short burst of noise for the contact, a low tone that dies away for the body of the key.
    QRandomGenerator random(7);
    for (int i = 0; i < Samples; ++i) {
        const double time = double(i) / Rate;
        const double contact = (random.generateDouble() - 0.5) * std::exp(-time * 900);
        const double body = std::sin(2 * std::numbers::pi * 310 * time) * std::exp(-time * 130);
        const double fade = std::min(1.0, (Samples - i) / 200.0);
        out << qint16(std::lround(9000 * fade * (0.8 * contact + 0.6 * body)));
    }
    return wave;
}
