#include "core/day_film.h"

#include "base/status_display.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "core/film_settings.h"
#include "core/main_state.h"
#include "core/public_names.h"
#include "core/run_state.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "texts/texts.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

constexpr int lookMilliseconds = 60'000;
// A film takes the line for longer than a picture.
constexpr qint64 mostPause = 3'600'000;
const QString unsentPrefix = QStringLiteral("unsent.");

}  // namespace

DayFilm::DayFilm(const Parts& ownParts, const QString& ownFolder)
    : parts(ownParts), folder(ownFolder + u'/'), look(parts.Wait.OwnClock(), lookMilliseconds) {
    connect(&look, &Timer::Tick, this, &DayFilm::Look);
    connect(&work, &FilmWork::Ended, this, &DayFilm::Made);
    // Whoever stops does not wait for a film.
    connect(&parts.Run, &RunStatus::Changed, this, [this] {
        if (sending && !parts.Run.Running()) parts.Transaction.GiveUpStep();
    });
    look.SetEnabled(true);
}

DayFilm::~DayFilm() {
    way.Close();
}

qint64 DayFilm::Now() const {
    return parts.Wait.OwnClock().Milliseconds();
}

QDate DayFilm::Yesterday() const {
    return parts.Wait.OwnClock().Now().date().addDays(-1);
}

QString DayFilm::Done() const {
    return folder + Yesterday().toString(Qt::ISODate) + QStringLiteral(".mp4");
}

QString DayFilm::Unsent() const {
    return folder + unsentPrefix + Yesterday().toString(Qt::ISODate) + QStringLiteral(".mp4");
}

bool DayFilm::Wanted() const {
    const Settings& values = parts.State.Values;
    return values.DayFilm && !values.ArchivePath.isEmpty() && parts.Run.Running() &&
           !parts.Wait.Closing();
}

void DayFilm::Look() {
    if (!Wanted() || work.Running() || copying || sending) return;
    if (tried != Yesterday()) again.Reset();
    tried = Yesterday();
    if (!again.Due(Now())) return;
    if (QFile::exists(Unsent())) {
        CopyToFolder();
    } else if (none != Yesterday() && !QFile::exists(Done())) {
        Make();
    }
}

void DayFilm::Make() {
    DropOld();
    (void)QDir().mkpath(folder);
    day = Yesterday();
    order = FilmOrderOf(parts.State.Values, parts.Locale);
    order.Part.From = WallTimeOf(day, QTime(0, 0));
    order.Part.To = WallTimeOf(day.addDays(1), QTime(0, 0));
    order.Every = 1;
    order.MostPictures = MostSeconds * order.Rate;
    order.Height = order.Height == 0 ? MostHeight : std::min(order.Height, MostHeight);
    order.Format = FilmFormat::Mp4;
    order.MostBytes = MostBytes;
    order.Gentle = true;
    order.File = Unsent();
    work.Start(order);
}

// Films of other days: published, or given up.
void DayFilm::DropOld() const {
    const QStringList names{QStringLiteral("*.mp4"), QStringLiteral("*.part")};
    QDir place(folder);
    for (const QString& name : place.entryList(names, QDir::Files)) place.remove(name);
}

void DayFilm::Made(const FilmResult& result) {
    if (parts.Wait.Closing()) return;
    again.Reset();
    if (result.Fault == FilmFault::NoPictures)
        none = day;  // the next one may have begun meanwhile
    else if (result.Fault != FilmFault::None)
        again.Failed(Now(), Now(), mostPause);
    if (result.Fault != FilmFault::NoPictures)
        parts.Display.ShowStatus(FilmText(parts.Words, order, result));
}

// On another thread: the folder may be on a disk far away.
void DayFilm::CopyToFolder() {
    const Settings& values = parts.State.Values;
    if (!values.LocalMode() || values.Verzeichnis.isEmpty()) return;
    copying = true;
    const QString target = values.Verzeichnis + PublicNames::Film;
    StartDetached([this, back = way, from = Unsent(), target, began = Now()] {
        const bool copied = WholeFile::Copy(from, target);
        back.Post([this, copied, began] {
            copying = false;
            Sent(copied, began);
        });
    });
}

void DayFilm::SendWhenDue() {
    const bool possible = Wanted() && !parts.State.Values.LocalMode() && parts.Net.Online();
    if (!possible || work.Running() || !again.Due(Now()) || !QFile::exists(Unsent())) return;
    const qint64 began = Now();
    sending = true;
    const bool sent = parts.Transaction.PublishBeside(Unsent(), PublicNames::Film);
    sending = false;
    if (parts.Wait.Closing()) return;
    parts.Run.Enter(RunState::Waiting);
    parts.Display.ShowUpload(0);
    Sent(sent, began);
}

void DayFilm::Sent(bool sent, qint64 began) {
    if (!sent) {
        again.Failed(began, Now(), mostPause);
        parts.Display.ShowStatus(parts.Words.Get("frmFilm", "NotSent"));
        return;
    }
    (void)QFile::rename(Unsent(), Done());
    parts.Display.ShowStatus("wait...");
}
