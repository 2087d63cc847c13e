#pragma once

#include "base/status_display.h"
#include "base/waiting.h"
#include "picture/bitmap/picture_file.h"
#include "picture/picture_pipeline.h"

// Makes the pictures that tell viewers that the camera is off, out of the operator's file in the
// folder "Offline": the file itself, or the camera picture blended with it. They are always encoded
// at quality 80.
class OfflineFilter {
  public:
    // All of them must outlive the filter.
    OfflineFilter(PictureState& state, PicturePipeline& pictures, Waiting& waiting,
                  StatusDisplay& display);

    // The picture to publish: the offline file, or, where that cannot be used, the one that came
    // with the program, or a plain grey one, because the camera's must not stay. What is wrong with
    // a file, the status says. enough: see ReadPicture.
    struct Source {
        QString Path;  // empty: the plain one
        FilePicture Picture;
    };
    [[nodiscard]] Source ReadOffline(const PictureSettings& settings, QSize enough);

    // Blends `percent` of the offline file into the picture that MakePicture made last and encodes
    // the result in its place. Handles pending events all the while. Returns whether it was made;
    // the status says why not.
    [[nodiscard]] bool ApplyOfflineFilter(int percent, const PictureSettings& settings);

    // The blend alone, in place in the camera picture; both are Format_BGR888. Returns false when
    // the program closes meanwhile.
    [[nodiscard]] bool Blend(QImage& camera, const QImage& offline, int percent);

    // Encodes a picture as `target`, in place of a file of that name. Returns whether it was
    // written.
    [[nodiscard]] static bool SaveAsJpeg(const QImage& picture, const QString& target);

    // While a blend runs.
    [[nodiscard]] bool Busy() const { return busy; }

  private:
    [[nodiscard]] QStringList OfflinePaths(const PictureSettings& settings) const;
    void ShowFault(PictureFault fault);
    [[nodiscard]] bool EncodeBlend(const QImage& picture, PictureSettings settings);

    PictureState& state;
    PicturePipeline& pictures;
    Waiting& waiting;
    StatusDisplay& display;
    bool busy = false;
};
