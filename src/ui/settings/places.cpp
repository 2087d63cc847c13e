#include "ui/settings/places.h"

#include <QDir>
#include <QStorageInfo>

namespace {

bool HaveLetters() {
    return QDir::rootPath() != QStringLiteral("/");
}

// Where desktops and operators mount what can be taken out again.
bool IsMedium(const QString& folder) {
    for (const char* above : {"/media/", "/run/media/", "/mnt/", "/Volumes/"})
        if ((folder + u'/').startsWith(QLatin1String(above))) return true;
    return false;
}

}  // namespace

QList<Place> FixedPlaces() {
    if (!HaveLetters())
        return {{Place::Kind::Home, {}, QDir::homePath()},
                {Place::Kind::Whole, {}, QDir::rootPath()}};
    QList<Place> places;
    for (const QFileInfo& drive : QDir::drives())
        places << Place{Place::Kind::Drive, {}, drive.absolutePath()};
    return places;
}

QList<Place> MountedPlaces() {
    QList<Place> places;
    if (HaveLetters()) return places;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (IsMedium(volume.rootPath()))
            places << Place{Place::Kind::Drive, QDir(volume.rootPath()).dirName(),
                            volume.rootPath()};
    return places;
}

int PlaceOf(const QList<Place>& places, const QString& folder) {
    const auto slashed = [](const QString& path) {
        return path.endsWith(u'/') ? path : path + u'/';
    };
    const Qt::CaseSensitivity cases = HaveLetters() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    int nearest = -1;
    qsizetype longest = 0;
    for (int i = 0; i < places.size(); ++i) {
        const QString above = slashed(places[i].Folder);
        if (!slashed(folder).startsWith(above, cases) || above.size() <= longest) continue;
        nearest = i;
        longest = above.size();
    }
    return nearest;
}
