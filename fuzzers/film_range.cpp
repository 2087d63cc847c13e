#include "core/film_range.h"

#include "fuzzer.h"

const Fuzzer filmRange("film_range", [](const QByteArray& bytes) {
    const QByteArrayList parts = Parts(bytes, 2);
    const auto range =
        FilmRange::Parse(QString::fromUtf8(parts[0]), QString::fromUtf8(parts[1]), "f.mp4");
    if (!range) return;
    MUST(range->From.isValid() && range->To.isValid() && range->From < range->To);
    const auto text = [](const QDateTime& time) { return time.toString("yyyy-MM-dd'T'HH:mm"); };
    const auto again = FilmRange::Parse(text(range->From), text(range->To), "f.mp4");
    MUST(again && again->From == range->From && again->To == range->To);
});
