#pragma once

#include "base/detached_thread.h"
#include "film/film_maker.h"

// Makes films on another thread, one at a time.
class FilmWork : public QObject {
    Q_OBJECT

  public:
    explicit FilmWork(QObject* parent = nullptr);
    // Gives up what is under way, and waits two seconds at most until nothing is left of it.
    ~FilmWork() override;

    // Nothing while one is under way.
    void Start(const FilmOrder& order);
    // Ended tells when it has taken effect.
    void Cancel();
    [[nodiscard]] bool Running() const { return job != nullptr; }

  signals:
    // At most ten times a second.
    void Progressed(int done, int total);
    void Ended(const FilmResult& result);

  private:
    struct Job;
    std::shared_ptr<Job> job;  // null: nothing is under way
    WayBack way{*this};
};
