#pragma once

#include "picture/bitmap/bitmap_file.h"

#include <QImage>
#include <QLocale>
#include <QStringList>

// What the picture cycle needs of the main state. Settings come from LoadSettings, except those
// that MakePicture reads anew for each picture.
struct PictureState {
    // Folders end in a separator, settings are as LoadSettings leaves them.
    QString ProgramFolder;
    QStringList InstalledFolders;  // where copies lie of what the program folder does not have
    QString SettingsFile;          // full path
    QString WorkPath;              // folder of "1pw.bmp", "1pw.jpg" and "cam.bmp"
    bool CameraRunning = false;
    bool PreviewLock = false;  // the preview stays as it is, whatever the settings say

    QString JPGQuality = QStringLiteral("50");  // per cent
    bool LocalMode = false;
    QString Verzeichnis;       // target folder of the local mode
    bool DeleteFirst = false;  // remove the old picture before the new one gets its name
    bool Archive = false;
    QString ArchivePath;
    QLocale Locale = QLocale::system();  // whose short date names the archive files

    // Of this cycle's overlay.
    int OverlayMode = 0;          // 0 to 5
    bool CombineOverlay = false;  // stamp the overlay picture
    bool OnlyOverlay = false;     // the overlay picture instead of the frame
    QString DateText;
    QString TimeText;
    QString OverlayText;

    // The folders that overlays and offline pictures are looked for in, in this order.
    [[nodiscard]] QStringList ReadingFolders() const {
        return QStringList{ProgramFolder} + InstalledFolders;
    }

    // The file that the last picture could not be written to; empty when it was.
    QString Unwritten;
    QImage Picture2;              // the drawing surface, Format_BGR888
    BITMAPINFOHEADER LastHeader;  // of the last picture that was encoded
};

// The whole number at the start of a setting's text ("75.9" is 75, "12x" 12, "" and "x" 0), within
// the range of an int.
[[nodiscard]] int WholeNumber(const QString& text);
