#include "film/film_pictures.h"

#include "base/detached_thread.h"
#include "film/film_plan.h"
#include "picture/bitmap/jpeg_file.h"
#include "picture/overlay/date_time_form.h"
#include "picture/overlay/text_drawing.h"
#include "picture/overlay/text_style.h"

#include <QFile>
#include <QMutex>
#include <QPainter>
#include <QThread>
#include <QWaitCondition>

#include <algorithm>
#include <map>

namespace {

constexpr std::size_t ahead = 8;  // pictures that are ready before they are wanted

QImage OnFilm(QImage picture, QSize size) {
    const QRect place = PlaceOnFilm(picture.size(), size);
    if (picture.size() != place.size())
        picture = picture.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_BGR888);
    if (picture.size() == size) return picture;
    QImage film(size, QImage::Format_BGR888);
    film.fill(Qt::black);
    QPainter(&film).drawImage(place.topLeft(), picture);
    return film;
}

void Stamp(QImage& picture, WallTime at, const QLocale& locale) {
    constexpr int lowerRight = 8;
    const QDateTime time = LocalTimeOf(at);
    TextSurface surface{.Picture = picture,
                        .Font = PictureFont({}, UsualFontPixels(picture.height())),
                        .Background = QColor(Qt::black)};
    PrintTextAligned(surface,
                     FormatDate(DateForm::System, time.date(), locale) + u' ' +
                         FormatTime(TimeForm::Minutes, time.time(), locale),
                     lowerRight, true);
}

}  // namespace

QImage ReadArchived(const QString& path, QSize box) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > MostPictureBytes) return {};
    return ReadSmallJpeg(file.readAll(), box).Image;
}

struct FilmPictures::Shared {
    std::vector<ArchivedPicture> Pictures;
    Look Wanted;
    QMutex Mutex;
    QWaitCondition Changed;
    std::map<std::size_t, QImage> Ready;
    std::size_t Taken;  // the next that nobody reads yet
    std::size_t Shown;  // the next that is wanted
    bool Over = false;

    [[nodiscard]] QImage Read(std::size_t number) const {
        const ArchivedPicture& one = Pictures[number];
        QImage picture = ReadArchived(one.File, Wanted.Size);
        if (picture.isNull()) return picture;
        picture = OnFilm(std::move(picture), Wanted.Size);
        if (Wanted.Stamp) Stamp(picture, one.At, Wanted.Locale);
        return picture;
    }

    // The number of the next to be read, when there is room for it.
    [[nodiscard]] std::optional<std::size_t> Take() {
        const QMutexLocker lock(&Mutex);
        while (!Over && Taken >= Shown + (Wanted.Alone ? 1 : ahead)) Changed.wait(&Mutex);
        if (Over || Taken >= Pictures.size()) return {};
        return Taken++;
    }

    void ReadAll() {
        while (const auto number = Take()) {
            QImage picture = Read(*number);
            const QMutexLocker lock(&Mutex);
            Ready[*number] = std::move(picture);
            Changed.wakeAll();
        }
    }
};

FilmPictures::FilmPictures(std::vector<ArchivedPicture> pictures, std::size_t first,
                           const Look& look)
    : shared(new Shared{.Pictures = std::move(pictures),
                        .Wanted = look,
                        .Mutex = {},
                        .Changed = {},
                        .Ready = {},
                        .Taken = first,
                        .Shown = first}) {
    constexpr int most = 4;
    // The encoder needs more than all of them.
    const int threads = look.Alone ? 1 : std::clamp(QThread::idealThreadCount() / 2, 1, most);
    for (int i = 0; i < threads; ++i) {
        const auto work = [own = shared] { own->ReadAll(); };
        StartDetached(work);
    }
}

FilmPictures::~FilmPictures() {
    const QMutexLocker lock(&shared->Mutex);
    shared->Over = true;
    shared->Changed.wakeAll();
}

std::optional<QImage> FilmPictures::Next(const std::function<bool()>& cancelled) {
    constexpr unsigned long pause = 100;  // milliseconds
    const QMutexLocker lock(&shared->Mutex);
    const std::size_t number = shared->Shown;
    while (!shared->Ready.contains(number)) {
        if (cancelled()) return {};
        shared->Changed.wait(&shared->Mutex, pause);
    }
    QImage picture = std::move(shared->Ready[number]);
    shared->Ready.erase(number);
    ++shared->Shown;
    shared->Changed.wakeAll();
    return picture;
}
