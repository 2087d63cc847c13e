#pragma once

#include <QIODevice>
#include <QImage>
#include <QStringList>

// Pictures that the operator has put into a folder of the program: overlays and the offline
// picture. What a file is, its content tells, not its name. Bitmaps of every depth, JPEG, PNG and
// GIF (the first picture of it) are read; nothing in a file is believed before it is checked, and
// what a header claims costs no more memory than so small a file can be worth.

enum class PictureFault {
    None,
    Missing,     // no such file
    TooLarge,    // more pixels or bytes than are ever decoded
    Unreadable,  // empty, cut off, damaged, being written at this moment, or no picture
};

// What was in a file.
struct FilePicture {
    QImage Image = {};  // Format_BGR888, or Format_ARGB32 where not all of it is opaque
    PictureFault Fault = PictureFault::Missing;
    bool Jpeg = false;  // a whole JPEG that any browser shows
    QSize Size = {};    // as in the file; the image is smaller where it was decoded so
};

// Up to 120 MB while it is decoded; an overlay of the largest camera is well below.
constexpr qint64 MostPicturePixels = 30'000'000;
constexpr qint64 MostPictureBytes = 64 * 1024 * 1024;

// Reads and decodes a picture file. Never returns half a picture. enough: a JPEG of more than
// MostPicturePixels is decoded smaller, down to what still covers this size; empty: it is too
// large.
[[nodiscard]] FilePicture ReadPicture(const QString& path, QSize enough = {});
// The same from a file or buffer that is open, at its beginning.
[[nodiscard]] FilePicture ReadPicture(QIODevice& file, QSize enough = {});

// What is wrong with a picture of this size, in pixels, in a file of so many bytes.
[[nodiscard]] PictureFault SizeFault(QSize size, qint64 bytes);

// The names of pictures that can be read, as patterns.
[[nodiscard]] QStringList PictureKinds();

// The full path of the picture `name` in `folder` below the first of the places that has it, all
// found without regard to case; '\' and '/' in the name separate. Empty when there is none, or when
// the name leads out of the folder.
[[nodiscard]] QString FindPicture(const QStringList& places, const QString& folder,
                                  const QString& name);

// The picture without transparency, on white, as Format_BGR888.
[[nodiscard]] QImage OpaquePicture(const QImage& image);
