#pragma once

#include "picture/bitmap/picture_file.h"

// Keeps the overlay decoded that was read last, because the next picture most likely wants the same
// one. It is read again when path, size or time of modification are others than before.
class OverlayReader {
  public:
    // What is in the file now; the picture lives until the next call. An empty path counts as a
    // missing file.
    const FilePicture& Read(const QString& path);

  private:
    struct Stamp {
        QString Path;
        qint64 Size = -1;
        qint64 Modified = 0;  // milliseconds

        bool operator==(const Stamp&) const = default;
    };

    Stamp known;
    bool settled = false;  // a later write cannot have left the same stamp
    FilePicture picture;
};
