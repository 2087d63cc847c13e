#pragma once

#include "picture/bitmap/bitmap_file.h"

#include <QImage>
#include <QLocale>
#include <QStringList>

// What the pictures have in common, whatever their settings: where the program is, and what is
// known of the camera and of the last picture.
struct PictureState {
    QString ProgramFolder;
    QStringList InstalledFolders = {};  // where copies lie of what the program folder does not have
    QLocale Locale = QLocale::system();  // of the date on pictures and of the archive's names
    bool CameraRunning = false;
    bool PreviewLock = false;  // the preview stays as it is, whatever the settings say

    // The file that the last picture could not be written to; empty when it was.
    QString Unwritten = {};
    QImage Picture2 = {};              // the drawing surface, Format_BGR888
    BITMAPINFOHEADER LastHeader = {};  // of the last picture that was encoded

    // The folders that overlays and offline pictures are looked for in, in this order.
    [[nodiscard]] QStringList ReadingFolders() const {
        return QStringList{ProgramFolder} + InstalledFolders;
    }
};
