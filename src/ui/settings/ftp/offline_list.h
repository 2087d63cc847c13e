#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// A picture in the folder "Offline" of the program folder or of an installed copy.
struct OfflineEntry {
    QString Name;
    QString Path;  // full path

    bool operator==(const OfflineEntry&) const = default;
};

// The pictures of these places by name. Of two with one name the one of the earlier place counts,
// because that is the one that is published.
[[nodiscard]] QList<OfflineEntry> OfflinePictures(const QStringList& places);

// A name for a picture that is added: its own unless it is taken, "name (2).jpg" then.
[[nodiscard]] QString FreeName(const QString& name, const QStringList& taken);
