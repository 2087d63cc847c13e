#include "film/film_work.h"

#include <QElapsedTimer>
#include <QSemaphore>

#include <atomic>

struct FilmWork::Job {
    std::atomic<bool> Cancelled = false;
    QSemaphore Over;
};

namespace {

// Every picture would be more than a window can show.
class Throttle {
  public:
    bool Due() {
        constexpr qint64 pause = 100;
        if (last.isValid() && last.elapsed() < pause) return false;
        last.start();
        return true;
    }

  private:
    QElapsedTimer last;
};

}  // namespace

FilmWork::FilmWork(QObject* parent) : QObject(parent) {}

FilmWork::~FilmWork() {
    constexpr int patience = 2000;
    way.Close();
    if (!job) return;
    job->Cancelled = true;
    (void)job->Over.tryAcquire(1, patience);
}

void FilmWork::Start(const FilmOrder& order) {
    if (job) return;
    job = std::make_shared<Job>();
    const auto work = [this, order, own = job, back = way] {
        Throttle throttle;
        const FilmResult result = MakeFilm(
            order, {.Progress =
                        [this, &back, &throttle](int done, int total) {
                            if (throttle.Due())
                                back.Post([this, done, total] { emit Progressed(done, total); });
                        },
                    .Cancelled = [&own] { return own->Cancelled.load(); }});
        own->Over.release();
        back.Post([this, result] {
            job.reset();
            emit Ended(result);
        });
    };
    StartDetached(work);
}

void FilmWork::Cancel() {
    if (job) job->Cancelled = true;
}
