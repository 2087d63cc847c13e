#pragma once

#include "picture/archive/archive_day.h"
#include "picture/archive/archive_index.h"
#include "picture/archive/archive_settings.h"
#include "picture/archive/archive_trouble.h"

#include <QDateTime>
#include <QLocale>
#include <QSet>

#include <functional>
#include <map>

// How many pictures there are, and their size.
struct ArchiveSum {
    qint64 Pictures = 0;
    qint64 Bytes = 0;
};

// The archive's folder with its bookkeeping. What the archive has written stands in ".stillpost"
// there, and nothing else is ever removed. Where that is lost, the pictures stay for good.
// The first call looks through the folder, the later ones count. Everything here waits for the
// disk: never on the user-interface thread.
class ArchiveFolder {
  public:
    // Bytes that are left at a place; below 0: not known.
    using Room = std::function<qint64(const QString& folder)>;

    // folder: full path with a separator at its end.
    explicit ArchiveFolder(const QString& ownFolder, Room ownRoom = RoomLeft);

    // Writes one picture under the name of its time. With the system's names a second one of the
    // same second replaces the first.
    [[nodiscard]] ArchiveTrouble Keep(const QByteArray& picture, const ArchiveSettings& settings,
                                      const QDateTime& time, const QLocale& locale);

    // Removes some of what is too old or too much. now: milliseconds that never go back. Returns
    // whether there is more to be removed.
    bool Tidy(const ArchiveSettings& settings, const QDate& today, qint64 now);

    // Of those that the archive has written. The second one does not look whether they are there.
    [[nodiscard]] ArchiveSum Sum();
    [[nodiscard]] const ArchiveSum& Known() const { return sum; }

    [[nodiscard]] static qint64 RoomLeft(const QString& folder);

  private:
    [[nodiscard]] bool Ready();
    void Look();
    void Change(const QDate& of, const ArchiveSum& by);
    [[nodiscard]] QString IndexFile(const QDate& of) const;
    [[nodiscard]] QString NameFor(const ArchiveSettings& settings, const QDateTime& time,
                                  const QLocale& locale) const;
    void Note(const QDate& of, const ArchiveEntry& entry);
    void FollowClock(const QDate& today, qint64 now);
    void OpenDay(const QDate& of);
    void RemoveSome(bool all, qint64 most);
    void CloseDay();

    QString folder;
    Room room;
    bool looked = false;
    QString witness;  // a file of the bookkeeping that must be there; empty: none
    bool full = false;
    std::map<QDate, ArchiveSum> days;
    ArchiveSum sum;
    ArchiveDay day;
    QString last;               // the path of the newest picture
    qint64 lastBytes = 0;       // its size
    QDate open;                 // the day that is being removed
    QList<ArchiveEntry> left;   // what is left of it
    bool stuck = false;         // some of it the system does not let go
    QSet<QString> unremovable;  // all of that, for this run
};
