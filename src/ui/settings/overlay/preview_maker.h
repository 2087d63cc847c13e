#pragma once

#include "base/profile_file.h"
#include "base/status_hub.h"
#include "picture/overlay/overlays.h"
#include "picture/overlay/text_file.h"
#include "ui/settings/overlay/preview_camera.h"

// Makes the picture that would be published with other settings than those of the file. It comes
// out of the same routines as the published ones, in memory alone and with turns of its own, so
// that the upload cycle notices nothing.
class PreviewMaker {
  public:
    // Both outlive this.
    PreviewMaker(Program& ownCore, const Texts& ownWords);

    // The picture as it would be with `entries` in place of what the settings file says; null when
    // none would be published. Rows and pictures that take turns stay where they are.
    [[nodiscard]] QImage Make(const QList<ProfileEntry>& entries);
    // From here on the next row of the text and the next picture of the list are shown.
    void Turn() { before = after; }
    // Begins with the first row and the first picture again.
    void Restart() { before = after = Fresh(); }
    // Frees what costs memory until the next picture.
    void Rest();

    PreviewCamera Camera;

  private:
    [[nodiscard]] Overlays Fresh();

    Program& core;
    StatusHub nobody;  // faults show in the preview itself
    TextFileReader textFile;
    Overlays before;  // the turns as they were before the picture shown
    Overlays after;
};
