#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>

// The file formats that the artwork is delivered in.
namespace Encoders {

// JPEG of high quality with full colour resolution, so that coloured edges stay sharp.
[[nodiscard]] QByteArray Jpeg(const QImage& image);

// BMP with 24 bits a pixel; transparent pixels become magenta, the colour that windows cut away.
[[nodiscard]] QByteArray Bitmap(const QImage& image);

[[nodiscard]] QByteArray Png(const QImage& image);

// A Windows icon that holds every one of the pictures (square, at most 256 pixels wide).
[[nodiscard]] QByteArray Icon(const QList<QImage>& images);

// The sound of a soft key press: 16-bit mono WAV, 22050 Hz, 60 milliseconds.
[[nodiscard]] QByteArray ClickSound();

}  // namespace Encoders
