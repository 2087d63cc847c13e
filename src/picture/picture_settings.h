#pragma once

#include "picture/archive/archive_settings.h"
#include "picture/overlay/overlay_settings.h"

#include <QString>

// Where a picture goes and in which quality. Folders are full paths with a separator at the end.
struct PictureTarget : ArchiveSettings {
    QString WorkPath;  // folder of "1pw.bmp", "1pw.jpg" and "cam.bmp"
    QString Server;
    QString Verzeichnis;  // folder on the server or, in local mode, on this machine
    bool Delete = false;  // remove the old picture before the new one gets its name
    int JPGQuality = 50;  // per cent

    // Pictures go into the folder Verzeichnis instead of to a server.
    [[nodiscard]] bool LocalMode() const { return Server == "Local" || Server == "local"; }

    [[nodiscard]] QString WorkFile(const QString& name) const { return WorkPath + name; }
};

// Everything that one picture depends on, besides the camera.
struct PictureSettings : PictureTarget, OverlaySettings {
    bool CapturePreview = true;           // the camera's preview while pictures are made
    int FrozenAfter = 0;                  // minutes that a camera may show the same; 0: for ever
    QString Offlinefile = "Offline.jpg";  // name of a file in the folder "Offline"
};
