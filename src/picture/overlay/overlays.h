#pragma once

#include "picture/overlay/picture_overlay.h"
#include "picture/overlay/text_overlay.h"

#include <QRegion>

// Everything that is put on a frame: the overlay picture, and over it the text. A copy goes on with
// the turns of rows and pictures on its own.
class Overlays {
  public:
    // display: outlives the overlays. places: where overlay pictures are looked for. locale: the
    // language of the date.
    Overlays(StatusDisplay& display, const QStringList& places, const QLocale& locale)
        : text(display, locale), overlay(display, places) {}

    // Makes the picture to publish out of a frame (Format_BGR888) taken at `now`. To be called once
    // a picture, because rows and pictures take turns. Returns false when nothing may be published.
    [[nodiscard]] bool PutOn(QImage& picture, const OverlaySettings& settings,
                             const QDateTime& now) {
        text.BuildOverlayText(settings, now);
        changed = {};
        if (settings.WithPicture()) {
            if (!overlay.StampOverlayPicture(picture, settings)) return false;
            changed = overlay.Stamped();
        }
        if (settings.WithText()) changed |= text.DrawOverlayText(picture, settings);
        return true;
    }

    // The part of that picture outside of which it is as the frame was.
    [[nodiscard]] const QRegion& Changed() const { return changed; }

  private:
    QRegion changed;
    TextOverlay text;
    PictureOverlay overlay;
};
