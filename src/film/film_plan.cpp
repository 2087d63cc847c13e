#include "film/film_plan.h"

#include <algorithm>

namespace {

// Of both sides: what every encoder and every player takes.
constexpr int longestSide = 4096;

int Even(int pixels) {
    return std::max(2, pixels & ~1);
}

}  // namespace

qsizetype ThinnedCount(qsizetype pictures, int every) {
    return (pictures + every - 1) / every;
}

std::vector<ArchivedPicture> Thinned(std::vector<ArchivedPicture> pictures, int every, int most) {
    const auto count = static_cast<qsizetype>(pictures.size());
    qsizetype step = std::max(1, every);
    if (most > 0) step = std::max(step, (count + most - 1) / most);
    std::vector<ArchivedPicture> kept;
    for (qsizetype i = 0; i < count; i += step)
        kept.push_back(std::move(pictures[static_cast<std::size_t>(i)]));
    return kept;
}

QSize FilmSizeOf(QSize first, int height) {
    if (first.isEmpty()) return {};
    QSize box(longestSide, height > 0 ? std::min(height, longestSide) : longestSide);
    const bool fits = first.boundedTo(box) == first;
    const QSize size = fits ? first : first.scaled(box, Qt::KeepAspectRatio);
    return {Even(size.width()), Even(size.height())};
}

QRect PlaceOnFilm(QSize picture, QSize film) {
    constexpr int evenCosts = 2;  // pixels, which make no other shape
    QSize size = picture.scaled(film, Qt::KeepAspectRatio).expandedTo({1, 1});
    const QSize gap = film - size;
    if (gap.width() <= evenCosts && gap.height() <= evenCosts) size = film;
    return {QPoint((film.width() - size.width()) / 2, (film.height() - size.height()) / 2), size};
}

qint64 BitRateFor(qint64 bytes, qsizetype pictures, int rate) {
    constexpr qint64 bits = 8;
    constexpr qint64 least = 50'000;
    return std::max(least, bytes * bits * rate / std::max<qsizetype>(pictures, 1));
}

qint64 TimeLeft(qint64 elapsed, int done, int total) {
    return done < 1 ? 0 : elapsed * (total - done) / done;
}
