#pragma once

#include "film/film_plan.h"

// What a film is to be made of, and how.
struct FilmOrder {
    ArchivePart Part = {};
    int Every = 1;         // every n-th picture
    int MostPictures = 0;  // then fewer of them, evenly; 0: any number
    int Rate = UsualFilmRate;
    int Height = 0;  // see FilmSizeOf
    bool Stamp = false;
    FilmFormat Format = FilmFormat::Mp4;
    qint64 MostBytes = 0;  // about; 0: what good quality takes
    bool Gentle = false;   // takes a quarter of one processor at most, and four times as long
    QString File = {};     // replaced when the film is whole
};

enum class FilmFault {
    None,
    Cancelled,
    NoFolder,    // the archive is not there
    NoPictures,  // none in that time, or none of them can be read
    NoEncoder,   // FFmpeg has none that takes such a film
    DiskFull,
    CannotWrite,
};

struct FilmResult {
    FilmFault Fault = FilmFault::None;
    int Pictures = 0;  // in the film
    int Broken = 0;    // that could not be read
};

struct FilmWatch {
    std::function<void(int done, int total)> Progress;
    std::function<bool()> Cancelled;
};

// Makes a film of pictures of the archive, on the thread of the caller. It grows under another name
// beside its own; when anything fails, or it is cancelled, nothing is left of it.
[[nodiscard]] FilmResult MakeFilm(const FilmOrder& order, const FilmWatch& watch);
