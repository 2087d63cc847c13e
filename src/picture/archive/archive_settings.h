#pragma once

#include <QString>

// What is kept of the pictures on this machine. Fields are named after their keys.
struct ArchiveSettings {
    bool Archive = false;
    QString ArchivePath;          // full path with a separator at the end; empty: no archive
    bool ArchiveIso = false;      // names that sort, instead of those with the system's date
    bool ArchiveFolders = false;  // one for each day
    int ArchiveEvery = 1;         // the first of so many pictures
    int ArchiveDays = 0;          // 0: for good
    int ArchiveMegabytes = 0;     // 0: as many as there is room for
};
