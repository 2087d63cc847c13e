#pragma once

#include <QList>
#include <QString>

// Where a search for a folder may begin: the drives where drives have letters; elsewhere the home
// folder, the whole tree and the media that are mounted.
struct Place {
    enum class Kind { Home, Whole, Drive };

    Kind What = Kind::Drive;
    QString Name;    // of a medium; may be empty
    QString Folder;  // full path
};

// Those that are known without asking any device.
[[nodiscard]] QList<Place> FixedPlaces();

// Media and mounted folders besides; may wait for devices.
[[nodiscard]] QList<Place> MountedPlaces();

// The index of the place that the folder belongs to, the nearest one; -1 for none.
[[nodiscard]] int PlaceOf(const QList<Place>& places, const QString& folder);
