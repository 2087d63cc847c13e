#pragma once

#include "picture/bitmap/picture_file.h"

#include <QByteArray>

// Decodes a JPEG, turned as its EXIF data says, as Format_BGR888; every part of it must be there.
// enough: see ReadPicture.
[[nodiscard]] FilePicture ReadJpeg(const QByteArray& bytes, QSize enough);

// The same, decoded as small as a picture that is fitted into the box needs to be: an eighth, a
// quarter or half of its size, or whole. box: empty, whole.
[[nodiscard]] FilePicture ReadSmallJpeg(const QByteArray& bytes, QSize box);
