#pragma once

#include "film/archive_listing.h"

#include <QImage>

#include <functional>
#include <memory>
#include <optional>

// The picture in a JPEG file, for a place of at most that size: decoded as small as it may be; a
// null image when it cannot be read. box: empty, in its own size.
[[nodiscard]] QImage ReadArchived(const QString& file, QSize box);

// Pictures as a film shows them, read ahead on threads of its own while others are encoded.
class FilmPictures {
  public:
    struct Look {
        QSize Size = {};
        bool Stamp = false;  // date and time in the corner
        bool Alone = false;  // one thread, which reads no more than the next picture
        QLocale Locale = {};
    };
    // From the picture `first` of the list on.
    FilmPictures(std::vector<ArchivedPicture> pictures, std::size_t first, const Look& look);
    // What is still being read is left behind.
    ~FilmPictures();
    Q_DISABLE_COPY_MOVE(FilmPictures)

    // The next picture, Format_BGR888 in the film's size, the rest of it black; a null image where
    // it cannot be read. None when cancelled, which is asked ten times a second while it waits.
    [[nodiscard]] std::optional<QImage> Next(const std::function<bool()>& cancelled);

  private:
    struct Shared;
    std::shared_ptr<Shared> shared;
};
