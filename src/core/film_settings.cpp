#include "core/film_settings.h"

#include "base/paths.h"
#include "texts/texts.h"

namespace {

const QString section = QStringLiteral("frmFilm");

}  // namespace

FilmOrder FilmOrderOf(const Settings& settings, const QLocale& locale) {
    return {.Part = {.Folder = settings.ArchivePath, .Locale = locale},
            .Every = settings.FilmEvery,
            .Rate = settings.FilmRate,
            .Height = FilmHeights.at(static_cast<std::size_t>(settings.FilmSize)),
            .Stamp = settings.FilmStamp,
            .Format = static_cast<FilmFormat>(settings.FilmFormat)};
}

QString FilmText(const Texts& words, const FilmOrder& order, const FilmResult& result) {
    const auto text = [&words](const char* key) { return words.Get(section, QLatin1String(key)); };
    switch (result.Fault) {
        case FilmFault::None:
            break;
        case FilmFault::Cancelled:
            return text("Cancelled");
        case FilmFault::NoFolder:
            return text("NoFolder").arg(Paths::Native(order.Part.Folder));
        case FilmFault::NoPictures:
            return text("NoPictures");
        case FilmFault::NoEncoder:
            return text("NoEncoder");
        case FilmFault::DiskFull:
            return text("DiskFull").arg(Paths::Native(order.File));
        case FilmFault::CannotWrite:
            return text("CannotWrite").arg(Paths::Native(order.File));
    }
    const QString done = text("Done")
                             .arg(result.Pictures)
                             .arg(DurationText(qint64{1000} * result.Pictures / order.Rate));
    return result.Broken == 0 ? done : done + u' ' + text("Broken").arg(result.Broken);
}

QString DurationText(qint64 milliseconds) {
    constexpr qint64 minute = 60;
    constexpr int decimal = 10;
    const qint64 seconds = (milliseconds + 999) / 1000;
    const auto two = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    const QString rest = two(seconds % minute);
    const qint64 minutes = seconds / minute;
    if (minutes < minute) return QString::number(minutes, decimal) + u':' + rest;
    return QString::number(minutes / minute) + u':' + two(minutes % minute) + u':' + rest;
}
