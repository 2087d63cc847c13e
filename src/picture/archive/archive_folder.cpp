#include "picture/archive/archive_folder.h"

#include "base/whole_file.h"
#include "picture/archive/archive_names.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

namespace {

constexpr qint64 megabyte = 1024 * 1024;
constexpr qint64 leastRoom = 200 * megabyte;
constexpr qint64 enoughRoom = 220 * megabyte;  // to go on: no to and fro at the limit
constexpr int portion = 200;                   // files that are removed at a time
constexpr qint64 mostIndexBytes = 64 * megabyte;
constexpr qint64 firstLook = 700;  // milliseconds
constexpr std::size_t mostNames = 8'000'000;

const QString ownFolder = QStringLiteral(".stillpost");
const QString indexEnding = QStringLiteral(".txt");
const QString dayFile = QStringLiteral("/day");

std::filesystem::path SystemPath(const QString& path) {
    return path.toStdU16String();
}

size_t Mark(QByteArrayView path) {
    return qHash(path);
}

QByteArray NameOf(const std::filesystem::path& path) {
    const std::u8string name = path.filename().u8string();
    return {reinterpret_cast<const char*>(name.data()), static_cast<qsizetype>(name.size())};
}

// The names that are there, as sorted marks. Nothing is asked about the files: of a million that
// would take minutes. Where the names alone take long, every file counts as there; those that are
// not are found out when their day is removed.
class Names {
  public:
    explicit Names(const QString& folder) {
        Add(folder, {}, true);
        std::ranges::sort(marks);
    }
    [[nodiscard]] bool Contain(QByteArrayView path) const {
        return !complete || std::ranges::binary_search(marks, Mark(path));
    }

  private:
    void Add(const QString& folder, const QByteArray& above, bool withDays) {
        std::error_code failed;
        std::filesystem::directory_iterator entry(SystemPath(folder), failed);
        const std::filesystem::directory_iterator end;
        for (; !failed && entry != end && complete; entry.increment(failed)) {
            complete = marks.size() < mostNames && !late.hasExpired();
            const QByteArray name = NameOf(entry->path());
            const bool isDay =
                withDays && name.size() == 10 && DayOfFolder(QString::fromLatin1(name)).isValid();
            if (isDay)
                Add(folder + QString::fromLatin1(name), name + '/', false);
            else
                marks.push_back(Mark(above + name));
        }
    }

    QDeadlineTimer late{firstLook};
    bool complete = true;
    std::vector<size_t> marks;
};

QByteArray ReadSmall(const QString& path, qint64 most) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > most) return {};
    return file.read(most);
}

// Behind half a line, as a power cut leaves it, a new one begins.
bool Append(const QString& path, const QByteArray& line) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return false;
    char before = '\n';
    if (file.size() > 0) file.seek(file.size() - 1) && file.getChar(&before);
    file.seek(file.size());
    return file.write(before == '\n' ? line : '\n' + line) >= line.size();
}

}  // namespace

ArchiveFolder::ArchiveFolder(const QString& path, Room ownRoom)
    : folder(path), room(std::move(ownRoom)) {}

qint64 ArchiveFolder::RoomLeft(const QString& path) {
    std::error_code failed;
    const auto space = std::filesystem::space(SystemPath(path), failed);
    return failed ? -1 : static_cast<qint64>(std::min<std::uintmax_t>(space.available, INT64_MAX));
}

QString ArchiveFolder::IndexFile(const QDate& of) const {
    return folder + ownFolder + u'/' + DayFolder(of) + indexEnding;
}

// A disk that has come back may be another one.
bool ArchiveFolder::Ready() {
    const bool there = !folder.isEmpty() && QFileInfo(folder).isDir();
    const bool same = looked && (witness.isEmpty() || QFile::exists(witness));
    if (there && !same) Look();
    return looked = there;
}

void ArchiveFolder::Look() {
    days.clear();
    sum = {};
    open = {};
    left.clear();
    witness.clear();
    const QDir own(folder + ownFolder);
    day = ArchiveDay(DayOfFolder(QString::fromLatin1(ReadSmall(own.path() + dayFile, 10))));
    const QStringList files = own.entryList({u'*' + indexEnding}, QDir::Files, QDir::Name);
    if (files.isEmpty()) return;
    const Names names(folder);
    for (const QString& file : files) {
        const QDate of = DayOfFolder(QStringView(file).chopped(indexEnding.size()));
        if (!of.isValid()) continue;
        ForEachIndexLine(ReadSmall(own.filePath(file), mostIndexBytes),
                         [&](qint64 bytes, QByteArrayView path) {
                             if (names.Contain(path)) Change(of, {1, bytes});
                         });
        days[of];  // may have folders to be removed
    }
    if (!day.Known().isValid() && !days.empty()) day = ArchiveDay(days.begin()->first);
}

void ArchiveFolder::Change(const QDate& of, const ArchiveSum& by) {
    for (ArchiveSum* each : {&days[of], &sum}) {
        each->Pictures += by.Pictures;
        each->Bytes += by.Bytes;
    }
}

ArchiveSum ArchiveFolder::Sum() {
    return Ready() ? sum : ArchiveSum();
}

