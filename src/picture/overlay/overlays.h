#pragma once

#include "base/clock.h"
#include "picture/overlay/overlay_steps.h"
#include "picture/overlay/picture_overlay.h"
#include "picture/overlay/text_overlay.h"

// Everything that is put on a frame: the overlay picture, and over it the text.
class Overlays : public OverlaySteps {
  public:
    // All of them must outlive the overlays.
    Overlays(PictureState& pictureState, StatusDisplay& display, const Clock& ownClock)
        : state(pictureState),
          clock(ownClock),
          text(pictureState, display),
          picture(pictureState, display) {}

    void BuildOverlayText() override { text.BuildOverlayText(state.OverlayMode, clock.Now()); }
    [[nodiscard]] bool StampOverlayPicture() override { return picture.StampOverlayPicture(); }
    void DrawOverlayText() override { text.DrawOverlayText(); }

  private:
    PictureState& state;
    const Clock& clock;
    TextOverlay text;
    PictureOverlay picture;
};
