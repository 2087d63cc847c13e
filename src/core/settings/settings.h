#pragma once

#include "core/settings/interval.h"
#include "picture/picture_settings.h"

#include <QString>
#include <QStringList>

// All settings as LoadSettings read them, brought into their ranges; the values that stand here
// are the defaults. Fields are named after their keys; those of the sections "Text" and "Picture"
// carry the section's name in front. What a picture needs of them is a part of its own.
struct Settings : PictureSettings {
    bool lastpictures = false;
    int lastpictureanz = 4;  // pictures
    QString Protocol;        // see docs/settings.md; empty: plain FTP
    QString User;
    QString PW;
    int Port = 21;
    QString FileMode = "644";  // of the public picture, octal; empty: as the server makes it
    bool DataFromAnywhere = false;
    bool Passive = false;
    QString KeyFile;
    QString Trusted;  // a certificate's SHA-256, or an SSH host key's
    QString Region;
    QString Bucket;
    QString CacheSeconds;  // empty: as long as the interval
    bool Anwahl = false;
    bool Abwahl = false;
    QString AWName;
    bool Autostart = false;
    bool Notify = true;
    QString Name;  // of this camera among several
    bool LogFile = true;
    QString PageTitle;  // of the web page; empty: Name
    QString PageFile = "index.html";
    bool OfflinePic = false;
    bool UseOfflineFilter = false;
    int Quali = 0;
    QString Treiber;
    bool Preview = false;
    bool StretchPreview = false;
    bool CenterVideo = false;
    int Framerate = UnsetInterval;  // milliseconds, 1 to 60000
    int Uptime = 0;                 // minutes
    bool OnTheMinute = false;       // pictures at full multiples of the interval
    QString Hours;                  // see Hours::Parse; empty: always
    QString Place;                  // LATITUDE, LONGITUDE
    bool OutsideLast = false;       // outside the hours the last picture stays
    int OfflineAfter = 0;           // minutes without a new picture; 0: never
    QString CaptureFormat;          // WIDTHxHEIGHT or WIDTHxHEIGHT@FPS
    int CameraPatience = 15;        // seconds
    int PositionX = 0;
    int PositionY = 0;
    QString Sprache = "english";
    QString Skin = "Default";

    int FilmEvery = 1;   // every n-th picture of the archive
    int FilmRate = 25;   // pictures a second
    int FilmFormat = 0;  // see FilmFormat in film/film_plan.h
    int FilmSize = 0;    // the place in FilmHeights
    bool FilmStamp = false;
    bool DayFilm = false;

    int PicturePic = 0;  // the entry of the list that was chosen last

    QStringList Cameras;         // the operator's own, each NAME|ADDRESS
    QStringList CameraControls;  // what was adjusted in cameras, each CAMERA|CONTROL|VALUE

    // Milliseconds from one picture to the next.
    [[nodiscard]] qint64 TotalInterval() const { return ::TotalInterval({Framerate, Uptime}); }
};