QString ArchiveFolder::NameFor(const ArchiveSettings& settings, const QDateTime& time,
                               const QLocale& locale) const {
    const QString above = settings.ArchiveFolders ? DayFolder(time.date()) + u'/' : QString();
    if (!settings.ArchiveIso) return above + SystemArchiveName(time, locale);
    int number = 1;
    while (number < MostInASecond && QFile::exists(folder + above + IsoArchiveName(time, number)))
        ++number;
    return above + IsoArchiveName(time, number);
}

ArchiveTrouble ArchiveFolder::Keep(const QByteArray& picture, const ArchiveSettings& settings,
                                   const QDateTime& time, const QLocale& locale) {
    if (!settings.ArchiveIso && !SystemNamesExist(locale)) return ArchiveTrouble::Name;
    if (!Ready()) return ArchiveTrouble::Folder;
    const qint64 rest = room(folder);
    full = rest >= 0 && rest < (full ? enoughRoom : leastRoom);
    if (full) return ArchiveTrouble::Full;
    const QString path = NameFor(settings, time, locale);
    // Only this one folder: where a disk is missing, none of its folders is made in its place.
    if (settings.ArchiveFolders) (void)QDir(folder).mkdir(DayFolder(time.date()));
    const bool written = WholeFile::Replace(
        folder + path, [&](QFile& file) { return file.write(picture) == picture.size(); });
    if (!written) return ArchiveTrouble::Folder;
    Note(time.date(), {picture.size(), path});
    return ArchiveTrouble::None;
}

void ArchiveFolder::Note(const QDate& of, const ArchiveEntry& entry) {
    (void)QDir(folder).mkdir(ownFolder);
    if (!Append(IndexFile(of), IndexLine(entry))) return;
    witness = IndexFile(of);
    const bool again = entry.Path == std::exchange(last, entry.Path);
    const qint64 before = std::exchange(lastBytes, entry.Bytes);
    Change(of, again ? ArchiveSum{0, entry.Bytes - before} : ArchiveSum{1, entry.Bytes});
}

void ArchiveFolder::FollowClock(const QDate& today, qint64 now) {
    const QDate before = day.Known();
    day.Follow(today, now);
    if (day.Known() == before || !QFileInfo(folder + ownFolder).isDir()) return;
    (void)WholeFile::Replace(folder + ownFolder + dayFile, [this](QFile& file) {
        return file.write(DayFolder(day.Known()).toLatin1()) > 0;
    });
}

bool ArchiveFolder::Tidy(const ArchiveSettings& settings, const QDate& today, qint64 now) {
    if (!Ready() || days.empty()) return false;
    FollowClock(today, now);
    const QDate oldest = days.begin()->first;
    const bool old =
        settings.ArchiveDays > 0 && oldest.addDays(settings.ArchiveDays) < day.Judges(today);
    const qint64 most = settings.ArchiveMegabytes * megabyte;
    const bool many = settings.ArchiveMegabytes > 0 && sum.Bytes > most;
    if (!old && !many) {
        // A day that was old until the clock was set again. With a limit of room it goes on soon.
        if (settings.ArchiveMegabytes <= 0) left = {};
        return false;
    }
    if (open != oldest || left.isEmpty()) OpenDay(oldest);
    left.isEmpty() ? CloseDay() : RemoveSome(old, most);
    return true;
}

// What is not there any more, or another file by now, is none of ours.
void ArchiveFolder::OpenDay(const QDate& of) {
    open = of;
    left.clear();
    stuck = false;
    Change(of, {-days[of].Pictures, -days[of].Bytes});
    ArchiveSum there;
    for (ArchiveEntry& entry : IndexEntries(ReadSmall(IndexFile(of), mostIndexBytes))) {
        const QFileInfo file(folder + entry.Path);
        const bool same = file.isFile() && (file.size() == entry.Bytes || file.size() == 0);
        const bool kept = unremovable.contains(entry.Path);
        stuck = stuck || kept;
        if (!same || kept) continue;
        ++there.Pictures;
        there.Bytes += entry.Bytes;
        left << std::move(entry);
    }
    Change(of, there);
}

void ArchiveFolder::RemoveSome(bool all, qint64 most) {
    for (int i = 0; i < portion && !left.isEmpty() && (all || sum.Bytes > most); ++i) {
        const ArchiveEntry entry = left.takeFirst();
        const QString file = folder + entry.Path;
        if (!QFile::remove(file) && QFile::exists(file)) unremovable << entry.Path;
        Change(open, {-1, -entry.Bytes});
    }
    if (!left.isEmpty()) return;
    OpenDay(open);  // pictures may have come
    if (left.isEmpty()) CloseDay();
}

// Nothing is left of the day. Its folder goes when nobody else has put anything into it.
void ArchiveFolder::CloseDay() {
    if (!stuck) QFile::remove(IndexFile(open));
    if (witness == IndexFile(open)) witness.clear();
    (void)QDir(folder).rmdir(DayFolder(open));
    days.erase(open);
    open = {};
    left = {};  // of a day with a picture each second some megabytes
}
