#pragma once

#include "film/film_plan.h"

#include <QFile>
#include <QImage>

#include <memory>

// Encodes pictures as a film, by the best encoder that FFmpeg has here: H.264, else MPEG-4, in MP4,
// VP9 or VP8 in WebM. The colours are those of BT.709, and players can begin before they have all
// of an MP4.
class FilmEncoder {
  public:
    struct Form {
        FilmFormat Format = FilmFormat::Mp4;
        QSize Size = {};  // even numbers
        int Rate = UsualFilmRate;
        qint64 BitRate = 0;  // bits a second at most; 0: as many as good quality takes
        int Threads = 0;     // of the encoder; 0: one for each processor
    };

    // The formats for which there is an encoder.
    [[nodiscard]] static bool Offers(FilmFormat format);

    // file: open for writing, empty; outlives the encoder.
    explicit FilmEncoder(QFile& file);
    ~FilmEncoder();
    Q_DISABLE_COPY_MOVE(FilmEncoder)

    // False: no encoder takes it, or the file does not take its beginning.
    [[nodiscard]] bool Open(const Form& form);
    // A picture of the form's size, Format_BGR888. False: the file takes no more.
    [[nodiscard]] bool Add(const QImage& picture);
    // What is still in the encoder, and the index. Without it the file is no film.
    [[nodiscard]] bool Finish();
    // What was wrong with the file when one of them has failed.
    [[nodiscard]] QFileDevice::FileError FileError() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};
