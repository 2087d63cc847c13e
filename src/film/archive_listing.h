#pragma once

#include "film/archive_time.h"

#include <functional>
#include <vector>

struct ArchivedPicture {
    WallTime At = 0;
    QString File;  // full path
};

// The pictures of a part of the archive, the oldest first.
struct ArchiveListing {
    std::vector<ArchivedPicture> Pictures;
    bool Readable = true;  // the folder is there
};

// What is looked for.
struct ArchivePart {
    QString Folder;
    WallTime From = 0;
    WallTime To = 0;      // the first that is not among it
    QLocale Locale = {};  // of the pictures' names
};

// Lists the JPEG files of the folder and of its folders that are named after days. A file whose
// name tells no time counts with the time at which it was written. Takes seconds where there are a
// million of them; cancelled: asked between the files, ends it with what is found so far.
[[nodiscard]] ArchiveListing ListArchive(const ArchivePart& part,
                                         const std::function<bool()>& cancelled);
