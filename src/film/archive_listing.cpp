#include "film/archive_listing.h"

#include "picture/archive/archive_names.h"

#include <QDirIterator>

#include <algorithm>
#include <tuple>

namespace {

// More than a film can have; a longer list would only take memory.
constexpr std::size_t mostPictures = 1'000'000;

class Lister {
  public:
    Lister(const ArchivePart& ownPart, const std::function<bool()>& ownCancelled)
        : part(ownPart), cancelled(ownCancelled), times(part.Locale) {}

    ArchiveListing List() {
        result.Readable = QDir(part.Folder).exists();
        if (part.Folder.isEmpty() || !result.Readable) return {.Pictures = {}, .Readable = false};
        AddFolder(part.Folder);
        QDirIterator folders(part.Folder, QDir::Dirs | QDir::NoDotAndDotDot);
        while (folders.hasNext() && !Full()) {
            folders.next();
            const QDate day = DayOfFolder(folders.fileName());
            if (day.isValid() && Overlaps(day)) AddFolder(folders.filePath());
        }
        std::ranges::sort(result.Pictures, {},
                          [](const ArchivedPicture& each) { return std::tie(each.At, each.File); });
        return std::move(result);
    }

  private:
    [[nodiscard]] bool Full() const {
        return result.Pictures.size() >= mostPictures || (cancelled && cancelled());
    }

    [[nodiscard]] bool Overlaps(const QDate& day) const {
        return WallTimeOf(day, QTime(0, 0)) < part.To &&
               WallTimeOf(day.addDays(1), QTime(0, 0)) > part.From;
    }

    void AddFolder(const QString& folder) {
        // By its name alone: to ask the disk about each of them takes long.
        QDirIterator files(folder, {QStringLiteral("*.jpg")}, QDir::Files);
        while (files.hasNext() && !Full()) {
            const QString path = files.next();
            const auto named = times.Of(files.fileName());
            const WallTime at = named ? *named : WallTimeOf(files.fileInfo().lastModified());
            if (at >= part.From && at < part.To) result.Pictures.push_back({at, path});
        }
    }

    const ArchivePart& part;
    const std::function<bool()>& cancelled;
    ArchiveTimes times;
    ArchiveListing result;
};

}  // namespace

ArchiveListing ListArchive(const ArchivePart& part, const std::function<bool()>& cancelled) {
    return Lister(part, cancelled).List();
}
