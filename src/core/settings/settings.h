#pragma once

#include "core/settings/interval.h"

#include <QString>
#include <QStringList>

#include <array>

// All settings as LoadSettings read them, brought into their ranges, with the defaults in place.
// Fields are named after their keys; those of the sections "Text" and "Picture" carry the section's
// name in front.
struct Settings {
    bool lastpictures = false;
    int lastpictureanz = 4;  // pictures
    QString Server;
    QString Verzeichnis;  // empty without a server; in local mode a full path with a separator
    QString User;
    QString PW;
    int Port = 21;
    bool Delete = false;
    bool Anwahl = false;
    QString AWName;
    QString Offlinefile = "Offline.jpg";
    int Quali = 0;
    QString Treiber;
    bool Preview = false;
    bool StretchPreview = false;
    bool CenterVideo = false;
    bool Archive = false;
    QString ArchivePath;            // full path with a separator, or empty
    int Framerate = UnsetInterval;  // milliseconds, 1 to 60000
    int Uptime = 0;                 // minutes
    QString JPGQuality = "50";      // per cent, as written ("75.9")
    QString CaptureFormat;          // WIDTHxHEIGHT or WIDTHxHEIGHT@FPS
    QString Date;                   // index of the date format
    QString Time;                   // index of the time format
    int Overlay = 0;                // mode 0 to 5
    QString Text;                   // kind of the overlay text
    int Position = 0;               // 0 to 6
    int PositionX = 0;
    int PositionY = 0;
    QString Font;
    int Size = 0;       // points; 0: the drawing surface's own
    int Color = 0;      // red + 256 x green + 65536 x blue
    int BackColor = 0;  // the same
    bool Transparent = false;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    QString Overlayfile = "Overlay.bmp";  // file name
    QString OverlayPath;                  // full path of that file in overlay mode 4, else empty
    bool OverKombi = false;
    bool PictureEff = false;

    std::array<QString, 8> Lin;  // the text lines; left empty in overlay mode 3
    QString TextEffect;
    int TextPic = 0;
    int TextUB = 0;

    bool PictureCapture = false;
    int PicturePic = 0;
    int PicturePicGes = 0;  // entries of the list
    int PictureUB = 0;      // pictures

    QStringList Cameras;         // the operator's own, each NAME|ADDRESS
    QStringList CameraControls;  // what was adjusted in cameras, each CAMERA|CONTROL|VALUE
    QString WorkPath;            // full path with a separator
    QString Sprache;

    // Pictures go into the folder Verzeichnis instead of to a server.
    [[nodiscard]] bool LocalMode() const { return Server == "Local" || Server == "local"; }

    // Milliseconds from one picture to the next.
    [[nodiscard]] qint64 TotalInterval() const { return ::TotalInterval({Framerate, Uptime}); }
};
