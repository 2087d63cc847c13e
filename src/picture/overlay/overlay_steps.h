#pragma once

// The steps of a picture cycle that put something on the frame. They work on Picture2 and on the
// overlay fields of the PictureState that the pipeline has read for this cycle.
class OverlaySteps {
  public:
    virtual ~OverlaySteps() = default;

    // Puts date, time and text of this cycle into the PictureState. Called once for each frame that
    // was grabbed, in every overlay mode, before anything is drawn.
    virtual void BuildOverlayText() = 0;

    // Loads "1pw.bmp" (or the overlay alone) into Picture2 and stamps the overlay picture on it.
    // Returns false when Picture2 does not hold this cycle's picture afterwards: the cycle then
    // makes no picture.
    [[nodiscard]] virtual bool StampOverlayPicture() = 0;

    // Draws the text of this cycle on Picture2.
    virtual void DrawOverlayText() = 0;
};
