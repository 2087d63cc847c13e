#pragma once

#include "picture/archive/picture_archive.h"
#include "picture/capture_control.h"
#include "picture/overlay/overlays.h"
#include "picture/overlay/text_file.h"
#include "picture/picture_settings.h"
#include "picture/picture_state.h"
#include "picture/spare_file.h"
#include "picture/still_watch.h"

class MessageBoxes;
class StatusDisplay;
class Waiting;

// Makes the pictures: one frame of the camera becomes "1pw.jpg" in the working folder, by way of
// the bitmap "1pw.bmp", on which the overlays are put; the archive gets a copy. Keeping one cycle
// from starting inside another is the caller's business.
class PicturePipeline {
  public:
    // All of them must outlive the pipeline. The folders and the locale of `state` stay as they
    // are.
    PicturePipeline(PictureState& state, CaptureControl& capture, Waiting& waiting,
                    MessageBoxes& boxes, StatusDisplay& display);

    // Runs one cycle. Returns whether there is a new "1pw.jpg"; whatever fails, an older one stays
    // as it was. A camera that has shown the same for FrozenAfter minutes gives no picture.
    bool MakePicture(const PictureSettings& settings);

    // The file that the last cycle could not write; empty when it failed otherwise or not at all.
    [[nodiscard]] const QString& Unwritten() const { return state.Unwritten; }

    // What is wrong with the camera; empty when nothing is.
    [[nodiscard]] QString CameraTrouble() const;
    // Since when it has shown the same, clock milliseconds; nothing unless that is what is wrong.
    [[nodiscard]] const std::optional<qint64>& FrozenSince() const { return frozenSince; }
    // There was a time in which nobody looked at the camera.
    void ForgetStill() { still.Forget(); }

    // Of every picture that is encoded.
    [[nodiscard]] const PictureArchive& Archive() const { return archive; }

    // Encodes the "1pw.bmp" that is there, as the last step of a cycle does; same result. picture:
    // what is in it, where that is known.
    bool EncodeJpeg(const PictureSettings& settings, const QImage& picture = {});

    // The last steps of a cycle: saves the drawing surface as "1pw.bmp", encodes that and empties
    // the surface; same result.
    bool SaveAndEncode(const PictureSettings& settings);

    // Grabs a frame into "cam.bmp" of the working folder. Without one an older file stays.
    void SaveCamPreview(const PictureTarget& target);

    // Removes "1pw.jpg" and "1pw.bmp", and what is kept of it for the next one. Tries each up to
    // 1000 times, pending events handled between, because another program may hold them for a
    // moment.
    void DeleteWorkingFiles(const PictureTarget& target);

  private:
    bool SaveAndEncode(const PictureSettings& settings, const QRegion& changed);
    [[nodiscard]] bool CaptureFrame(const PictureSettings& settings);
    [[nodiscard]] bool Frozen(const PictureSettings& settings);
    void DeleteWorkingFile(const QString& file);

    PictureState& state;
    CaptureControl& capture;
    Waiting& waiting;
    MessageBoxes& boxes;
    Overlays overlays;
    TextFileReader textFile;
    SpareFile spare;
    PictureArchive archive;
    StillWatch still;
    std::optional<qint64> frozenSince;
};
