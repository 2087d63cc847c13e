#pragma once

#include "film/archive_listing.h"

#include <QRect>

#include <array>

// The figures of a film, from those of its pictures.

// In the order of the setting FilmFormat.
enum class FilmFormat { Mp4, WebM };

// Heights to choose from, in the order of the setting FilmSize; 0: as the pictures are.
inline constexpr std::array FilmHeights{0, 1080, 720, 480, 360};
constexpr int UsualFilmRate = 25;  // pictures a second

// Every n-th of them, or less where they would be more than `most`; 0: any number.
[[nodiscard]] std::vector<ArchivedPicture> Thinned(std::vector<ArchivedPicture> pictures, int every,
                                                   int most = 0);

// How many of them Thinned leaves.
[[nodiscard]] qsizetype ThinnedCount(qsizetype pictures, int every);

// The size of a film whose first picture has that size, in even numbers as encoders want them:
// never higher than `height` (0: any) nor larger than encoders take, the shape kept.
[[nodiscard]] QSize FilmSizeOf(QSize first, int height);

// Where a picture of that size is put on a film: in the middle, as large as fits, the shape kept.
[[nodiscard]] QRect PlaceOnFilm(QSize picture, QSize film);

// Bits a second with which a film of that many pictures has no more than so many bytes.
[[nodiscard]] qint64 BitRateFor(qint64 bytes, qsizetype pictures, int rate);

// Milliseconds until all are done, when `done` of them took so long; 0 before the first.
[[nodiscard]] qint64 TimeLeft(qint64 elapsed, int done, int total);
