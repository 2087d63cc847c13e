#pragma once

#include "base/clock.h"
#include "core/retry.h"
#include "film/film_work.h"

class Connectivity;
class RunStatus;
class StatusDisplay;
class Texts;
class UploadTransaction;
class Waiting;
struct MainState;

// The film of the day before: made of the archive once midnight is over, while pictures are
// published, and public as "film.mp4" beside them. It lies in a folder of its own until the next
// one comes, so that a restart neither makes nor sends it again.
class DayFilm : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        Waiting& Wait;
        Connectivity& Net;
        UploadTransaction& Transaction;
        StatusDisplay& Display;
        const MainState& State;
        const Texts& Words;
        RunStatus& Run;
        const QLocale& Locale;  // of the archive's names
    };
    // All of them outlive it. folder: for the films; made when there is one.
    DayFilm(const Parts& ownParts, const QString& ownFolder);
    ~DayFilm() override;

    // Between two pictures: sends a film that waits for it over the connection that stands.
    void SendWhenDue();

    // What the film may be at most, whatever the settings say.
    static constexpr int MostSeconds = 30;
    static constexpr int MostHeight = 720;
    static constexpr qint64 MostBytes = 4'000'000;

  private:
    void Look();
    void Make();
    void Made(const FilmResult& result);
    void CopyToFolder();
    void Sent(bool sent, qint64 began);
    void DropOld() const;
    [[nodiscard]] bool Wanted() const;
    [[nodiscard]] QDate Yesterday() const;
    [[nodiscard]] QString Done() const;
    [[nodiscard]] QString Unsent() const;
    [[nodiscard]] qint64 Now() const;

    Parts parts;
    QString folder;
    Timer look;
    FilmWork work;
    FilmOrder order;  // of the film that is being made
    QDate day;        // that it is of
    QDate none;       // a day of which there are no pictures
    QDate tried;      // the day that `again` is about
    Retry again;
    bool sending = false;
    bool copying = false;
    WayBack way{*this};
};
