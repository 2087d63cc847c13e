#include "film/film_maker.h"

#include "base/whole_file.h"
#include "film/film_encoder.h"
#include "film/film_pictures.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <algorithm>

namespace {

class Maker {
  public:
    Maker(const FilmOrder& ownOrder, const FilmWatch& ownWatch)
        : order(ownOrder), watch(ownWatch) {}

    FilmResult Make() {
        result.Fault = Prepare();
        if (result.Fault != FilmFault::None) return result;
        const bool written =
            WholeFile::Replace(order.File, [this](QFile& file) { return Write(file); });
        if (!written && result.Fault == FilmFault::None) result.Fault = FilmFault::CannotWrite;
        return result;
    }

  private:
    // Lists the pictures and finds the first that can be read, which gives the film its size.
    [[nodiscard]] FilmFault Prepare() {
        ArchiveListing listing = ListArchive(order.Part, watch.Cancelled);
        if (!listing.Readable) return FilmFault::NoFolder;
        pictures = Thinned(std::move(listing.Pictures), order.Every, order.MostPictures);
        for (; first < pictures.size() && size.isEmpty(); ++first) {
            if (watch.Cancelled()) return FilmFault::Cancelled;
            size = FilmSizeOf(ReadArchived(pictures[first].File, {}).size(), order.Height);
        }
        result.Broken = static_cast<int>(first);
        if (size.isEmpty()) return watch.Cancelled() ? FilmFault::Cancelled : FilmFault::NoPictures;
        --first;
        --result.Broken;
        return FilmFault::None;
    }

    [[nodiscard]] bool Write(QFile& file) {
        FilmEncoder encoder(file);
        const auto count = static_cast<qsizetype>(pictures.size());
        const qint64 bits =
            order.MostBytes > 0 ? BitRateFor(order.MostBytes, count, order.Rate) : 0;
        if (!encoder.Open({order.Format, size, order.Rate, bits, order.Gentle ? 1 : 0}))
            return Fail(encoder, FilmFault::NoEncoder);
        if (AddAll(encoder) && encoder.Finish()) return true;
        return Fail(encoder, FilmFault::CannotWrite);
    }

    [[nodiscard]] bool AddAll(FilmEncoder& encoder) {
        const int total = static_cast<int>(pictures.size());
        FilmPictures ahead(std::move(pictures), first,
                           {size, order.Stamp, order.Gentle, order.Part.Locale});
        for (int done = static_cast<int>(first); done < total; ++done) {
            watch.Progress(done, total);
            QElapsedTimer busy;
            busy.start();
            const auto picture = watch.Cancelled() ? std::nullopt : ahead.Next(watch.Cancelled);
            if (!picture) {
                result.Fault = FilmFault::Cancelled;
                return false;
            }
            if (picture->isNull())
                ++result.Broken;
            else if (++result.Pictures; !encoder.Add(*picture))
                return false;
            if (order.Gentle) Rest(busy.elapsed());
        }
        watch.Progress(total, total);
        return true;
    }

    // Not by the priority of threads: one that never has its turn may hold what others wait for.
    static void Rest(qint64 worked) {
        constexpr qint64 times = 3;
        constexpr qint64 longest = 1000;  // milliseconds
        QThread::msleep(static_cast<unsigned long>(std::min(longest, times * worked)));
    }

    // What the file says goes before the guess.
    bool Fail(const FilmEncoder& encoder, FilmFault guess) {
        if (result.Fault != FilmFault::None) return false;
        const QFileDevice::FileError error = encoder.FileError();
        result.Fault = error == QFileDevice::ResourceError ? FilmFault::DiskFull
                       : error != QFileDevice::NoError     ? FilmFault::CannotWrite
                                                           : guess;
        return false;
    }

    const FilmOrder& order;
    const FilmWatch& watch;
    FilmResult result;
    std::vector<ArchivedPicture> pictures;
    std::size_t first = 0;  // that can be read
    QSize size;
};

}  // namespace

FilmResult MakeFilm(const FilmOrder& order, const FilmWatch& watch) {
    return Maker(order, watch).Make();
}
